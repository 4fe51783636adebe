// What the commands do with good files, beyond what the pages of the guide show.

#include "cli/CliTest.h"

namespace ZEL::tests::cli {
namespace {

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using Commands = CliTest;

TEST_F(Commands, InfoNamesAndCountsWhatIsNotUnderstood) {
    makeVariant("library.xmi", "ZEL:Enumeration\"", "ZEL:Enumeratoin\"");
    makeVariant("library.xmi", "name=\"catalogue\"", "name=\"catalogue\" colour=\"red\"");
    makeVariant("library.xmi", "<ownedAttribute ", "<ownedAttribute lower=\"x\" ");
    makeVariant("library.xmi", "  </ZEL:MetaModel>", "    <other><other/></other>\n  </ZEL:MetaModel>");
    std::filesystem::remove(folder.path("library-types.xmi"));
    std::string const sum = "10 elements, 1 attribute, 1 value, 73 links";
    EXPECT_THAT(shell("zel info library.xmi"),
                isResult(AllOf(HasSubstr("\nleft out     1 file\nkept         " + sum + ", not understood\n"),
                               HasSubstr("\n\nelements skipped\n"
                                         "       1 other\n"
                                         "       1 packagedElement of type ZEL:Enumeratoin\n"
                                         "\nelements in them\n"
                                         "       1 other\n"
                                         "       7 ownedLiteral of type ZEL:EnumerationLiteral\n"
                                         "\nattributes ignored\n"
                                         "       1 Package.colour\n"
                                         "\nvalues refused\n"
                                         "       1 Property.lower\n"
                                         "\nlinks without target\n"
                                         "       1 PackageImport.importedPackage\n"
                                         "      11 Parameter.type\n"),
                               EndsWith("\nfiles not read\n       1 file://" + folder.path("library-types.xmi\n")))));
    EXPECT_THAT(shell("zel convert library.xmi copy.xmi").error,
                "zel: library.xmi: kept, not understood: " + sum + "; left out: 1 file (see zel info)\n")
        << "other commands say it in one line";
    EXPECT_THAT(folder.content("copy.xmi"),
                AllOf(HasSubstr("colour=\"red\""), HasSubstr("<other><other/></other>"), HasSubstr("lower=\"x\""),
                      HasSubstr("xmi:type=\"ZEL:Enumeratoin\""), HasSubstr("<importedPackage "),
                      HasSubstr("href=\"library-types.xmi#")))
        << "what is not understood is written back";
}

TEST_F(Commands, ConvertKeepsTheIdsOfFilesThatItDoesNotWriteAndEveryValueOfMany) {
    std::string const head = "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' "
                             "xmlns:cmof='http://schema.omg.org/spec/MOF/2.0/cmof.xml'><cmof:Package xmi:id='_0'>";
    std::string const tail = "</cmof:Package></xmi:XMI>";
    make("DC.cmof", head +
                        "<ownedMember xmi:type='cmof:PrimitiveType' xmi:id='Real' name='Real'/>"
                        "<ownedMember xmi:type='cmof:Class' xmi:id='B' name='B'/>" +
                        tail);
    make("DI.cmof",
         head +
             "<ownedMember xmi:type='cmof:Class' xmi:id='A' name='A'><superClass href='DC.cmof#B'/>"
             "<ownedAttribute xmi:type='cmof:Property' xmi:id='x'><type href='DC.cmof#Real'/></ownedAttribute>"
             "<ownedRule xmi:type='cmof:Constraint' xmi:id='r'><specification xmi:type='cmof:OpaqueExpression' "
             "xmi:id='e'><body>a</body><body>b</body></specification></ownedRule></ownedMember>" +
             tail);
    EXPECT_EQ(shell("zel convert DI.cmof out.xmi").exitCode, 0);
    EXPECT_THAT(folder.content("out.xmi"), AllOf(HasSubstr("href=\"DC.cmof#Real\""), HasSubstr("href=\"DC.cmof#B\""),
                                                 HasSubstr("<body>b</body>")));
    EXPECT_THAT(shell("zel info out.xmi"), isResult(HasSubstr("\nleft out     nothing\n")));
    EXPECT_THAT(shell("zel compare DI.cmof out.xmi").exitCode, 0) << "each reading has objects of its own of DC.cmof";
}

TEST_F(Commands, NothingOutsideOfTheRootIsOpened) {
    std::filesystem::create_directory(folder.path("in"));
    std::filesystem::rename(folder.path("library.xmi"), folder.path("in/library.xmi"));
    EXPECT_THAT(
        shell("sed -i 's|href=\"library-types|href=\"../library-types|' in/library.xmi; zel info in/library.xmi"),
        isResult(HasSubstr("\nleft out     nothing\n")));
    std::string const error = "zel: in/library.xmi: kept, not understood: 72 links; left out: 1 file (see zel info)\n";
    for (std::string const command : {"dump", "convert", "report", "compare"}) {
        std::string const second = command == "dump" ? "" : command == "compare" ? " in/library.xmi" : " out.xmi";
        EXPECT_THAT(shell("zel " + command + " --root in in/library.xmi" + second).error, StartsWith(error)) << command;
    }
    EXPECT_THAT(shell("zel info in/library.xmi --root nowhere"),
                isTrouble(HasSubstr("info: --root: found nowhere, expected a folder")));
}

TEST_F(Commands, DumpPrintsEachObjectInItsContainer) {
    EXPECT_THAT(shell("zel dump library.xmi"),
                isResult(AllOf(StartsWith("\n  [ MetaModel name=\"library\" uri=\"file://" +
                                          folder.path("library.xmi") + "\" id=\"1 {readonly}\""),
                               HasSubstr("\n    [ topPackage name=\"library\" id=\"2 {readonly}\"\n"),
                               HasSubstr("\n          [ ownedLiteral name=\"book\" id=\"8 {readonly}\" "
                                         "enumeration=\"MediaKind:Enumeration\" modelZEL=\"library:MetaModel\"\n"
                                         "          ]\n"),
                               HasSubstr(" type=\"String:PrimitiveType\""), EndsWith("\n  ]\n"))));
    EXPECT_EQ(shell("zel dump library.xmi | grep -c '^ *\\[ '").out, "493\n") << "what info counts, and the factory";
}

TEST_F(Commands, NamesOfAStrangerAreNoMarkupAndDoNotSteerTheTerminal) {
    makeVariant("odd.xmi", "name=\"catalogue\"",
                "name=\"&lt;script>alert('&amp;amp;')&lt;/script>&#x9B;31m&#x202E;&#10;x \" visibility=\"&lt;i>\"");
    EXPECT_THAT(shell("zel dump odd.xmi").out,
                HasSubstr(" name=\"<script>alert('&amp;')</script>\\u009B31m\\u202E\\nx \""));
    EXPECT_EQ(shell("zel report odd.xmi 'p<i>' --html-log log").exitCode, 0);
    for (std::string const & page : {folder.content("p<i>.html"), folder.content("log.html")}) {
        EXPECT_THAT(page, testing::Not(testing::AnyOf(HasSubstr("<script>"), HasSubstr("<i>"))));
    }
    EXPECT_THAT(folder.content("p<i>.html"), AllOf(HasSubstr("<title>RV2FEN UML Generation Report p&lt;i&gt;</title>"),
                                                   HasSubstr("&lt;script&gt;alert('&amp;amp;')&lt;/script&gt;")));
}

TEST_F(Commands, AFileMayBeWrittenOverItself) {
    EXPECT_THAT(shell("zel convert library.xmi copy.xmi --from standard --to standard"),
                isResult("copy.xmi: 492 objects\n"));
    std::string const once = folder.content("copy.xmi");
    EXPECT_EQ(shell("zel convert copy.xmi copy.xmi").exitCode, 0);
    EXPECT_EQ(folder.content("copy.xmi"), once);
}

TEST_F(Commands, ALinkToAnotherObjectOfTheOtherFileIsADifference) {
    makeVariant("link.xmi", "7a52_99\"", "7a52_100\"");
    EXPECT_THAT(shell("zel compare library.xmi link.xmi"),
                ends(1, HasSubstr("Property 'originalLanguage'"), testing::_));
}

TEST_F(Commands, RandomTakesItsSeedAndItsSizes) {
    std::string const sizes = " --depth 3 --breadth 5 --associations 40";
    EXPECT_THAT(shell("zel random a.xmi --seed 17" + sizes), isResult(EndsWith(", seed 17\n")));
    EXPECT_EQ(shell("zel random b.xmi --seed 18" + sizes).exitCode, 0);
    EXPECT_EQ(shell("zel compare a.xmi b.xmi").exitCode, 1);
    EXPECT_EQ(shell("zel random b.xmi --seed 17 --depth 3 --breadth 5 --associations 0").exitCode, 0);
    EXPECT_EQ(shell("zel compare a.xmi b.xmi").exitCode, 1);
    EXPECT_THAT(shell("zel random b.xmi --seed 1 --depth 0").out, HasSubstr("b.xmi: 1 object,"));
}

TEST_F(Commands, AMetamodelIsShownByItsPrefixAndByItsUri) {
    Outcome const shown = shell("zel metamodel ZEL");
    EXPECT_THAT(shown, isResult(AllOf(HasSubstr("enumeration PackageMergeKind { exdend, define }\n"),
                                      HasSubstr("primitive UnlimitedNatural\n"))));
    EXPECT_EQ(shell("zel metamodel http://schema.omg.org/spec/MOF/2.0").out, shown.out);
}

TEST_F(Commands, UmlIsLoadedOnlyWhereItIsNeeded) {
    std::string const head = "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' "
                             "xmlns:ZEL='http://schema.omg.org/spec/MOF/2.0'>";
    std::string const model = "<ZEL:MetaModel xmi:id='_1' name='m'><topPackage xmi:type='ZEL:Package' name='p'>";
    std::string const tail = "</topPackage></ZEL:MetaModel></xmi:XMI>";
    make("late.xmi", head + model + "<x:y xmlns:x='http://schema.omg.org/spec/UML/2.1'/>" + tail);
    make("u.xmi",
         head + "<uml:Model xmlns:uml='http://www.eclipse.org/uml2/5.0.0/UML' xmi:id='_1' name='u'/></xmi:XMI>");
    make("link.xmi", head + model +
                         "<packageImport xmi:type='ZEL:PackageImport'><importedPackage href='u.xmi#_1'/>"
                         "</packageImport>" +
                         tail);
    std::pair<std::string, bool> const cases[] = {
        {"--version", false},
        {"--help", false},
        {"info library.xmi", false},
        {"convert library.xmi copy.xmi", false},
        {"compare library.xmi library.xmi", false},
        {"random r.xmi --seed 1 --depth 2", false},
        {"metamodel ZEL", false},
        {"metamodel", true},
        {"metamodel uml", true},
        {"random r.xmi --seed 1 --depth 2 --metamodel uml", true},
        {"convert library.xmi copy.xmi --to magicdraw", true},
        {"info late.xmi", true},
        {"info u.xmi", true},
        {"info link.xmi", true},
    };
    for (auto const & [arguments, needsUml] : cases) {
        Outcome const run = shell("LD_DEBUG=files LD_DEBUG_OUTPUT=loaded zel " + arguments);
        EXPECT_EQ(run.exitCode, 0) << arguments << '\n' << run.error;
        EXPECT_EQ(shell("grep -q libzel-uml loaded.*; code=$?; rm loaded.*; exit $code").exitCode, needsUml ? 0 : 1)
            << arguments;
    }
    EXPECT_THAT(shell("zel info link.xmi"), isResult(HasSubstr("\nleft out     nothing\n")));
}

TEST_F(Commands, CheckAsksTheRulesThatAreNamedAndKnowsThoseOfUml) {
    make("machine.uml",
         "<uml:Model xmlns:uml='http://www.eclipse.org/uml2/5.0.0/UML' xmlns:xmi='http://www.omg.org/XMI' "
         "xmi:version='2.0' xmi:id='_1' name='m'>"
         "<packagedElement xmi:type='uml:StateMachine' xmi:id='_2' name='s'>"
         "<region xmi:id='_3' name='r'><subvertex xmi:type='uml:FinalState' xmi:id='_4' name='f'/>"
         "<transition xmi:id='_5' name='t' source='_4'/></region></packagedElement></uml:Model>");
    std::string const target =
        "error: Transition 's.r.t': has no value of 'target', expected at least 1 [multiplicity]\n";
    std::string const final =
        "error: FinalState 's.r.f': a final state has no outgoing transitions [no_outgoing_transitions]\n";
    EXPECT_THAT(shell("zel check machine.uml"), ends(1, final + target + "5 objects: 2 errors\n"));
    EXPECT_THAT(shell("zel check machine.uml --rule multiplicity"), ends(1, target + "5 objects: 1 error\n"));
    EXPECT_THAT(shell("zel check machine.uml --without multiplicity --without no_outgoing_transitions"),
                isResult("5 objects: nothing found\n"));
    EXPECT_THAT(shell("zel check machine.uml --rule multiplicty"),
                isTrouble("zel: check: found rule multiplicty, did you mean 'multiplicity'?\n"));
    EXPECT_THAT(shell("zel check library.xmi --rule no_outgoing_transitions"), isTrouble(HasSubstr("found rule")))
        << "of a metamodel that the file has nothing of";
}

TEST_F(Commands, TheTourChangesNoFile) {
    EXPECT_EQ(shell("zel tour library.xmi").exitCode, 0);
    EXPECT_EQ(folder.content("library.xmi"), folder.content(kLibrary)); // an absolute path stands for itself
    EXPECT_EQ(folder.content("library-types.xmi"), folder.content(kTypes));
}

TEST_F(Commands, AStepOfTheTourThatFailsIsNamed) {
    ASSERT_EQ(shell("zel random empty.xmi --seed 1 --depth 0").exitCode, 0);
    EXPECT_THAT(shell("zel tour empty.xmi"),
                ends(1, testing::_,
                     testing::MatchesRegex("zel: tour failed in step 1 .Read the files.: .*classes to work on.*\n")));
    make("text.xmi", "hello");
    EXPECT_THAT(shell("zel tour text.xmi"), ends(2, testing::_, HasSubstr("text.xmi at line 1")))
        << "not the tour's fault";
}

TEST_F(Commands, DiffTellsWhatIsDifferentAndByItsExitCodeWhetherAnythingIs) {
    makeVariant("renamed.xmi", "name=\"Shelf\"", "name=\"Rack\"");
    EXPECT_THAT(shell("zel diff library.xmi renamed.xmi"),
                ends(1, "Class 'library.branches.Shelf' renamed to 'Rack'\n"));
    EXPECT_THAT(shell("zel diff library.xmi library.xmi"), isResult(""));
    EXPECT_THAT(shell("zel diff --json library.xmi library.xmi"),
                isResult("{\n  \"equal\": true,\n  \"differences\": []\n}\n"));
    EXPECT_THAT(shell("zel diff --json renamed.xmi library.xmi"),
                ends(1, AllOf(HasSubstr("\"kind\": \"valueChanged\""), HasSubstr("\"name\": \"library.branches.Rack\""),
                              HasSubstr("\"after\": [\n        \"Shelf\"\n      ]"))));
    EXPECT_THAT(shell("zel diff /dev/null library.xmi"), ends(1, "492 objects added\n"));
    EXPECT_THAT(shell("zel diff library.xmi /dev/null"), ends(1, "492 objects removed\n"));
    EXPECT_THAT(shell("zel diff library.xmi nothing.xmi"), isTrouble(HasSubstr("cannot read nothing.xmi")));
}

TEST_F(Commands, DiffWritesAPageWhereNamesAreNoMarkup) {
    makeVariant("renamed.xmi", "name=\"Shelf\"", "name=\"&lt;b>Rack\"");
    EXPECT_EQ(shell("zel diff --html page library.xmi renamed.xmi").exitCode, 1);
    EXPECT_THAT(folder.content("page.html"),
                AllOf(HasSubstr("<h1>library.xmi and renamed.xmi</h1>"), HasSubstr("1 difference."),
                      HasSubstr("&lt;b&gt;Rack"), Not(HasSubstr("<b>"))));
    EXPECT_THAT(shell("zel diff --html no/page library.xmi renamed.xmi"),
                isTrouble(HasSubstr("cannot write no/page.html")));
}

TEST_F(Commands, MergeTakesWhatBothSidesChangedAndLeavesConflictsToOurs) {
    makeVariant("ours.xmi", "name=\"Shelf\"", "name=\"Rack\"");
    makeVariant("theirs.xmi", "name=\"Newsletter\"", "name=\"Circular\"");
    EXPECT_THAT(shell("zel merge library.xmi ours.xmi theirs.xmi -o both.xmi"),
                isResult("both.xmi: 1 change taken, 0 conflicts\n"));
    EXPECT_EQ(shell("zel diff library.xmi both.xmi").out, "Class 'library.branches.Shelf' renamed to 'Rack'\n"
                                                          "Class 'library.notices.Newsletter' renamed to 'Circular'\n");
    makeVariant("theirs.xmi", "name=\"Shelf\"", "name=\"Board\"");
    EXPECT_THAT(shell("zel merge library.xmi ours.xmi theirs.xmi -o kept.xmi"),
                ends(1, "kept.xmi: 0 changes taken, 1 conflict\n"
                        "conflict: ours: Class 'library.branches.Shelf' renamed to 'Rack'; "
                        "theirs: Class 'library.branches.Shelf' renamed to 'Board'\n"));
    EXPECT_THAT(shell("zel diff ours.xmi kept.xmi"), isResult(""));
    EXPECT_EQ(shell("zel merge library.xmi ours.xmi theirs.xmi -o ours.xmi --prefer theirs").exitCode, 0);
    EXPECT_THAT(shell("zel diff ours.xmi theirs.xmi"), isResult(""));
    EXPECT_FALSE(hasLeftovers());
}

TEST_F(Commands, MergeOfModelsThatHaveNothingInCommonCanBeRead) {
    EXPECT_EQ(shell("zel random a.xmi --seed 1 && zel random b.xmi --seed 2").exitCode, 0);
    EXPECT_EQ(shell("zel merge a.xmi a.xmi b.xmi -o c.xmi").exitCode, 0);
    EXPECT_THAT(shell("zel diff b.xmi c.xmi"), isResult(""));
}

TEST_F(Commands, VersionsElsewhereFollowTheLinksOfTheirFile) {
    makeVariant("renamed.xmi", "name=\"Shelf\"", "name=\"Rack\"");
    EXPECT_EQ(shell("mkdir away && mv renamed.xmi away && cp library.xmi away").exitCode, 0);
    EXPECT_NE(shell("zel diff library.xmi away/renamed.xmi").out, "Class 'library.branches.Shelf' renamed to 'Rack'\n");
    EXPECT_THAT(shell("zel diff --path library.xmi library.xmi away/renamed.xmi"),
                ends(1, "Class 'library.branches.Shelf' renamed to 'Rack'\n"));
    EXPECT_THAT(shell("zel merge --path library.xmi away/library.xmi away/renamed.xmi library.xmi -o library.xmi"),
                isResult("library.xmi: 0 changes taken, 0 conflicts\n"));
    EXPECT_THAT(folder.content("library.xmi"), HasSubstr("href=\"library-types.xmi#"));
}

} // namespace
} // namespace ZEL::tests::cli
