#pragma once

#include <functional>
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

/// What a command does once its arguments are filled in. It writes its results on standard output; called at most once.
using Command = std::function<ExitCode()>;

// Each adds the arguments and options of a command, whose values the result keeps.

/// Compares the models of two files, whatever the ids and the places of the files.
[[nodiscard]] Command compareCommand(CLI::App & app);
/// Reads a file and writes what it holds into another one.
[[nodiscard]] Command convertCommand(CLI::App & app);
/// Prints all that is in a file, object by object, as indented text.
[[nodiscard]] Command dumpCommand(CLI::App & app);
/// Says what is in a model file.
[[nodiscard]] Command infoCommand(CLI::App & app);
/// Lists the registered metamodels, or the types of one.
[[nodiscard]] Command metamodelCommand(CLI::App & app);
/// Writes a random model of a metamodel.
[[nodiscard]] Command randomCommand(CLI::App & app);
/// Writes what a file holds as a page for a browser.
[[nodiscard]] Command reportCommand(CLI::App & app);
/// Tells the main job step by step on a model file.
[[nodiscard]] Command tourCommand(CLI::App & app);

} // namespace cli
