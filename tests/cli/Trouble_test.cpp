// Files that cannot be read or written, and results that nobody takes.

#include "cli/CliTest.h"

#include <sys/stat.h>

#include <csignal>
#include <utility>

namespace ZEL::tests::cli {
namespace {

using testing::AllOf;
using testing::HasSubstr;

using Trouble = CliTest;

TEST_F(Trouble, WhatCannotBeReadIsSaidWithTheReason) {
    std::string const text = folder.content("library.xmi");
    make("empty.xmi", "");
    make("text.xmi", "hello");
    make("bytes.xmi", std::string("\0\x7F\xFF\xFE", 4));
    make("half.xmi", text.substr(0, text.size() / 2));
    make("other.xmi", "<a xmlns='urn:a'/>");
    make("old.xmi", "<xmi:XMI xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' xmi:version='3.0'/>");
    make("bare.uml", "<uml:Model xmi:version='3.0' xmlns:xmi='http://www.omg.org/spec/XMI/20131001' "
                     "xmlns:uml='http://www.eclipse.org/uml2/5.0.0/UML' xmi:id='m'><packagedElement/></uml:Model>");
    make("one.xmi", "<XMI xmi.version='1.2' xmlns:UML='org.omg.xmi.namespace.UML'><XMI.content/></XMI>");
    make("cut.mdzip", std::string("PK\x03\x04") + "and no more");
    make("own.xmi", "<xmi:XMI xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' xmi:version='2.1' "
                    "xmlns:p='http://example.org/prof'><p:Model name='m'><part/></p:Model><p:Note/></xmi:XMI>");
    std::filesystem::create_directory(folder.path("folder"));
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    std::pair<std::string, std::string> const cases[] = {
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
        {"old.xmi", "old.xmi: its XMI is of another version than 2.0 to 2.5.1"},
        {"bare.uml", "bare.uml: its XMI is of another version than 2.0 to 2.5.1"},
        {"one.xmi", "one.xmi: it is XMI 1, which is another format; open it in the tool that wrote it, or in Eclipse "
                    "UML2, and save it as XMI 2.1 or later\n"},
        {"cut.mdzip", "cut.mdzip: cannot unpack "},
        {"own.xmi", "own.xmi: it holds no model of a known metamodel, found {http://example.org/prof}Model and others"},
    };
    for (auto const & [file, says] : cases) {
        for (std::string const & line :
             {"zel info " + file, "zel convert " + file + " new.xmi", "zel compare library.xmi " + file}) {
            EXPECT_THAT(shell(line), isTrouble(AllOf(HasSubstr("zel: cannot read "), HasSubstr(says)))) << line;
        }
        EXPECT_FALSE(exists("new.xmi")) << file;
    }
}

TEST_F(Trouble, WhatCannotBeWrittenStaysAsItWas) {
    make("kept.xmi", "as it was");
    make("page.html", "as it was");
    std::filesystem::create_directory(folder.path("folder"));
    std::pair<std::string, std::string> const cases[] = {
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
        {"zel report library.xmi folder/", "cannot write folder/: it is a folder"},
        {"zel report library.xmi ''", "cannot write '': a file has no empty name"},
        {"zel info library.xmi --html-log folder/", "cannot write folder/: it is a folder"},
        {"zel convert library.xmi library-types.xmi", "library-types.xmi: library.xmi has links to it"},
    };
    for (auto const & [line, says] : cases) {
        EXPECT_THAT(shell(line), isTrouble(HasSubstr(says))) << line;
        EXPECT_FALSE(hasLeftovers()) << line;
        EXPECT_FALSE(exists("new.xmi")) << line;
    }
    EXPECT_EQ(folder.content("kept.xmi"), "as it was");
    EXPECT_EQ(folder.content("page.html"), "as it was");
    EXPECT_FALSE(exists("new.xmi.html"));
    EXPECT_EQ(folder.content("library-types.xmi"), folder.content(kTypes));
}

TEST_F(Trouble, NothingOfTheUsersIsRemoved) {
    make("new.xmi~", "an editor's");
    std::filesystem::create_symlink("new.xmi~", folder.path("link.xmi~"));
    EXPECT_EQ(shell("zel convert library.xmi link.xmi").exitCode, 2) << "the name of the temporary file is taken";
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.xmi~")));
    EXPECT_EQ(folder.content("new.xmi~"), "an editor's");
    make("page.html~", "an editor's");
    make("page.html", "earlier");
    EXPECT_EQ(shell("ulimit -f 8; zel report library.xmi page").exitCode, 2);
    EXPECT_EQ(folder.content("page.html"), "earlier");
    EXPECT_EQ(shell("chmod 600 page.html; zel report library.xmi page").exitCode, 0);
    EXPECT_EQ(folder.content("page.html~"), "an editor's");
    EXPECT_EQ(shell("stat -c %a page.html; ls *~*").out, "600\nlink.xmi~\nnew.xmi~\npage.html~\n");
}

TEST_F(Trouble, ACopyThatFailsLeavesTheWholeFileBesideIt) {
    // A link is written through, into a plain file that takes nothing.
    std::filesystem::create_symlink("/proc/self/oom_score_adj", folder.path("goal.xmi"));
    EXPECT_THAT(shell("zel convert library.xmi goal.xmi"),
                isTrouble("zel: cannot write goal.xmi: Invalid argument; what was written is in goal.xmi~\n"));
    EXPECT_THAT(folder.content("goal.xmi~"), testing::EndsWith("</xmi:XMI>\n"));
    // What cannot even be written beside it is not kept.
    make("goal", "as it was");
    std::filesystem::create_hard_link(folder.path("goal"), folder.path("other.xmi"));
    EXPECT_THAT(shell("ulimit -f 8; zel convert library.xmi other.xmi"),
                isTrouble("zel: cannot write other.xmi: File too large\n"));
    EXPECT_EQ(folder.content("goal"), "as it was");
    EXPECT_FALSE(exists("other.xmi~"));
}

TEST_F(Trouble, ResultsThatCannotBePrintedAreTrouble) {
    EXPECT_THAT(shell("zel tour library.xmi >&-"), isTrouble(HasSubstr("standard output: Bad file descriptor")));
    EXPECT_THAT(shell("zel --help > /dev/full"), isTrouble(HasSubstr("standard output: No space left on device")));
    // Not even a file that is opened later takes the place of a closed stream.
    EXPECT_EQ(shell("zel info library.xmi --html-log log >&-").exitCode, 2);
    EXPECT_THAT(folder.content("log.html"), testing::Not(HasSubstr("next id")));
    EXPECT_EQ(shell("zel info none.xmi 2>&-").exitCode, 2);
}

TEST_F(Trouble, WhoeverStopsReadingEndsTheProgramQuietly) {
    // Standard output is a pipe whose only reader is closed.
    std::string const unread = "rm -f unread; mkfifo unread; exec 3<>unread >unread 3<&-; exec zel ";
    for (char const * command :
         {"info library.xmi", "metamodel ZEL", "dump library.xmi", "tour library.xmi", "--help"}) {
        EXPECT_THAT(shell(unread + command), ends(-SIGPIPE, "")) << command;
    }
    EXPECT_THAT(shell("zel metamodel ZEL | head -n 1"), ends(0, "class MetaModel : ZEL.Model, ZEL.Class\n"));
}

} // namespace
} // namespace ZEL::tests::cli
