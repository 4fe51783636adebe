// What the program makes of its arguments.

#include "cli/CliTest.h"

#include <utility>

namespace ZEL::tests::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

using Arguments = CliTest;

TEST_F(Arguments, HelpAndVersionAreResults) {
    EXPECT_THAT(shell("zel --version"), isResult(testing::MatchesRegex("zel [0-9]+\\.[0-9]+\\.[0-9]+\n")));
    Outcome const help = shell("zel --help");
    EXPECT_EQ(shell("zel help").out, help.out);
    EXPECT_EQ(shell("zel help report").out, shell("zel report --help").out);
    for (std::string const command : {"tour", "info", "dump", "convert", "compare", "report", "random", "metamodel"}) {
        EXPECT_THAT(help, isResult(HasSubstr("\n  " + command + "  ")));
        EXPECT_THAT(shell("zel " + command + " --help"),
                    isResult(AllOf(HasSubstr("zel " + command), HasSubstr("--html-log NAME"))));
    }
}

TEST_F(Arguments, MistakesAreToldWithWhatWasExpected) {
    constexpr char kMetamodels[] =
        ", expected http://schema.omg.org/spec/MOF/2.0 (ZEL), http://schema.omg.org/spec/UML/2.1 (uml), ";
    std::pair<char const *, std::string> const cases[] = {
        {"", "found no command, expected tour, info, "},
        {"--html-log log", "found no command, expected tour, info, "},
        {"explain library.xmi", "found command explain, expected tour, info, "},
        {"info", "info: FILE is required (see zel info --help)"},
        {"--hepl", "found unknown option --hepl, did you mean '--help'? (see zel --help)"},
        {"--hepl info library.xmi", "found unknown option --hepl, did you mean '--help'?"},
        {"help explain", "found command explain, expected tour, info, "},
        {"info library.xmi --htlm-log=x",
         "info: found unknown option --htlm-log, did you mean '--html-log'? (see zel info"},
        {"info library.xmi --colour",
         "info: found unknown option --colour, expected --help, --root, --map or --html-log (see zel info --help)"},
        {"info -- library.xmi --hepl", "not expected: --hepl"},
        {"info library.xmi library-types.xmi", "not expected: library-types.xmi"},
        {"info library.xmi --html-log", "--html-log: 1 required NAME missing"},
        {"convert library.xmi", "OUT is required"},
        {"convert library.xmi x --to word",
         "--to: found word, expected standard, magicdraw, rhapsody, eclipse-uml2 or xmi-2.5.1"},
        {"convert library.xmi x --from rhapsody", "--from: found rhapsody, expected standard or magicdraw"},
        {"convert library.xmi x --from magicdraw --from ''", "--from"},
        {"random x", "--seed is required"},
        {"random x --seed one", "--seed: found one, expected a whole number from 0 to 4294967295"},
        {"random x --seed 4294967296", "--seed: found 4294967296, expected a whole number from 0 to 4294967295"},
        {"random x --seed 1 --depth -1", "--depth: found -1, expected a whole number from 0 to 2147483647"},
        {"random x --seed 1 --breadth 1e3", "--breadth: found 1e3, expected"},
        {"random x --seed 1 --associations ''", "--associations: found '', expected"},
        {"random x --seed 1 --metamodel m", std::string("metamodel: found m") + kMetamodels},
        {"metamodel http://nowhere", std::string("metamodel: found http://nowhere") + kMetamodels},
        {"metamodel ''", std::string("metamodel: found ''") + kMetamodels},
    };
    for (auto const & [arguments, says] : cases) {
        EXPECT_THAT(shell(std::string("zel ") + arguments), isTrouble(HasSubstr(says))) << arguments;
        EXPECT_FALSE(exists("x")) << arguments;
    }
}

/// The generator is a program of its own, with the same manners.
TEST_F(Arguments, ZelgenTellsItsOptionsAndMistakes) {
    EXPECT_THAT(shell("zelgen --version"), isResult(testing::MatchesRegex("zelgen [0-9]+\\.[0-9]+\\.[0-9]+\n")));
    Outcome const help = shell("zelgen --help");
    for (char const * const option : {"definition", "--out DIR", "--units N", "--depends FILE", "--namespace NAME",
                                      "--export-macro MACRO", "--depfile FILE", "--depfile-target FILE"}) {
        EXPECT_THAT(help, isResult(HasSubstr(option)));
    }
    for (auto const & [arguments, says] : {
             std::pair("app.yaml", "--out is required"),
             std::pair("--out gen", "definition is required"),
             std::pair("app.yaml --otu gen", "found unexpected argument '--otu', did you mean '--out'?"),
             std::pair("app.yaml other.yaml --out gen", "found unexpected argument 'other.yaml'"),
             std::pair("app.yaml --out gen --units 0", "--units: Value 0 not in range 1 to 1000"),
         }) {
        EXPECT_THAT(shell(std::string("zelgen ") + arguments),
                    ends(2, "", testing::StrEq(std::string("zelgen: ") + says + " (see zelgen --help)\n")))
            << arguments;
    }
    EXPECT_FALSE(exists("gen"));
}

TEST_F(Arguments, ZelgenRefusesADefinitionAndWritesNothing) {
    std::string const head = "prefix: app\nuris: [http://example.org/app]\nfactory_class: Maker\n";
    std::string const types =
        "types:\n  Maker: {superclasses: [ZEL.FactoryObject]}\n"
        "  A: {superclasses: [ZEL.Element], properties: {p: {type: ZEL.String, multiplicity: 0..*}}}\n";
    make("evil.yaml", head + "include_directory: ../../evil\n" + types);
    make("typo.yaml", head + types +
                          "  B: {superclasses: [A], properties: {q: {type: Strng}}}\n"
                          "  C: {superclasses: [B], properties: {q: {type: ZEL.String}}}\n");
    make("app.yaml", head + types);
    std::string const rest = " --out gen/deep --depends " ZEL_SOURCE_DIR "/metamodel/zel.metamodel.yaml";
    EXPECT_THAT(shell("zelgen evil.yaml" + rest),
                ends(1, "", HasSubstr("evil.yaml:4:20: found 'include_directory' '../../evil'")));
    EXPECT_THAT(shell("zelgen typo.yaml" + rest),
                ends(1, "", testing::StrEq("typo.yaml:7:49: property 'B.q': type 'Strng' not found\n")));
    EXPECT_FALSE(exists("evil") || exists("gen"));
    EXPECT_THAT(shell("zelgen app.yaml" + rest), ends(0, "", testing::StartsWith("app.yaml:6:49: warning: ")));
    EXPECT_TRUE(exists("gen/deep/app/A.h")) << "a warning is no mistake";
}

TEST_F(Arguments, NamesMayBeginLikeOptionsAfterADoubleHyphen) {
    make("-x.xmi", folder.content("library.xmi"));
    EXPECT_THAT(shell("zel info -- -x.xmi").out, HasSubstr("/-x.xmi\n"));
    EXPECT_EQ(shell("zel info -x.xmi").exitCode, 2);
}

TEST_F(Arguments, NamesDoNotSteerTheTerminal) {
    EXPECT_THAT(shell("zel info 'a\033[31m\n\xC2\x9B\xFF\xE2\x80\xAE\xC3\xA4 b'"),
                isTrouble(HasSubstr("cannot read a\\x1B[31m\\n\\u009B\\xFF\\u202E\xC3\xA4 b: No such file")));
}

TEST_F(Arguments, TheLogGoesIntoAFileOnDemand) {
    EXPECT_EQ(shell("zel info library.xmi --html-log log").exitCode, 0);
    EXPECT_THAT(folder.content("log.html"), AllOf(HasSubstr("library.xmi"), HasSubstr("</html>")));
    EXPECT_EQ(shell("zel --html-log first info library.xmi").exitCode, 0);
    EXPECT_THAT(folder.content("first.html"), HasSubstr("</html>"));
    EXPECT_THAT(shell("zel info library.xmi --html-log no/log"),
                isTrouble(HasSubstr("cannot write no/log.html: No such file or directory")));
    EXPECT_THAT(shell("ulimit -f 1; zel compare library.xmi library.xmi --html-log log"),
                ends(2, "equal: 492 objects\n", "zel: cannot write log.html: File too large\n"));
    std::filesystem::create_directory(folder.path("folder.html"));
    EXPECT_THAT(shell("zel info library.xmi --html-log folder"), isTrouble(HasSubstr("folder.html: it is a folder")));
}

} // namespace
} // namespace ZEL::tests::cli
