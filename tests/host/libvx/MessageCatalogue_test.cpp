#include <libvx/Hash.h>
#include <libvx/MessageCatalogue.h>
#include <libvx/Printing.h>

#include <gtest/gtest.h>

#include <array>
#include <cstdarg>
#include <string>

namespace vx::tests {
namespace {

constexpr std::uint32_t identifiers[] = {0x5A0001, 0x5A0002, 0x5A0003, 0xFFFFFFFF};
constexpr char const * names[] = {"App_Open", "App_Move", "App_Count"};
constexpr char const * english[] = {"Opening %s", "Moving %s to %s", "%s has %d of %u"};
constexpr char const * japanese[] = {"", "%1 を開く", "%2 へ %1 を移動", ""};
constexpr VxMessageTable table{3, 0x5A, identifiers, names, english, japanese};

class MessageCatalogue : public testing::Test {
protected:
    MessageCatalogue() {
        EXPECT_EQ(vx_mem_add_primary_message_table(vxGetMemoryContext(), &table), 0);
        EXPECT_EQ(vx_mem_add_language(vxGetMemoryContext(), "ja", &table), 0);
    }
    ~MessageCatalogue() override {
        setCurrentLanguage("en");
        EXPECT_EQ(vx_mem_remove_primary_message_table(vxGetMemoryContext(), &table), 0);
    }

    static std::string message(int size, std::uint32_t identifier, ...) {
        std::va_list arguments;
        va_start(arguments, identifier);
        std::array<char, 64> buffer{};
        int const length =
            vx_vsprintm(vxGetMessageContext(), buffer.data(), static_cast<std::size_t>(size), identifier, arguments);
        va_end(arguments);
        return length < 0 ? "(" + std::to_string(length) + ")"
                          : std::string(buffer.data(), static_cast<std::size_t>(length));
    }
};

TEST_F(MessageCatalogue, FillsInTheCurrentLanguageOrEnglish) {
    EXPECT_EQ(message(64, 0x5A0002, "a", "b"), "Moving a to b");
    EXPECT_EQ(message(64, 0x5A0003, "a", -1, 2u), "a has -1 of 2");
    setCurrentLanguage("ja");
    EXPECT_EQ(message(64, 0x5A0002, "a", "b"), "b へ a を移動");
    EXPECT_EQ(message(64, 0x5A0003, "a", 1, 2u), "a has 1 of 2") << "no text in that language";
    setCurrentLanguage("fr");
    EXPECT_EQ(message(64, 0x5A0001, "a"), "Opening a");
}

TEST_F(MessageCatalogue, KnowsOnlyWhatIsAddedNow) {
    EXPECT_EQ(message(64, 0x5A0004), "(-1)");
    EXPECT_EQ(findMessage(0xFFFFFFFF), nullptr);
    vx_mem_remove_primary_message_table(vxGetMemoryContext(), &table);
    EXPECT_EQ(findMessage(0x5A0001), nullptr);
}

TEST_F(MessageCatalogue, CutsToTheBuffer) {
    EXPECT_EQ(message(10, 0x5A0001, "abc"), "Opening a");
    EXPECT_EQ(message(10, 0x5A0001, "\xC3\xA8"), "Opening ");
    EXPECT_EQ(message(1, 0x5A0001, "abc"), "");
    EXPECT_EQ(message(64, 0x5A0001, static_cast<char const *>(nullptr)), "Opening (null)");
}

int print(char * buffer, std::size_t size, char const * format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    int const length = vxVSNprintf(buffer, size, format, arguments);
    va_end(arguments);
    return length;
}

TEST(Printing, CutsALongTextAndNeverWritesPastTheBuffer) {
    std::array<char, 8> buffer{};
    buffer.fill('#');
    EXPECT_EQ(print(buffer.data(), 6, "%s", "abcdefghij"), 5);
    EXPECT_STREQ(buffer.data(), "abcde");
    EXPECT_EQ(buffer[6], '#');
    EXPECT_EQ(print(buffer.data(), 6, "%s", "abcd\xC3\xA8xyz"), 4);
    EXPECT_STREQ(buffer.data(), "abcd");
    EXPECT_EQ(print(buffer.data(), 6, "%s", "abc\xC3\xA8xyz"), 5);
    EXPECT_STREQ(buffer.data(), "abc\xC3\xA8");
    EXPECT_EQ(print(buffer.data(), 6, "%d", 42), 2);
    EXPECT_EQ(print(buffer.data(), 0, "x"), -1);
}

TEST(Hash, TellsTextsApart) {
    EXPECT_EQ(vx_hash_string("abc"), vx_hash_string(std::string("abc").c_str()));
    EXPECT_NE(vx_hash_string("abc"), vx_hash_string("acb"));
    EXPECT_EQ(vx_hash_string(nullptr), vx_hash_string(""));
}

} // namespace
} // namespace vx::tests
