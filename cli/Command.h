#pragma once

#include <stdexcept>

namespace CLI {
class App;
}

namespace cli {

/// What ends the program with exit code 2 and one line on standard error: "what, where, why".
class Trouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum ExitCode : int {
    Done = 0,
    No = 1,        ///< `compare`: different; `tour`: a step failed
    InTrouble = 2, ///< wrong arguments, a file that cannot be read or written
};

/// One command of the program. Owned by the program; run at most once.
class Command {
public:
    virtual ~Command() = default;

    /// Adds the command's arguments and options; they are filled before `run` is called.
    virtual void declare(CLI::App & app) = 0;
    /// Writes its results on standard output.
    [[nodiscard]] virtual ExitCode run() = 0;
};

} // namespace cli
