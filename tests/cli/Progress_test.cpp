#include "Progress.h"

#include <gmock/gmock.h>
#include <pty.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <string>

namespace ZEL::tests::cli {
namespace {

using ::cli::Progress;
using testing::EndsWith;
using namespace std::chrono_literals;

/// The time that the work is told by.
std::chrono::steady_clock::time_point now;

/// While it lives, standard error is a terminal.
class ProgressTest : public testing::Test {
protected:
    ProgressTest() {
        int program = -1;
        EXPECT_EQ(::openpty(&fTerminal, &program, nullptr, nullptr, nullptr), 0);
        ::dup2(program, STDERR_FILENO);
        ::close(program);
        ::setenv("TERM", "xterm", 1);
    }
    ~ProgressTest() override {
        ::dup2(fFormer, STDERR_FILENO);
        ::close(fFormer);
        ::close(fTerminal);
    }

    /// What the terminal has been sent since the last time, when the timer has run out once more.
    [[nodiscard]] std::string sentOnSignal() const {
        std::raise(SIGALRM);
        static_cast<void>(!::write(STDERR_FILENO, "|", 1));
        std::string text;
        std::array<char, 64> buffer{};
        while (text.find('|') == std::string::npos) {
            ssize_t const count = ::read(fTerminal, buffer.data(), buffer.size());
            if (count <= 0) {
                return text + "(closed)";
            }
            text.append(buffer.data(), static_cast<std::size_t>(count));
        }
        return text.substr(0, text.find('|'));
    }

private:
    int const fFormer = ::dup(STDERR_FILENO);
    int fTerminal = -1;
};

TEST_F(ProgressTest, TellsWorkFromItsFirstSecondOnAndTakesTheLineAway) {
    {
        Progress const progress("reading a", [] { return now; });
        now += 999ms;
        EXPECT_EQ(sentOnSignal(), "");
    }
    EXPECT_EQ(sentOnSignal(), "") << "there is no line to take away";
    {
        Progress const progress("writing b", [] { return now; });
        now += 1s;
        EXPECT_THAT(sentOnSignal(), EndsWith("\rwriting b ... 1 s\033[K"));
        Progress const inner("writing c", [] { return now; });
        now += 61s;
        EXPECT_THAT(sentOnSignal(), EndsWith("\rwriting b ... 62 s\033[K"));
    }
    EXPECT_THAT(sentOnSignal(), EndsWith("\r\033[K"));
}

} // namespace
} // namespace ZEL::tests::cli
