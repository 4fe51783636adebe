#include <ZEL/Messages.h>

#include <libvx/MessageCatalogue.h>
#include <libvx/MessageFormat.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>

namespace ZEL {
namespace {

class MessagesTest : public testing::Test {
protected:
    MessagesTest() { Messages::addToCatalogue(); }
    ~MessagesTest() override { vx::setCurrentLanguage("en"); }

    static std::string text(std::uint32_t id, char const * language) {
        vx::setCurrentLanguage(language);
        char const * const format = vx::findMessage(id);
        return format == nullptr ? "(none)" : vx::formatMessage(format, {"A", "B", "C", "D", "E"});
    }
};

TEST_F(MessagesTest, StandInTheCatalogueUnderTheirNumbers) {
    EXPECT_EQ(0x6D0001u, Messages::ZEL_Serializer_XmiReader_Prologue);
    EXPECT_EQ(0x6D000Au, Messages::ZEL_Serializer_XmiReader_TargetModelReferenceError);
    EXPECT_EQ(0x6D0013u, Messages::ZEL_Serializer_XmiWriter_Prologue);
    EXPECT_EQ(0x6D001Au, Messages::ZEL_Serializer_Merger_SetOrAddPropertyError);
    EXPECT_EQ("Processing XMI input from A", text(0x6D0001, "en"));
    EXPECT_EQ("A から XMI 入力を処理しています", text(0x6D0001, "ja"));
    EXPECT_EQ("Element {A}B of type C has no property named {D}E", text(0x6D0006, "en"));
    EXPECT_EQ("タイプ C の要素 {A}B は、{D}E という名前のプロパティがありません", text(0x6D0006, "ja"));
    EXPECT_EQ("Unable to locate uri A in NamespaceRegistry when resolving {B}C", text(0x6D0017, "en"));
    EXPECT_EQ("{B}C を関連付けるときに NamespaceRegistry 内の uri A の位置を特定できませんでした",
              text(0x6D0017, "ja"));
    EXPECT_EQ("Unable to set property A on B to C : D", text(0x6D001A, "en"));
    EXPECT_EQ("B 上のプロパティ A を C : D に設定できません", text(0x6D001A, "ja"));
    EXPECT_EQ("(none)", text(0x6D0000, "en"));
    EXPECT_EQ("(none)", text(0x6D001B, "en"));
}

TEST_F(MessagesTest, TakeTheSameArgumentsInBothLanguages) {
    for (std::uint32_t id = 0x6D0001; id <= 0x6D001A; ++id) {
        std::string const english = text(id, "en");
        std::string const japanese = text(id, "ja");
        EXPECT_NE(english, japanese) << std::hex << id;
        for (char const argument : {'1', '2', '3', '4', '5'}) {
            // An argument in one of the texts and not in the other is a slip of the table.
            vx::setCurrentLanguage("ja");
            bool const inJapanese =
                std::string(vx::findMessage(id)).find(std::string("%") + argument) != std::string::npos;
            vx::setCurrentLanguage("en");
            std::string const format = vx::findMessage(id);
            auto const taken = std::count(format.begin(), format.end(), '%');
            EXPECT_EQ(argument - '0' <= taken, inJapanese) << std::hex << id << " argument " << argument;
        }
    }
}

} // namespace
} // namespace ZEL
