// Files that cannot be read or written, and results that nobody takes.

#include "cli/CliTest.h"

#include <sys/stat.h>

#include <csignal>

namespace {

using clitest::isTrouble;
using clitest::Outcome;
using clitest::runZel;
using testing::HasSubstr;

using Trouble = clitest::CliTest;

TEST_F(Trouble, WhatCannotBeReadIsSaidWithTheReason) {
    std::string const text = folder.content("library.xmi");
    make("empty.xmi", "");
    make("text.xmi", "hello");
    make("bytes.xmi", std::string("\0\x7F\xFF\xFE", 4));
    make("half.xmi", text.substr(0, text.size() / 2));
    make("other.xmi", "<a xmlns='urn:a'/>");
    make("old.xmi", "<xmi:XMI xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' xmi:version='2.0'/>");
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    struct Case {
        std::string file;
        std::string says;
    };
    std::vector<Case> const cases{
        {"none.xmi", "none.xmi: No such file or directory"},
        {"library.xmi/x", "library.xmi/x: Not a directory"},
        {"''", "'': No such file or directory"},
        {"-", "-: a model is kept in a file"},
        {"folder", "folder: it is a folder"},
        {"pipe", "pipe: not a plain file"},
        {"empty.xmi", "empty.xmi at line 1, column 1"},
        {"text.xmi", "text.xmi at line 1, column 1"},
        {"bytes.xmi", "bytes.xmi at line 1, column "},
        {"half.xmi", "half.xmi at line "},
        {"other.xmi", "other.xmi: it holds no model of a known metamodel, found {urn:a}a"},
        {"old.xmi", "old.xmi: its XMI is of another version than 2.1"},
    };
    for (Case const & unreadable : cases) {
        for (std::string const & line : {"zel info " + unreadable.file, "zel convert " + unreadable.file + " new.xmi",
                                         "zel compare library.xmi " + unreadable.file}) {
            Outcome const run = shell(line);
            EXPECT_THAT(run, isTrouble(HasSubstr("zel: cannot read "))) << line;
            EXPECT_THAT(run.error, HasSubstr(unreadable.says)) << line;
            EXPECT_EQ(run.out, "") << line;
        }
        EXPECT_FALSE(std::filesystem::exists(folder.path("new.xmi"))) << unreadable.file;
    }
}

TEST_F(Trouble, WhatCannotBeWrittenStaysAsItWas) {
    make("kept.xmi", "as it was");
    make("page.html", "as it was");
    std::filesystem::create_directory(folder.path("folder"));
    struct Case {
        char const * line;
        std::string says;
    };
    std::vector<Case> const cases{
        {"zel convert library.xmi no/where.xmi", "cannot write no/where.xmi: No such file or directory"},
        {"zel convert library.xmi library.xmi/x", "cannot write library.xmi/x: Not a directory"},
        {"zel convert library.xmi ''", "cannot write '': "},
        {"zel convert library.xmi -", "cannot write -: a model is kept in a file"},
        {"zel convert library.xmi folder", "cannot write folder: it is a folder"},
        {"zel convert library.xmi none/", "cannot write none/: it is a folder"},
        {"ln -s /dev/full full; zel convert library.xmi full", "cannot write full: No space left on device"},
        {"ulimit -f 8; zel convert library.xmi kept.xmi", "cannot write kept.xmi: File too large"},
        {"ulimit -f 8; zel convert library.xmi new.xmi", "cannot write new.xmi: File too large"},
        {"zel report library.xmi no/page", "cannot write no/page.html: No such file or directory"},
        {"ulimit -f 8; zel report library.xmi page", "cannot write page.html: "},
        {"ulimit -f 8; zel report library.xmi new.xmi", "cannot write new.xmi.html: "},
        {"zel random no/r.xmi --seed 1", "cannot write no/r.xmi: No such file or directory"},
        {"ulimit -f 1; zel random kept.xmi --seed 1", "cannot write kept.xmi: File too large"},
        {"zel convert library.xmi library-types.xmi", "library-types.xmi: library.xmi has links to it"},
    };
    for (Case const & unwritable : cases) {
        Outcome const run = shell(unwritable.line);
        EXPECT_THAT(run, isTrouble(HasSubstr(unwritable.says))) << unwritable.line;
        EXPECT_EQ(run.out, "") << unwritable.line;
        EXPECT_FALSE(hasLeftovers()) << unwritable.line;
        EXPECT_FALSE(std::filesystem::exists(folder.path("new.xmi"))) << unwritable.line;
    }
    EXPECT_EQ(folder.content("kept.xmi"), "as it was");
    EXPECT_EQ(folder.content("page.html"), "as it was");
    EXPECT_FALSE(std::filesystem::exists(folder.path("new.xmi.html")));
    EXPECT_EQ(folder.content("library-types.xmi"), folder.content(clitest::kTypes));
}

TEST_F(Trouble, NothingOfTheUsersIsRemoved) {
    make("new.xmi~", "an editor's");
    std::filesystem::create_symlink("new.xmi~", folder.path("link.xmi~"));
    EXPECT_EQ(shell("zel convert library.xmi link.xmi").exitCode, 2) << "the name of the temporary file is taken";
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.xmi~")));
    EXPECT_EQ(folder.content("new.xmi~"), "an editor's");
}

TEST_F(Trouble, ACopyThatFailsLeavesTheWholeFileBesideIt) {
    // A link is written through, into a file that may take half of it only.
    make("goal.xmi", "as it was");
    std::filesystem::create_hard_link(folder.path("goal.xmi"), folder.path("other.xmi"));
    EXPECT_THAT(shell("ulimit -f 8; zel convert library.xmi goal.xmi"),
                isTrouble(HasSubstr("goal.xmi: File too large; what was written is in goal.xmi~")));
    EXPECT_TRUE(std::filesystem::exists(folder.path("goal.xmi~")));
}

TEST_F(Trouble, ResultsThatCannotBePrintedAreTrouble) {
    EXPECT_THAT(runZel({"info", library}, "/dev/full"),
                isTrouble(HasSubstr("cannot write the results to standard output: No space left on device")));
    EXPECT_THAT(shell("zel tour library.xmi >&-"), isTrouble(HasSubstr("standard output: Bad file descriptor")));
    EXPECT_THAT(shell("zel --help > /dev/full"), isTrouble(HasSubstr("standard output: No space left on device")));
    // Not even a file that is opened later takes the place of a closed stream.
    EXPECT_EQ(shell("zel info library.xmi --html-log log >&-").exitCode, 2);
    EXPECT_THAT(folder.content("log.html"), testing::Not(HasSubstr("next id")));
    EXPECT_EQ(shell("zel info none.xmi 2>&-").exitCode, 2);
}

TEST_F(Trouble, WhoeverStopsReadingEndsTheProgramQuietly) {
    for (std::vector<std::string> const & arguments : {std::vector<std::string>{"info", library},
                                                       {"metamodel", "ZEL"},
                                                       {"dump", library},
                                                       {"tour", library},
                                                       {"--help"}}) {
        Outcome const run = clitest::runZelUnread(arguments);
        EXPECT_EQ(run.exitCode, -SIGPIPE) << arguments.front();
        EXPECT_EQ(run.error, "") << arguments.front();
    }
    Outcome const first = shell("zel metamodel ZEL | head -n 1");
    EXPECT_EQ(first.out, "class MetaModel : ZEL.Model, ZEL.Class\n");
    EXPECT_EQ(first.error, "");
}

} // namespace
