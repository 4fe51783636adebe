#include <ZEL/serializer/Messages.h>

#include <libvx/MessageCatalogue.h>
#include <libvx/MessageFormat.h>

#include <gtest/gtest.h>

namespace ZEL::tests {
namespace {

struct MessagesTest : testing::Test {
    MessagesTest() { Messages::addToCatalogue(); }
    ~MessagesTest() override { vx::setCurrentLanguage("en"); }

    static std::string text(std::uint32_t id, char const * language) {
        vx::setCurrentLanguage(language);
        char const * const format = vx::findMessage(id);
        return format == nullptr ? "(none)" : vx::formatMessage(format, {"<1>", "<2>", "<3>", "<4>", "<5>"});
    }
};

TEST_F(MessagesTest, StandInTheCatalogueUnderTheirNumbers) {
    EXPECT_EQ(0x6D0001u, Messages::ZEL_Serializer_XmiReader_Prologue);
    EXPECT_EQ(0x6D000Au, Messages::ZEL_Serializer_XmiReader_TargetModelReferenceError);
    EXPECT_EQ(0x6D0013u, Messages::ZEL_Serializer_XmiWriter_Prologue);
    EXPECT_EQ(0x6D001Au, Messages::ZEL_Serializer_Merger_SetOrAddPropertyError);
    EXPECT_EQ("Processing XMI input from <1>", text(0x6D0001, "en"));
    EXPECT_EQ("<1> から XMI 入力を処理しています", text(0x6D0001, "ja"));
    EXPECT_EQ("Element {<1>}<2> of type <3> has no property named {<4>}<5>", text(0x6D0006, "en"));
    EXPECT_EQ("タイプ <3> の要素 {<1>}<2> は、{<4>}<5> という名前のプロパティがありません", text(0x6D0006, "ja"));
    EXPECT_EQ("Unable to locate uri <1> in NamespaceRegistry when resolving {<2>}<3>", text(0x6D0017, "en"));
    EXPECT_EQ("{<2>}<3> を関連付けるときに NamespaceRegistry 内の uri <1> の位置を特定できませんでした",
              text(0x6D0017, "ja"));
    EXPECT_EQ("Unable to set property <1> on <2> to <3> : <4>", text(0x6D001A, "en"));
    EXPECT_EQ("<2> 上のプロパティ <1> を <3> : <4> に設定できません", text(0x6D001A, "ja"));
    EXPECT_EQ("(none)", text(0x6D0000, "en"));
    EXPECT_EQ("(none)", text(0x6D001B, "en"));
}

TEST_F(MessagesTest, TakeTheSameArgumentsInBothLanguages) {
    for (std::uint32_t id = 0x6D0001; id <= 0x6D001A; ++id) {
        std::string const english = text(id, "en");
        std::string const japanese = text(id, "ja");
        EXPECT_NE(english, japanese) << std::hex << id;
        for (char const * const argument : {"<1>", "<2>", "<3>", "<4>", "<5>"}) {
            EXPECT_EQ(english.find(argument) != std::string::npos, japanese.find(argument) != std::string::npos)
                << std::hex << id << " argument " << argument;
        }
    }
}

} // namespace
} // namespace ZEL::tests
