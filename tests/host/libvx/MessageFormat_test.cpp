#include <libvx/MessageFormat.h>

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace vx::tests {
namespace {

TEST(MessageFormat, FillsArgumentsIn) {
    struct Row {
        std::string format;
        std::vector<std::string> args;
        std::string expected;
    };
    for (Row const & row : std::vector<Row>{
             {"%1%1", {"a"}, "aa"},
             {"%s", {"%s %1 %n"}, "%s %1 %n"},
             {"%3 %x %0 %", {"a"}, "%3 %x %0 %"},
             {"none", {"spare"}, "none"},
         }) {
        EXPECT_EQ(formatMessage(row.format, row.args), row.expected) << row.format;
    }
}

TEST(MessageFormat, CutsBetweenCharacters) {
    struct Row {
        std::string text;
        std::size_t bytes;
        std::string expected;
    };
    for (Row const & row : std::vector<Row>{
             {"abc", 2, "ab"},
             {"abc", 0, ""},
             {"a\xC3\xA8", 2, "a"},
             {"a\xC3\xA8", 3, "a\xC3\xA8"},
             {"\xE4\xBB\x8Ex", 2, ""},
             {"\xF0\x9F\x98\x80", 3, ""},
             {"\x80\x80\x80\x80\x80\x80\x80", 6, "\x80\x80\x80\x80\x80\x80"}, // not UTF-8: cut anywhere
         }) {
        EXPECT_EQ(cutUtf8(row.text, row.bytes), row.expected);
    }
}

} // namespace
} // namespace vx::tests
