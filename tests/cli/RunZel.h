#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

namespace clitest {

/// What a run of the program leaves behind.
struct Outcome {
    int exitCode = -1; ///< minus the signal's number if the program was ended by one
    std::string out;
    std::string error;
};

/// Runs the program as a user does. `standardOutput` names a file to write to in place of what `Outcome::out` gives.
[[nodiscard]] Outcome runZel(std::vector<std::string> const & arguments,
                             std::string const & standardOutput = std::string());

/// Runs a line of the shell in a folder; `zel` is the program there.
[[nodiscard]] Outcome runShell(std::string const & line, std::string const & folder);

/// Runs the program with a standard output that nobody reads.
[[nodiscard]] Outcome runZelUnread(std::vector<std::string> const & arguments);

/// A run whose standard error is a terminal, while it goes on.
class LiveRun {
public:
    explicit LiveRun(std::vector<std::string> const & arguments);
    ~LiveRun();
    LiveRun(LiveRun const &) = delete;
    LiveRun & operator=(LiveRun const &) = delete;

    /// Waits until the terminal has been sent the text, or the program has ended. Gives all that was sent.
    std::string const & waitFor(std::string const & text);
    void send(int signal) const;
    /// Waits for the end, and gives the exit code and, as the error, all that the terminal was sent.
    [[nodiscard]] Outcome finish();

private:
    int fTerminal = -1;
    pid_t fProcess = 0;
    std::string fSent;
};

} // namespace clitest
