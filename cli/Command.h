#pragma once

#include <functional>
#include <stdexcept>

namespace CLI {
class App;
}

namespace cli {

/// Ends the program with exit code 2 and one line on standard error: what is wrong, where and why.
class Trouble : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

enum ExitCode : int {
    Done = 0,
    /// `compare`, `diff`: different; `merge`: conflicts are left; `check`: errors found; `tour`: a step failed
    No = 1,
    InTrouble = 2, ///< wrong arguments, or a file that cannot be read or written
};

/// Runs a command, whose arguments have been parsed by then, and prints its results on standard output. Called at most
/// once.
using Command = std::function<ExitCode()>;

// Each adds the arguments and options of a command to `app`. Their values belong to the result.

/// Checks the model of a file.
[[nodiscard]] Command checkCommand(CLI::App & app);
/// Compares the models of two files, apart from ids and the places of the files.
[[nodiscard]] Command compareCommand(CLI::App & app);
/// Reads a file and writes its model to another one.
[[nodiscard]] Command convertCommand(CLI::App & app);
/// Lists what is different in another version of a file.
[[nodiscard]] Command diffCommand(CLI::App & app);
/// Prints everything in a file, object by object, as indented text.
[[nodiscard]] Command dumpCommand(CLI::App & app);
/// Prints a summary of a model file.
[[nodiscard]] Command infoCommand(CLI::App & app);
/// Puts what two versions of a file have changed into one.
[[nodiscard]] Command mergeCommand(CLI::App & app);
/// Lists the registered metamodels, or the types of one.
[[nodiscard]] Command metamodelCommand(CLI::App & app);
/// Writes a random model of a metamodel.
[[nodiscard]] Command randomCommand(CLI::App & app);
/// Writes the model of a file as a page for a browser.
[[nodiscard]] Command reportCommand(CLI::App & app);
/// Shows the main job step by step on a model file.
[[nodiscard]] Command tourCommand(CLI::App & app);

} // namespace cli
