// What the commands do with good files.

#include "cli/CliTest.h"

namespace {

using clitest::isTrouble;
using clitest::kLibrary;
using clitest::kTypes;
using clitest::Outcome;
using clitest::runZel;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

using Commands = clitest::CliTest;

TEST_F(Commands, InfoSaysWhatIsInAFile) {
    Outcome const run = runZel({"info", library});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_THAT(run.out, AllOf(HasSubstr("library.xmi\n"), HasSubstr("http://schema.omg.org/spec/MOF/2.0 (ZEL)"),
                               HasSubstr("c84e9d10-37ab-4f65-8e21-6a90b5d3f7c8"), HasSubstr("492, at most 6 levels"),
                               HasSubstr("library-types.xmi (104 objects)"), HasSubstr("     203 ZEL.Property\n")));
}

TEST_F(Commands, InfoNamesAndCountsWhatWasLeftOut) {
    EXPECT_THAT(runZel({"info", library}).out, HasSubstr("\nleft out     nothing\n"));

    static_cast<void>(variant("library.xmi", "ZEL:Enumeration\"", "ZEL:Enumeratoin\""));
    static_cast<void>(variant("library.xmi", "name=\"catalogue\"", "name=\"catalogue\" colour=\"red\""));
    static_cast<void>(variant("library.xmi", "<ownedAttribute ", "<ownedAttribute lower=\"x\" "));
    static_cast<void>(variant("library.xmi", "  </ZEL:MetaModel>", "    <other><other/></other>\n  </ZEL:MetaModel>"));
    std::filesystem::remove(types);
    Outcome const run = runZel({"info", library});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_THAT(run.out, HasSubstr("\nleft out     2 elements, 1 attribute, 1 value, "));
    EXPECT_THAT(run.out, HasSubstr("\n\nelements skipped\n"
                                   "       1 other\n"
                                   "       1 packagedElement of type ZEL:Enumeratoin\n"
                                   "\nattributes ignored\n"
                                   "       1 Package.colour\n"
                                   "\nvalues refused\n"
                                   "       1 Property.lower\n"
                                   "\nlinks without target\n"
                                   "       1 PackageImport.importedPackage\n"
                                   "      11 Parameter.type\n"));
    EXPECT_THAT(run.out, EndsWith("\nfiles not read\n       1 file://" + types + "\n"));
}

TEST_F(Commands, OthersSumUpWhatWasLeftOutInOneLine) {
    std::filesystem::remove(types);
    Outcome const run = shell("zel convert library.xmi copy.xmi");
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.out, "copy.xmi: 492 objects\n");
    EXPECT_EQ(run.error, "zel: library.xmi: left out: 72 links, 1 file (see zel info)\n");
}

TEST_F(Commands, DumpPrintsEachObjectInItsContainer) {
    Outcome const run = runZel({"dump", library});
    EXPECT_EQ(run.exitCode, 0);
    EXPECT_EQ(run.error, "");
    EXPECT_THAT(run.out,
                AllOf(StartsWith("\n  [ MetaModel name=\"library\" uri=\"file://" + library + "\" id=\"1 {readonly}\""),
                      HasSubstr("\n    [ topPackage name=\"library\" id=\"2 {readonly}\"\n"),
                      HasSubstr("\n          [ ownedLiteral name=\"book\" id=\"8 {readonly}\" "
                                "enumeration=\"MediaKind:Enumeration\" modelZEL=\"library:MetaModel\"\n"
                                "          ]\n"),
                      HasSubstr(" type=\"String:PrimitiveType\""), EndsWith("\n  ]\n")));
    std::size_t begun = 0;
    for (std::size_t at = run.out.find("  [ "); at != std::string::npos; at = run.out.find("  [ ", at + 1)) {
        ++begun;
    }
    EXPECT_EQ(begun, 493U) << "what info counts, and the factory";
}

TEST_F(Commands, AConvertedFileHoldsTheSameModel) {
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

TEST_F(Commands, CompareIgnoresPlaceAndIdsAndNamesThePairThatDiffers) {
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

TEST_F(Commands, RandomGivesTheSameModelForTheSameSeed) {
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

TEST_F(Commands, MetamodelListsWhatIsRegisteredAndShowsOne) {
    EXPECT_EQ(runZel({"metamodel"}).out,
              "http://schema.omg.org/spec/MOF/2.0                       ZEL               42 classes\n"
              "http://schema.omg.org/spec/UML/2.1                       uml               222 classes\n"
              "http://www.quillon.example/schemas/Foreign.xmi           Foreign           4 classes\n"
              "http://www.quillon.example/schemas/GenericComponent.xmi  GenericComponent  6 classes\n"
              "http://www.quillon.example/schemas/NumericTypes.xmi      NumericTypes      4 classes\n"
              "http://www.quillon.example/schemas/RhapsodyPlatform.xmi  RhapsodyPlatform  4 classes\n"
              "http://www.quillon.example/schemas/Tessel.xmi            Tessel            3 classes\n");
    Outcome const shown = runZel({"metamodel", "ZEL"});
    EXPECT_EQ(shown.exitCode, 0);
    EXPECT_THAT(shown.out, AllOf(HasSubstr("class Comment : ZEL.Element\n    body : String [0..1]\n"
                                           "    annotatedElement : Element [0..*]\n"),
                                 HasSubstr("enumeration PackageMergeKind { exdend, define }\n"),
                                 HasSubstr("primitive UnlimitedNatural\n")));
    EXPECT_EQ(runZel({"metamodel", "http://schema.omg.org/spec/MOF/2.0"}).out, shown.out);
}

TEST_F(Commands, TheTourHoldsAllItsClaimsAndChangesNoFile) {
    std::string const before = folder.content("library.xmi");
    Outcome const run = runZel({"tour", library});
    EXPECT_EQ(run.exitCode, 0) << run.out;
    EXPECT_EQ(run.error, "");
    EXPECT_THAT(run.out, AllOf(StartsWith("1. Read the files\n"), HasSubstr("\n11. Close everything\n"),
                               HasSubstr("leak account stands at zero"), EndsWith(" claims held.\n")));
    EXPECT_EQ(folder.content("library.xmi"), before);
    EXPECT_EQ(folder.content("library-types.xmi"), folder.content(kTypes)); // an absolute path stands for itself
}

TEST_F(Commands, AStepOfTheTourThatFailsIsNamed) {
    std::string const empty = folder.path("empty.xmi");
    ASSERT_EQ(runZel({"random", empty, "--seed", "1", "--depth", "0"}).exitCode, 0);
    Outcome const run = runZel({"tour", empty});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_THAT(run.error,
                testing::MatchesRegex("zel: tour failed in step 1 .Read the files.: .*classes to work on.*\n"));

    Outcome const unreadable = runZel({"tour", folder.file("text.xmi", "hello")});
    EXPECT_THAT(unreadable, isTrouble(HasSubstr("text.xmi at line 1"))) << "that is not the tour's fault";
}

} // namespace
