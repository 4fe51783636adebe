#include "host/TemporaryFolder.h"

#include <hasp_util/Uri.h>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace HASP::tests {
namespace {

/// Rows of two texts.
using Pairs = std::vector<std::pair<std::string, std::string>>;

TEST(Uri, FallsApartIntoItsParts) {
    // Scheme, host, path and fragment.
    for (auto const & [text, parts] : Pairs{
             {"http://schema.omg.org/spec/MOF/2.0#Class", "http|schema.omg.org|/spec/MOF/2.0|#Class"},
             {"http://user@h:8080/a?q=1:2/3#f", "http|user@h:8080|/a|#f"},
             {"file:///a/b.xmi", "file||/a/b.xmi|"},
             {"urn:app:x#", "urn||app:x|#"},
             {"b.xmi#_zel_1", "||b.xmi|#_zel_1"},
             {"a/b:c", "||a/b:c|"},
             {"#x", "|||#x"},
             {"_zel_5376c05e_12", "||_zel_5376c05e_12|"},
             {"pathmap://UML_LIBRARIES/T.xmi#S", "pathmap|UML_LIBRARIES|/T.xmi|#S"},
             {"", "|||"},
         }) {
        Uri const uri(text);
        EXPECT_TRUE(uri.isValid()) << uri.error();
        EXPECT_EQ(uri.toString(), text);
        EXPECT_EQ(uri.getScheme() + "|" + uri.getHost() + "|" + uri.getPath() + "|" +
                      (uri.hasFragment() ? "#" + uri.getFragment() : ""),
                  parts);
    }
    EXPECT_EQ(Uri("http://h/a?q#f").withoutFragment().toString(), "http://h/a?q");
    EXPECT_EQ(Uri("mod\xC3\xA8le.xmi#x").toString(), "mod%C3%A8le.xmi#x");
}

TEST(Uri, RefusesWhatIsNone) {
    for (char const * text : {"a b", "a%zz", "http://[", "a\\b", "<x>", "http://h:x/"}) {
        Uri const uri{text};
        EXPECT_FALSE(uri.isValid()) << text;
        EXPECT_NE(uri.error(), "") << text;
        EXPECT_EQ(uri.toString(), "") << text;
        EXPECT_FALSE(uri.resolve(Uri("b")).isValid()) << text;
        EXPECT_FALSE(uri.relativize(Uri("http://h/")).isValid()) << text;
        EXPECT_EQ(uri.toLocalFile(), "") << text;
    }
    EXPECT_FALSE(Uri().isValid());
}

TEST(Uri, IsMadeOfParts) {
    EXPECT_EQ(Uri("file", "", "/a/b.xmi", "_zel_1").toString(), "file:///a/b.xmi#_zel_1");
    EXPECT_EQ(Uri("http", "h:8080", "/a", "").toString(), "http://h:8080/a");
    EXPECT_EQ(Uri("urn", "", "app:x", "f").toString(), "urn:app:x#f");
    EXPECT_EQ(Uri("", "", "b.xmi", "f").toString(), "b.xmi#f");
    EXPECT_EQ(Uri("http", "h", "/a b%20c%x?", "g h?#").toString(), "http://h/a%20b%20c%25x%3F#g%20h?%23");
    EXPECT_FALSE(Uri("1x", "h", "/a", "").isValid());

    Uri const whole("file:///a%20b/c.xmi");
    EXPECT_EQ(Uri(whole.getScheme(), whole.getHost(), whole.getPath(), "x").toString(), "file:///a%20b/c.xmi#x");
}

TEST(Uri, OfALocalFileGivesTheFileBack) {
    for (auto const & [file, text] : Pairs{
             {"/a/b.xmi", "file:///a/b.xmi"},
             {"/a b/100%/#1?.xmi", "file:///a%20b/100%25/%231%3F.xmi"},
             {"/a/\xC3\xA8\x01.xmi", "file:///a/%C3%A8%01.xmi"},
             {"/a/(x)+y;v=1,'!&$*~@:.xmi", "file:///a/(x)+y;v=1,'!&$*~@:.xmi"},
             {"/a/[x]\\{y}.xmi", "file:///a/%5Bx%5D%5C%7By%7D.xmi"},
             {"/a/latin\xE8.xmi", "file:///a/latin%E8.xmi"},
         }) {
        Uri const uri = Uri::fromLocalFile(file);
        ASSERT_TRUE(uri.isValid()) << uri.error();
        EXPECT_EQ(uri.toString(), text);
        EXPECT_EQ(uri.toLocalFile(), file);
        EXPECT_EQ(Uri(text + "#f").toLocalFile(), file);
    }
    EXPECT_FALSE(Uri::fromLocalFile("").isValid());
    EXPECT_FALSE(Uri::fromLocalFile(std::string("a\0b", 3)).isValid());
}

TEST(Uri, OfALocalFileIsAbsoluteAndWithoutDots) {
    std::string const here = std::filesystem::current_path().string();
    EXPECT_EQ(Uri::fromLocalFile("x.xmi").toLocalFile(), (std::filesystem::path(here) / "x.xmi").string());
    EXPECT_EQ(Uri::fromLocalFile("./x.xmi"), Uri::fromLocalFile("x.xmi"));
    EXPECT_EQ(Uri::fromLocalFile("/no/such/../x.xmi").toString(), "file:///no/x.xmi");

    TemporaryFolder const folder;
    std::filesystem::create_directories(folder.path("far/away"));
    std::filesystem::create_directory_symlink(folder.path("far/away"), folder.path("link"));
    EXPECT_EQ(Uri::fromLocalFile(folder.path("link/../x.xmi")).toLocalFile(), folder.path("far/x.xmi"));
    EXPECT_EQ(Uri::fromLocalFile(folder.path("link/x.xmi")).toLocalFile(), folder.path("link/x.xmi"));
}

TEST(Uri, OnlyFileUrisOfThisMachineAreLocalFiles) {
    EXPECT_EQ(Uri("file://localhost/a").toLocalFile(), "/a");
    EXPECT_EQ(Uri("FILE://LocalHost/a%20b#f").toLocalFile(), "/a b");
    EXPECT_EQ(Uri("file:/a").toLocalFile(), "/a");
    for (char const * text : {"file://server/a", "http://localhost/a", "a", "/a", "//localhost/a", "file:a",
                              "file:///a?q", "file:///a%00b", "urn:file:///a"}) {
        EXPECT_EQ(Uri(text).toLocalFile(), "") << text;
    }
}

TEST(Uri, ResolvesReferences) {
    Uri const base("http://a/b/c/d;p?q#z");
    // Of the examples of RFC 3986, 5.4.
    for (auto const & [reference, result] : Pairs{
             {"g:h", "g:h"},
             {"./g", "http://a/b/c/g"},
             {"//g", "http://g"},
             {"?y", "http://a/b/c/d;p?y"},
             {"#s", "http://a/b/c/d;p?q#s"},
             {"", "http://a/b/c/d;p?q"},
             {"../../../g", "http://a/g"},
         }) {
        EXPECT_EQ(base.resolve(Uri(reference)).toString(), result) << reference;
    }
    EXPECT_FALSE(Uri("relative").resolve(Uri("x")).isValid());
    EXPECT_FALSE(base.resolve(Uri("a b")).isValid());
}

TEST(Uri, RelativizesToTheShortestWayBack) {
    Uri const base("file:///a/b/c.xmi");
    for (auto const & [target, relative] : Pairs{
             {"file:///a/b/c.xmi#x", "#x"},
             {"file:///a/b/d.xmi#x", "d.xmi#x"},
             {"file:///a/d.xmi#x", "../d.xmi#x"},
             {"file:///a/b/s/t.xmi", "s/t.xmi"},
             {"file:///e/f.xmi#x", "../../e/f.xmi#x"},
             {"file:///a/b/x:y.xmi#z", "./x:y.xmi#z"},
             {"http://h/a#b", "http://h/a#b"},
             // One path goes on where the other's last segment ends: the whole URI, rather than a wrong part.
             {"file:///a/b/c.xmi/q#x", "file:///a/b/c.xmi/q#x"},
         }) {
        EXPECT_EQ(Uri(target).relativize(base).toString(), relative);
        EXPECT_EQ(base.resolve(Uri(relative)).toString(), target);
        EXPECT_EQ(Uri(target).relativize(Uri("file:///a/b/c.xmi#other")).toString(), relative);
    }
    EXPECT_FALSE(Uri("file:///a").relativize(Uri("b")).isValid());
    EXPECT_FALSE(Uri("a").relativize(base).isValid());
}

} // namespace
} // namespace HASP::tests
