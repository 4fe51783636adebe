#include "NamedUris.h"
#include "host/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <string>

namespace ZEL::tests::cli {
namespace {

class NamedUris : public testing::Test {
protected:
    [[nodiscard]] bool areKnown(std::string const & content, bool mayFollowLinks = true) const {
        return ::cli::namesOnlyKnownUris(folder.file("a.xmi", content), mayFollowLinks,
                                         [](std::string_view uri) { return uri == "http://known.org/m"; });
    }

    TemporaryFolder folder;
};

std::string element(std::string const & value) { return "<?xml version='1.0'?>\n<a b='" + value + "'/>"; }

TEST_F(NamedUris, AnUnknownUriIsFoundWhereverItStands) {
    EXPECT_TRUE(
        areKnown("<x:a xmlns:x='http://known.org/m'><b href=\"http://known.org/m#B\"/>http://known.org/m</x:a>"));
    EXPECT_TRUE(areKnown("\xEF\xBB\xBF<!-- <!DOCTYPE --><a/>"));
    EXPECT_TRUE(areKnown(element("1 / 2, &#228;&#xA; #1")));
    for (char const * const value :
         {"http://known.org/m2", "http://known.org", "x http://other.org#A", "http://known.org/m&amp;", "//known.org/m",
          "a.xmi#//B", "C:/a.xmi#A", "/a.xmi#A", "%61.xmi#A", "&#47;", "&#x2f;", "&#;"}) {
        EXPECT_FALSE(areKnown(element(value))) << value;
    }
}

TEST_F(NamedUris, AUriAcrossTheBorderOfTwoPiecesIsFound) {
    for (std::size_t before = 262'100; before < 262'150; ++before) {
        std::string const blanks(before, ' ');
        ASSERT_TRUE(areKnown("<a>" + blanks + "http://known.org/m#A</a>")) << before;
        ASSERT_FALSE(areKnown("<a>" + blanks + "http://other.org/m#A</a>")) << before;
    }
}

TEST_F(NamedUris, WhatTakesAParserCountsAsUnknown) {
    EXPECT_FALSE(areKnown("<!DOCTYPE a [<!ATTLIST a xmlns CDATA 'x'>]><a/>"));
    EXPECT_FALSE(areKnown("<?xml version='1.0'?><!-- --><!DOCTYPE a><a/>"));
    EXPECT_FALSE(areKnown(std::string("<\0a\0/\0>\0", 8)));
    EXPECT_FALSE(areKnown("a"));
    EXPECT_FALSE(areKnown(""));
    EXPECT_FALSE(areKnown(std::string("<a>") + std::string(1'000'000, 'x') + "</a>"));
}

TEST_F(NamedUris, LinksAreFollowedIntoEachFileOnce) {
    static_cast<void>(folder.file("b.xmi", element("a.xmi#A c.xmi#C")));
    EXPECT_FALSE(areKnown(element("b.xmi#B"))) << "there is no third file";
    static_cast<void>(folder.file("c.xmi", element("./b.xmi#B http://known.org/m#A")));
    EXPECT_TRUE(areKnown(element("b.xmi#B")));
    EXPECT_FALSE(areKnown(element("b.xmi#B"), false));
    static_cast<void>(folder.file("c.xmi", element("http://other.org/m#A")));
    EXPECT_FALSE(areKnown(element("b.xmi#B")));
}

} // namespace
} // namespace ZEL::tests::cli
