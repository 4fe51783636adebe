#include <libvx/MessageFormat.h>

#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

namespace vx::tests {
namespace {

TEST(MessageFormat, FillsArgumentsIn) {
    using Row = std::tuple<std::string, std::vector<std::string>, std::string>;
    for (auto const & [format, arguments, expected] : std::vector<Row>{
             {"%1%1", {"a"}, "aa"},
             {"%s", {"%s %1 %n"}, "%s %1 %n"},
             {"%3 %x %0 %", {"a"}, "%3 %x %0 %"},
             {"none", {"spare"}, "none"},
         }) {
        EXPECT_EQ(formatMessage(format, arguments), expected) << format;
    }
}

TEST(MessageFormat, CutsBetweenCharacters) {
    using Row = std::tuple<std::string, std::size_t, std::string>;
    for (auto const & [text, bytes, expected] : std::vector<Row>{
             {"abc", 2, "ab"},
             {"abc", 0, ""},
             {"a\xC3\xA8", 2, "a"},
             {"a\xC3\xA8", 3, "a\xC3\xA8"},
             {"\xE4\xBB\x8Ex", 2, ""},
             {"\xF0\x9F\x98\x80", 3, ""},
             {"\x80\x80\x80\x80\x80\x80\x80", 6, "\x80\x80\x80\x80\x80\x80"}, // not UTF-8: cut anywhere
         }) {
        EXPECT_EQ(cutUtf8(text, bytes), expected) << text;
    }
}

} // namespace
} // namespace vx::tests
