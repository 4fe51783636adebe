// What a terminal shows of work that takes its time.

#include "cli/CliTest.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <csignal>

namespace ZEL::tests::cli {
namespace {

/// A target that takes the beginning of a file only, until it is emptied.
class Terminal : public CliTest {
protected:
    Terminal() {
        EXPECT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
        fReader = ::open(pipe.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    }
    ~Terminal() override { ::close(fReader); }

    void empty() const {
        pollfd waiting{fReader, POLLIN, 0};
        ::poll(&waiting, 1, 20'000); // for the writer to come
        ::fcntl(fReader, F_SETFL, 0);
        std::array<char, 4096> buffer{};
        while (::read(fReader, buffer.data(), buffer.size()) > 0) {
        }
    }

    std::string const pipe = folder.path("pipe");

private:
    int fReader = -1;
};

TEST_F(Terminal, LongWorkIsTold) {
    LiveRun run("zel convert library.xmi " + pipe, folder.path(""));
    std::string const told = "\rwriting " + pipe + " ... 1 s\033[K";
    EXPECT_THAT(run.waitFor(told), testing::EndsWith(told));
    empty();
    Outcome const end = run.finish();
    EXPECT_EQ(end.exitCode, 0);
    EXPECT_THAT(end.error, testing::EndsWith("\r\033[K")) << "the line is taken away";
}

TEST_F(Terminal, OfTwoWritersOfOneFileTheSecondIsRefused) {
    LiveRun run("zel convert library.xmi " + pipe, folder.path(""));
    static_cast<void>(run.waitFor("writing"));
    EXPECT_THAT(shell("zel convert library-types.xmi pipe"),
                isTrouble("zel: cannot write pipe: another program is writing it\n"));
    EXPECT_TRUE(hasLeftovers()) << "those of the first";
    empty();
    EXPECT_EQ(run.finish().exitCode, 0);
    EXPECT_FALSE(hasLeftovers());
}

TEST_F(Terminal, AnInterruptedWriteLeavesNothingBehind) {
    LiveRun run("zel convert library.xmi " + pipe, folder.path(""));
    static_cast<void>(run.waitFor("writing"));
    EXPECT_TRUE(hasLeftovers());
    run.send(SIGINT);
    EXPECT_EQ(run.finish().exitCode, -SIGINT);
    EXPECT_FALSE(hasLeftovers());
}

} // namespace
} // namespace ZEL::tests::cli
