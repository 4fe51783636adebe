#include "ReaderTest.h"

#include <ZEL/serializer/reader/LinkedFiles.h>

#include <hasp_util/Uri.h>

namespace ZEL::tests {
namespace {

using Serializer::LinkedFiles;

/// Follows links without reading: files that are asked for are listed.
struct FollowingLinks : ReaderTest {
    std::optional<Model> open(std::string const & localFile) {
        opened.push_back(localFile.substr(localFile.rfind('/') + 1));
        if (!next.empty()) {
            std::string const reference = next.back();
            next.pop_back();
            follow(reference);
        }
        return opened.back() == "broken.xmi" ? std::nullopt : std::optional<Model>(Factory::createNewModel());
    }
    std::optional<std::string> follow(std::string const & reference) { return follow(reference, uriOf("in.xmi")); }
    std::optional<std::string> follow(std::string const & reference, std::string const & base) {
        return files.follow(HASP::Uri(reference), base);
    }
    [[nodiscard]] std::string uriOf(std::string const & name) const { return "file://" + folder.path(name); }

    std::vector<std::string> opened;
    std::vector<std::string> next; ///< links of the files that are opened, the last one first
    ReadReport report;
    LinkedFiles files{settings, report, [this](std::string const & localFile) { return open(localFile); }};
};

TEST_F(FollowingLinks, OpensAFileOnceIfItMayBeOpened) {
    std::filesystem::create_directory(folder.path("inside"));
    file("outer.xmi", "");
    std::filesystem::create_symlink(folder.path("outer.xmi"), folder.path("inside/link.xmi"));
    settings.setExternalUriResolver(
        [&](std::string const & uri) { return uri == "pathmap://P/S.xmi" ? folder.path("real.xmi") : std::string(); });
    std::string const metamodel = "http://schema.omg.org/spec/MOF/2.0";
    using Names = std::vector<std::string>;
    std::tuple<std::string, std::string, std::string, Names, bool> const rows[] = {
        {"", "o%20ther.xmi#x", uriOf("o%20ther.xmi"), {"o ther.xmi"}, false},
        {"", "./sub/../%6F%20ther.xmi#y", uriOf("o%20ther.xmi"), {"o ther.xmi"}, false},
        {"", "broken.xmi#x", uriOf("broken.xmi"), {"broken.xmi"}, true},
        {"", "noted.xmi#x", uriOf("noted.xmi"), {}, false},
        {"", "pathmap://P/S.xmi#x", uriOf("real.xmi"), {"real.xmi"}, false},
        {"", "urn:x#y", "urn:x", {}, true},
        {"", metamodel + "#Class", metamodel, {}, false},
        {"inside", "inside/other.xmi#x", uriOf("inside/other.xmi"), {"other.xmi"}, false},
        {"inside", "outer.xmi#x", uriOf("outer.xmi"), {}, true},
        {"inside", "inside/link.xmi#x", uriOf("inside/link.xmi"), {}, true},
        {"inside", "file:///etc/passwd#x", "file:///etc/passwd", {}, true},
        {"gone", "inside/other.xmi#x", uriOf("inside/other.xmi"), {}, true},
    };
    for (auto const & [root, reference, uri, names, isReported] : rows) {
        SCOPED_TRACE(root + " " + reference);
        settings.setExternalRootFolder(root.empty() ? root : folder.path(root));
        report = ReadReport();
        opened.clear();
        files.clear();
        files.note(uriOf("noted.xmi"), Model());
        for (int again = 0; again < 2; ++again) {
            EXPECT_EQ(uri, follow(reference));
        }
        EXPECT_EQ(names, opened);
        EXPECT_EQ(isReported ? 1u : 0u, report.unreadFiles().count(uri));
        EXPECT_EQ(names.empty() || isReported ? 0u : 1u, files.models().size());
    }
}

TEST_F(FollowingLinks, FollowsAChainAsFarAsTheSettingsAllow) {
    settings.setMaximumFileNesting(3);
    next = {"b.xmi#x"};
    follow("a.xmi#x");
    next = {"d.xmi#x"}; // those before have been left again
    follow("c.xmi#x");
    EXPECT_THAT(opened, ElementsAre("a.xmi", "b.xmi", "c.xmi", "d.xmi"));
    EXPECT_EQ(4u, files.models().size());
    next = {"g.xmi#x", "f.xmi#x"};
    EXPECT_THAT(raisedText([&] { follow("e.xmi#x"); }), StartsWith("Too many files are open"));
    EXPECT_THAT(log.texts(), IsEmpty());
}

TEST_F(FollowingLinks, LogsWhatCannotBeMadeAbsolute) {
    EXPECT_FALSE(follow("other.xmi#x", "").has_value());
    EXPECT_FALSE(follow("other.xmi#x", "relative").has_value());
    EXPECT_THAT(log.texts(LogLevel::error),
                ElementsAre("Undefined base URI while processing other.xmi#x",
                            StartsWith("Unable to resolve URI other.xmi#x with base URI relative : ")));
}

} // namespace
} // namespace ZEL::tests
