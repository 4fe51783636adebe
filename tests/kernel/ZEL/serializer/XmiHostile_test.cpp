#include "ReaderTest.h"

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>

#include <sys/stat.h>

#include <filesystem>

namespace ZEL::Serializer::Test {
namespace {

using ::testing::HasSubstr;
using ::testing::StartsWith;

class Hostile : public ReaderTest {
protected:
    /// What reading the text into a given model raises; the model must be as before.
    std::string raisedByMerge(std::string const & text) {
        MetaModel const given = readModel(element("Class", 3, "name=\"A\""));
        int const next = given.getNextIdValue();
        int const steps = given.getUndoStackLength();
        reader.setMerger(new Merger(given));
        std::string const path = file("hostile.xmi", text);
        std::string const raised = raisedText([&] { return reader.read(path); });
        EXPECT_THAT(names(given.getTopPackage().getPackagedElements()), ::testing::ElementsAre("A"));
        EXPECT_EQ(next, given.getNextIdValue());
        EXPECT_EQ(steps, given.getUndoStackLength());
        EXPECT_RAISES("transaction not started", given.commitTransaction());
        return raised;
    }
};

TEST_F(Hostile, TextsOfErrorsNameFileLineAndColumn) {
    struct Case {
        char const * text;
        char const * place;
    };
    for (Case const & c : {Case{"<a>\n  <b>\n</a>", "line 3, column 3"}, Case{"<a b='1' b='2'/>", "line 1, column "},
                           Case{"\xC3\xA9", "line 1, column 1"}, Case{"<a>\xFF</a>", "line 1, column 4"},
                           Case{"", "line 1, column 1"}, Case{"<x:a/>", "line 1, column "}}) {
        EXPECT_THAT(raisedByMerge(c.text),
                    StartsWith("Error encountered while parsing " + folder.path("hostile.xmi") + " at " + c.place))
            << c.text;
    }
}

TEST_F(Hostile, AFileCutAnywhereRaisesAndLeavesTheGivenModelAlone) {
    std::string const whole = document(model(element("Class", 3, "name=\"B\" superClass=\"" + id(9) + "\"",
                                                     attribute(8, "lower=\"0\"", "<default>x</default>")) +
                                             element("Class", 9, "name=\"N\"")));
    MetaModel const given = readModel(element("Class", 3, "name=\"A\"") + element("Class", 4, "name=\"K\""));
    int const next = given.getNextIdValue();
    int const steps = given.getUndoStackLength();
    std::string const path = folder.path("cut.xmi");
    for (std::size_t size = 0; size + 2 < whole.size(); ++size) {
        static_cast<void>(file("cut.xmi", whole.substr(0, size)));
        reader.setMerger(new Merger(given));
        EXPECT_THAT(raisedText([&] { return reader.read(path); }),
                    StartsWith("Error encountered while parsing " + path + " at line "))
            << size;
        ASSERT_THAT(names(given.getTopPackage().getPackagedElements()), ::testing::ElementsAre("A", "K")) << size;
        ASSERT_EQ(next, given.getNextIdValue()) << size;
        ASSERT_EQ(steps, given.getUndoStackLength()) << size;
        ASSERT_EQ(0, given.getUnparented().size()) << size;
    }
}

TEST_F(Hostile, EntitiesNeitherGrowNorOpenAnything) {
    std::string bomb = "<!DOCTYPE a [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        bomb += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int j = 0; j < 10; ++j) {
            bomb += "&e" + std::to_string(i - 1) + ";";
        }
        bomb += "\">";
    }
    EXPECT_THAT(raisedByMerge(bomb + "]><a>&e11;</a>"), StartsWith("Error encountered while parsing "));
    EXPECT_THAT(raisedByMerge("<!DOCTYPE a [<!ENTITY e SYSTEM \"file:///etc/passwd\">]><a>&e;</a>"),
                ::testing::AllOf(StartsWith("Error encountered while parsing "), HasSubstr("e"),
                                 ::testing::Not(HasSubstr("root:"))));
    EXPECT_TRUE(read("<?xml version=\"1.0\"?><!DOCTYPE xmi:XMI [<!ENTITY n \"inner\">]>" +
                     document(model(element("Class", 5, "name=\"&n;\""))).substr(39))
                    .isValid())
        << "harmless entities are read";
}

TEST_F(Hostile, LinksOpenPlainLocalFilesOnly) {
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(0, ::mkfifo(folder.path("fifo").c_str(), 0600));
    XmiReaderSettings settings;
    settings.setSkipUnreadableExternalFiles(true);
    for (char const * href :
         {"folder", "fifo", "/dev/zero", "http://localhost:1/x.xmi", "file://elsewhere/x.xmi", "in.xmi?q", "urn:x"}) {
        XmiReader lenient(settings);
        std::string const text = document(
            model(element("Class", 5, "name=\"A\"", attribute(6, "", "<type href=\"" + std::string(href) + "#x\"/>"))));
        EXPECT_TRUE(lenient.read(file("in.xmi", text)).isValid()) << href;
        EXPECT_EQ(1u, lenient.report().unresolvedReferences().size()) << href;
        EXPECT_EQ(0, lenient.referredModelCount()) << href;
    }
}

TEST_F(Hostile, DoubledIdsOfThisSystemFailTheRead) {
    EXPECT_EQ("Attempt to overwrite object (id = '5'; type = 'ZEL.Class') with object (id = '5; type = 'ZEL.Package')",
              raisedByMerge(document(model(element("Class", 5) + element("Package", 5), "another"))));
}

TEST_F(Hostile, OfDoubledIdsOfOtherToolsTheLastCounts) {
    MetaModel const model =
        readModel("<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"c\" name=\"A\"/>"
                  "<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"d\" name=\"D\" superClass=\"c\"/>"
                  "<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"c\" name=\"B\"/>");
    EXPECT_THAT(names(classNamed(model, "D").getSuperClasses()), ::testing::ElementsAre("B"));
    EXPECT_THAT(log.texts(),
                ::testing::ElementsAre("Id c occurs more than once in model file://" + folder.path("in.xmi")));
}

TEST_F(Hostile, IdsThatAreNoNumbersOfObjectsGetNewOnes) {
    std::string const head = std::string("_zel_") + kUuid + "_";
    std::string elements;
    for (char const * tail : {"", "-5", "0", "12x", "99999999999", "2147483648", "1"}) {
        elements +=
            "<packagedElement xmi:type=\"ZEL:Class\" xmi:id=\"" + head + tail + "\" name=\"id" + tail + "\"/>\n";
    }
    MetaModel const model = readModel(elements);
    int expected = 3;
    for (PackageableElement const & made : model.getTopPackage().getPackagedElements()) {
        EXPECT_EQ(expected++, made.getId()) << made.getName().str();
    }
    EXPECT_EQ(10, expected);
}

TEST_F(Hostile, TheLargestIdIsTakenAndTheNextOneRaises) {
    std::string const largest = element("Class", 2147483647, "name=\"last\"");
    EXPECT_EQ("Internal id value overflow!", raisedByMerge(document(model(largest + element("Class", 7), "another"))));
    MetaModel const model = readModel(largest);
    EXPECT_EQ(2147483647, named(model, "last").getId());
}

TEST_F(Hostile, DeepNestingIsReadMergedAndBounded) {
    int const depth = 100'000;
    std::string text;
    for (int i = 0; i < depth; ++i) {
        text += "<packagedElement xmi:type=\"ZEL:Package\" xmi:id=\"" + id(i + 3) + "\" name=\"p\">";
    }
    for (int i = 0; i < depth; ++i) {
        text += "</packagedElement>";
    }
    {
        MetaModel const model = readModel(text);
        EXPECT_EQ(depth + 3, model.getNextIdValue());
        reader.setMerger(new Merger(model));
        EXPECT_EQ(model, read(document(ReaderTest::model(""))));
        EXPECT_FALSE(model.getObjectById(Integer(depth)).isValid());
    }
    XmiReaderSettings settings;
    settings.setMaximumElementDepth(1000);
    reader = XmiReader(settings);
    EXPECT_THAT(raisedText([&] { return readModel(text); }), StartsWith("Error encountered while parsing "));
}

TEST_F(Hostile, ManyDeclarationsOfOnePrefixCostNoMoreThanOne) {
    std::string text;
    for (int i = 0; i < 20'000; ++i) {
        text += "<packagedElement xmlns:q=\"http://schema.omg.org/spec/MOF/2.0\" xmi:type=\"q:Package\">"
                "<packagedElement xmlns:r=\"urn:r\" xmi:type=\"q:Package\"/></packagedElement>\n";
    }
    EXPECT_EQ(20'000, readModel(text).getTopPackage().getPackagedElements().size());
}

} // namespace
} // namespace ZEL::Serializer::Test
