#include "ReaderTest.h"

#include <sys/stat.h>

namespace ZEL::tests {
namespace {

struct Hostile : ReaderTest {
    /// The text of what is thrown when `text` is read into `given`, which must be as before.
    std::string raisedByMerge(std::string const & text) {
        reader.setMerger(new Merger(given));
        std::string const path = file("hostile.xmi", text);
        std::string const raised = raisedText([&] { return reader.read(path); });
        EXPECT_TRUE(compare(given, copy));
        EXPECT_EQ(5, given.getNextIdValue());
        EXPECT_EQ(1, given.getUndoStackLength());
        EXPECT_EQ(0, given.getUnparented().size());
        EXPECT_RAISES("transaction not started", given.commitTransaction());
        return raised;
    }

    std::string const elements = element("Class", 3, "name='A'") + element("Class", 4, "name='K' superClass='@3'");
    MetaModel const copy = readModel(elements);
    MetaModel const given = readModel(elements);
};

TEST_F(Hostile, TextsOfErrorsNameFileLineAndColumn) {
    using Case = std::pair<char const *, char const *>;
    for (auto const & [text, place] :
         {Case{"<a>\n  <b>\n</a>", "line 3, column 3"}, Case{"\xC3\xA9", "line 1, column 1"},
          Case{"<a>\xFF</a>", "line 1, column 4"}, Case{"<x:a/>", "line 1, column "}}) {
        EXPECT_THAT(raisedByMerge(text),
                    StartsWith("Error encountered while parsing " + folder.path("hostile.xmi") + " at " + place))
            << text;
    }
}

TEST_F(Hostile, AFileCutAnywhereRaisesAndLeavesTheGivenModelAlone) {
    std::string const whole = filled(document(
        model(element("Class", 3, "name='B' superClass='@9'", attribute(8, "lower='0'", "<default>x</default>")) +
              element("Class", 9, "name='N'"))));
    for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
        ASSERT_THAT(raisedByMerge(whole.substr(0, size)),
                    StartsWith("Error encountered while parsing " + folder.path("hostile.xmi") + " at line "))
            << size;
        ASSERT_FALSE(HasFailure()) << size;
    }
    reader.setMerger(new Merger(given));
    EXPECT_EQ(given, read(whole)) << "ids of the failed reads are free again";
    EXPECT_THAT(elementNames(given), ElementsAre("B", "N"));
}

TEST_F(Hostile, LinksOpenPlainLocalFilesOnly) {
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(0, ::mkfifo(folder.path("fifo").c_str(), 0600));
    settings.setSkipUnreadableExternalFiles(true);
    reader = XmiReader(settings);
    for (std::string const href :
         {"folder", "fifo", "/dev/zero", "http://localhost:1/x.xmi", "file://elsewhere/x.xmi", "in.xmi?q", "urn:x"}) {
        SCOPED_TRACE(href);
        EXPECT_TRUE(
            readModel(element("Class", 5, "name='A'", attribute(6, "", "<type href='" + href + "#x'/>"))).isValid());
        EXPECT_EQ(1u, reader.report().unresolvedReferences().size());
        EXPECT_EQ(0, reader.referredModelCount());
    }
}

TEST_F(Hostile, DoubledIdsOfThisSystemFailTheRead) {
    EXPECT_EQ("Attempt to overwrite object (id = '5'; type = 'ZEL.Class') with object (id = '5; type = 'ZEL.Package')",
              raisedByMerge(document(model(element("Class", 5) + element("Package", 5), kOther))));
    EXPECT_THAT(raisedByMerge(document(model(element("Class", 50) + element("Class", 50)))),
                StartsWith("Attempt to overwrite object "));
}

TEST_F(Hostile, OfDoubledIdsOfOtherToolsTheLastCounts) {
    MetaModel const model = readModel("<packagedElement xmi:type='ZEL:Class' xmi:id='c' name='A'/>"
                                      "<packagedElement xmi:type='ZEL:Class' xmi:id='d' name='D' superClass='c'/>"
                                      "<packagedElement xmi:type='ZEL:Class' xmi:id='c' name='B'/>");
    EXPECT_THAT(namesOf(classNamed(model, "D").getSuperClasses()), ElementsAre("B"));
    EXPECT_THAT(log.texts(), ElementsAre("Id c occurs more than once in model file://" + folder.path("in.xmi")));
}

TEST_F(Hostile, IdsThatAreNoNumbersOfObjectsGetNewOnes) {
    std::string text;
    for (char const * tail : {"", "-5", "0", "12x", "99999999999", "2147483648", "1"}) {
        text += std::string("<packagedElement xmi:type='ZEL:Class' xmi:id='@") + tail + "' name='" + tail + "'/>\n";
    }
    int expected = 3;
    for (PackageableElement const & made : readModel(text).getTopPackage().getPackagedElements()) {
        EXPECT_EQ(expected++, made.getId()) << made.getName().str();
    }
    EXPECT_EQ(10, expected);
}

TEST_F(Hostile, TheLargestIdIsTakenAndTheNextOneRaises) {
    std::string const largest = element("Class", 2147483647, "name='last'");
    EXPECT_EQ("Internal id value overflow!", raisedByMerge(document(model(largest + element("Class", 7), kOther))));
    EXPECT_EQ(2147483647, named(readModel(largest), "last").getId());
}

TEST_F(Hostile, NestingIsBoundedByTheSettings) {
    settings.setMaximumElementDepth(4);
    reader = XmiReader(settings);
    EXPECT_TRUE(readModel(element("Package", 3)).isValid());
    EXPECT_THAT(raisedByMerge(document(model(element("Package", 3, "", element("Package", 4))))),
                StartsWith("Error encountered while parsing "));
}

} // namespace
} // namespace ZEL::tests
