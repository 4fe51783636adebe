#pragma once

#include <sys/types.h>

#include <string>

namespace ZEL::tests::cli {

/// What a run of the program leaves behind.
struct Outcome {
    int exitCode = -1; ///< minus the signal's number if the program was ended by one
    std::string out;
    std::string error;
};

/// Runs a line of the shell in a folder; `zel` is the program there.
[[nodiscard]] Outcome runShell(std::string const & line, std::string const & folder);

/// A run whose standard error is a terminal, while it goes on.
class LiveRun {
public:
    LiveRun(std::string const & command, std::string const & folder);
    ~LiveRun();
    LiveRun(LiveRun const &) = delete;
    LiveRun & operator=(LiveRun const &) = delete;

    /// Waits until the terminal has been sent the text, or the program has ended. Returns all that was sent.
    std::string const & waitFor(std::string const & text);
    void send(int signal) const;
    /// Waits for the end, and returns the exit code and, as the error, all that the terminal was sent.
    [[nodiscard]] Outcome finish();

private:
    int fTerminal = -1;
    pid_t fProcess = 0;
    std::string fSent;
};

} // namespace ZEL::tests::cli
