// The program as a user meets it: what it prints where, and how it ends.

#include "cli/RunZel.h"
#include "host/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <filesystem>

namespace {

using clitest::Outcome;
using clitest::runZel;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr char kLibrary[] = ZEL_SOURCE_DIR "/examples/tour/library.xmi";
constexpr char kTypes[] = ZEL_SOURCE_DIR "/examples/tour/library-types.xmi";

/// A folder with a copy of the example's two files.
class Program : public testing::Test {
protected:
    Program() {
        std::filesystem::copy(kLibrary, library);
        std::filesystem::copy(kTypes, types);
    }

    /// The file with the first `from` in it replaced.
    [[nodiscard]] std::string variant(std::string const & name, std::string const & from,
                                      std::string const & to) const {
        std::string text = folder.content("library.xmi");
        std::size_t const place = text.find(from);
        EXPECT_NE(place, std::string::npos) << from;
        return folder.file(name, text.replace(place, from.size(), to));
    }

    TemporaryFolder folder;
    std::string const library = folder.path("library.xmi");
    std::string const types = folder.path("library-types.xmi");
};

std::size_t linesOf(std::string const & text) {
    return static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

TEST_F(Program, HelpAndVersionAreResults) {
    Outcome const version = runZel({"--version"});
    EXPECT_EQ(version.exitCode, 0);
    EXPECT_THAT(version.out, testing::MatchesRegex("zel [0-9]+\\.[0-9]+\\.[0-9]+\n"));
    Outcome const help = runZel({"--help"});
    EXPECT_EQ(help.exitCode, 0);
    for (char const * command : {"tour", "info", "convert", "metamodel", "compare", "random"}) {
        EXPECT_THAT(help.out, HasSubstr(command));
        Outcome const own = runZel({command, "--help"});
        EXPECT_EQ(own.exitCode, 0);
        EXPECT_THAT(own.out, AllOf(HasSubstr(std::string("zel ") + command), HasSubstr("--html-log")));
    }
    EXPECT_EQ(help.error, "");
}

TEST_F(Program, AMistakeIsOneLineOnStandardErrorAndExitCodeTwo) {
    std::string const text = folder.content("library.xmi");
    std::filesystem::create_directory(folder.path("folder"));
    std::filesystem::create_symlink("/dev/full", folder.path("full"));
    struct Case {
        char const * name;
        std::vector<std::string> arguments;
        std::string says;
    };
    std::vector<Case> const cases{
        {"no command", {}, "subcommand"},
        {"unknown command", {"explain"}, "explain"},
        {"unknown option", {"info", library, "--deep"}, "--deep"},
        {"argument missing", {"info"}, "FILE"},
        {"argument too much", {"info", library, types}, types},
        {"no such file", {"info", folder.path("none.xmi")}, "none.xmi: No such file or directory"},
        {"no such file, tour", {"tour", folder.path("none.xmi")}, "none.xmi"},
        {"a folder", {"info", folder.path("folder")}, "folder"},
        {"empty file", {"info", folder.file("empty.xmi", "")}, "empty.xmi"},
        {"no XML", {"info", folder.file("text.xmi", "hello")}, "line 1"},
        {"half a file", {"info", folder.file("half.xmi", text.substr(0, text.size() / 2))}, "half.xmi at line"},
        {"no model", {"info", folder.file("other.xmi", "<a/>")}, "no model of a known metamodel"},
        {"compare with half a file", {"compare", library, folder.path("half.xmi")}, "half.xmi at line"},
        {"target in no folder", {"convert", library, folder.path("no/where.xmi")}, "cannot write"},
        {"target is a folder", {"convert", library, folder.path("folder")}, "cannot write"},
        {"target is full", {"convert", library, folder.path("full")}, "cannot write"},
        {"unknown format", {"convert", library, folder.path("x"), "--to", "word"}, "word"},
        {"format not there to read", {"convert", library, folder.path("x"), "--from", "magicdraw"}, "MagicDraw"},
        {"format not there to write", {"convert", library, folder.path("x"), "--to", "rhapsody"}, "Rhapsody"},
        {"unknown metamodel", {"metamodel", "http://nowhere"}, "http://nowhere"},
        {"unknown metamodel, random",
         {"random", folder.path("x"), "--seed", "1", "--metamodel", "m"},
         "found --metamodel m"},
        {"no seed", {"random", folder.path("x")}, "--seed"},
        {"seed is no number", {"random", folder.path("x"), "--seed", "one"}, "--seed"},
        {"negative depth", {"random", folder.path("x"), "--seed", "1", "--depth", "-1"}, "--depth"},
        {"log in no folder", {"info", library, "--html-log", folder.path("no/log")}, "no/log"},
    };
    for (Case const & mistake : cases) {
        SCOPED_TRACE(mistake.name);
        Outcome const run = runZel(mistake.arguments);
        EXPECT_EQ(run.exitCode, 2);
        EXPECT_EQ(run.out, "");
        EXPECT_THAT(run.error, AllOf(StartsWith("zel: "), HasSubstr(mistake.says)));
        EXPECT_EQ(linesOf(run.error), 1U) << run.error;
        EXPECT_FALSE(std::filesystem::exists(folder.path("x")));
    }
    EXPECT_EQ(folder.content("library.xmi"), text);
}

TEST_F(Program, ResultsThatCannotBePrintedAreTrouble) {
    Outcome const run = runZel({"info", library}, "/dev/full");
    EXPECT_EQ(run.exitCode, 2);
    EXPECT_EQ(run.error, "zel: cannot write the results to standard output\n");
}

TEST_F(Program, InfoSaysWhatIsInAFile) {
    Outcome const run = runZel({"info", library});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_THAT(run.out, AllOf(HasSubstr("library.xmi\n"), HasSubstr("http://schema.omg.org/spec/MOF/2.0 (ZEL)"),
                               HasSubstr("c84e9d10-37ab-4f65-8e21-6a90b5d3f7c8"), HasSubstr("492, at most 6 levels"),
                               HasSubstr("library-types.xmi (104 objects)"), HasSubstr("     203 ZEL.Property\n")));
}

TEST_F(Program, WhatCannotBeReadOfAFileIsToldAndTheRestIsRead) {
    std::filesystem::remove(types);
    Outcome const withoutTypes = runZel({"info", library});
    EXPECT_EQ(withoutTypes.exitCode, 0);
    EXPECT_THAT(withoutTypes.out, AllOf(HasSubstr("492"), Not(HasSubstr("refers to"))));
    EXPECT_THAT(withoutTypes.error,
                AllOf(HasSubstr("library-types.xmi"), HasSubstr("link without target: Property.type")));

    std::filesystem::copy(kTypes, types);
    Outcome const unknown = runZel({"info", variant("odd.xmi", "ZEL:Enumeration\"", "ZEL:Enumeratoin\"")});
    EXPECT_EQ(unknown.exitCode, 0);
    EXPECT_THAT(unknown.error, HasSubstr("odd.xmi: element left out: packagedElement\n"));
}

TEST_F(Program, AConvertedFileHoldsTheSameModel) {
    std::string const copy = folder.path("copy.xmi");
    Outcome const run = runZel({"convert", library, copy, "--from", "standard", "--to", "standard"});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_THAT(run.out, EndsWith("copy.xmi: 492 objects\n"));
    Outcome const same = runZel({"compare", library, copy});
    EXPECT_EQ(same.exitCode, 0) << same.out << same.error;
    EXPECT_EQ(same.out, "equal: 492 objects\n");

    std::string const once = folder.content("copy.xmi");
    EXPECT_EQ(runZel({"convert", copy, copy}).exitCode, 0);
    EXPECT_EQ(folder.content("copy.xmi"), once) << "a file may be written over itself";
}

TEST_F(Program, CompareIgnoresPlaceAndIdsAndNamesThePairThatDiffers) {
    Outcome const elsewhere = runZel({"compare", library, kLibrary});
    EXPECT_EQ(elsewhere.exitCode, 0) << elsewhere.out << elsewhere.error;

    Outcome const other = runZel({"compare", library, variant("other.xmi", "name=\"Catalogue\"", "name=\"Index\"")});
    EXPECT_EQ(other.exitCode, 1);
    EXPECT_THAT(other.out, AllOf(StartsWith("different: Class 'library.catalogue.Catalogue' ("),
                                 HasSubstr("Class 'library.catalogue.Index' (")));
    EXPECT_EQ(other.error, "");

    EXPECT_EQ(runZel({"compare", library, types}).exitCode, 1);

    // A link to another object of the other file is a difference, too.
    Outcome const link = runZel({"compare", library, variant("link.xmi", "7a52_99\"", "7a52_100\"")});
    EXPECT_EQ(link.exitCode, 1);
    EXPECT_THAT(link.out, HasSubstr("Property 'originalLanguage'"));
}

TEST_F(Program, RandomGivesTheSameModelForTheSameSeed) {
    std::string const a = folder.path("a.xmi");
    std::string const b = folder.path("b.xmi");
    Outcome const first =
        runZel({"random", a, "--seed", "17", "--depth", "3", "--breadth", "5", "--associations", "40"});
    EXPECT_EQ(first.exitCode, 0);
    EXPECT_EQ(first.error, "");
    EXPECT_THAT(first.out, EndsWith(", seed 17\n"));
    static_cast<void>(runZel({"random", b, "--seed", "17", "--depth", "3", "--breadth", "5", "--associations", "40"}));
    EXPECT_EQ(runZel({"compare", a, b}).exitCode, 0);
    static_cast<void>(runZel({"random", b, "--seed", "18", "--depth", "3", "--breadth", "5"}));
    EXPECT_EQ(runZel({"compare", a, b}).exitCode, 1);
    EXPECT_THAT(runZel({"random", b, "--seed", "1", "--depth", "0"}).out, HasSubstr("b.xmi: 1 object,"));
}

TEST_F(Program, MetamodelListsWhatIsRegisteredAndShowsOne) {
    EXPECT_EQ(runZel({"metamodel"}).out, "http://schema.omg.org/spec/MOF/2.0 ZEL 42 classes\n");
    Outcome const shown = runZel({"metamodel", "ZEL"});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_THAT(shown.out, AllOf(HasSubstr("class Comment : ZEL.Element\n    body : String [0..1]\n"
                                           "    annotatedElement : Element [0..*]\n"),
                                 HasSubstr("enumeration PackageMergeKind { exdend, define }\n"),
                                 HasSubstr("primitive UnlimitedNatural\n")));
    EXPECT_EQ(runZel({"metamodel", "http://schema.omg.org/spec/MOF/2.0"}).out, shown.out);
}

TEST_F(Program, TheLogGoesIntoAFileOnDemand) {
    EXPECT_EQ(runZel({"info", library, "--html-log", folder.path("log")}).exitCode, 0);
    EXPECT_THAT(folder.content("log.html"), AllOf(HasSubstr("library.xmi"), HasSubstr("</html>")));
}

TEST_F(Program, TheTourHoldsAllItsClaimsAndChangesNoFile) {
    std::string const before = folder.content("library.xmi");
    Outcome const run = runZel({"tour", library});
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.error, "");
    EXPECT_THAT(run.out, AllOf(StartsWith("1. Read the files\n"), HasSubstr("\n11. Close everything\n"),
                               HasSubstr("leak account stands at zero"), EndsWith(" claims held.\n")));
    EXPECT_EQ(folder.content("library.xmi"), before);
    EXPECT_EQ(folder.content("library-types.xmi"), folder.content(kTypes)); // an absolute path stands for itself
}

TEST_F(Program, AStepOfTheTourThatFailsIsNamed) {
    std::string const empty = folder.path("empty.xmi");
    ASSERT_EQ(runZel({"random", empty, "--seed", "1", "--depth", "0"}).exitCode, 0);
    Outcome const run = runZel({"tour", empty});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.error,
                AllOf(StartsWith("zel: tour failed in step 1 (Read the files): "), HasSubstr("classes to work on")));
    EXPECT_EQ(linesOf(run.error), 1U);

    Outcome const unreadable = runZel({"tour", folder.file("text.xmi", "hello")});
    EXPECT_EQ(unreadable.exitCode, 2) << "that is not the tour's fault";
    EXPECT_THAT(unreadable.error, HasSubstr("text.xmi at line 1"));
}

} // namespace
