// zel: the command line. Results go to standard output, everything else to standard error; an error is one line.

#include "Command.h"
#include "Console.h"
#include "EndingSignals.h"
#include "Options.h"
#include "StandardStreams.h"
#include "Text.h"
#include "load/Suggestion.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <utility>
#include <vector>

namespace cli {
namespace {

/// The program's arguments, and the command that they select.
class Program {
public:
    /// `arguments` do not include the program's name.
    explicit Program(std::vector<std::string> arguments) : fArguments(std::move(arguments)) {
        fApp.require_subcommand(1);
        fApp.set_version_flag("--version", "zel " ZEL_VERSION);
        addLogOption(fApp);
        fApp.footer(
            "Exit codes: 0 done (compare, diff: equal); 1 different (compare, diff), conflicts left (merge), errors "
            "found\n"
            "(check), a step failed (tour); 2 trouble: wrong arguments, or a file that cannot be read or written.");
        add(tourCommand, "tour", "Tells the main job step by step on a model file");
        add(infoCommand, "info", "Says what is in a model file");
        add(dumpCommand, "dump", "Prints a model file object by object, with all values and links");
        add(convertCommand, "convert", "Reads a file and writes it again, in another dialect or at another place");
        add(checkCommand, "check", "Checks a model: what its metamodel and its constraints say of it");
        add(compareCommand, "compare", "Compares the models of two files, apart from their ids");
        add(diffCommand, "diff", "Lists what is different in another version of a model");
        add(mergeCommand, "merge", "Merges what two versions of a model have changed");
        add(reportCommand, "report", "Writes what is in a model file as a page for a browser");
        add(randomCommand, "random", "Writes a random model");
        add(metamodelCommand, "metamodel", "Lists the metamodels, or shows the types of one");
    }

    ExitCode run() {
        std::vector<std::string> arguments = fArguments;
        if (!arguments.empty() && arguments.front() == "help") {
            arguments.erase(arguments.begin());
            if (!arguments.empty() && commandsNamed(arguments.front()).empty()) {
                throw Trouble(noCommand(arguments.front()));
            }
            arguments.emplace_back("--help");
        }
        try {
            fApp.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend())); // which takes them from the end
        } catch (CLI::Success const & request) {
            return static_cast<ExitCode>(fApp.exit(request)); // help or version, which is now printed
        } catch (CLI::ParseError const & error) {
            throw Trouble(explain(error, arguments));
        }
        Console console;
        if (!fHtmlLog.empty()) {
            console.logInto(fHtmlLog);
        }
        ExitCode const code = fSelected();
        console.endLog();
        return code;
    }

private:
    void add(Command (*declare)(CLI::App &), std::string const & name, std::string const & description) {
        fNames.push_back(name);
        CLI::App * const app = fApp.add_subcommand(name, description);
        // Nobody asks for the options of a command that is not named. Those of all commands take their time.
        if (std::find(fArguments.begin(), fArguments.end(), name) == fArguments.end()) {
            return;
        }
        Command const command = declare(*app);
        for (CLI::Option * const option : app->get_options([](CLI::Option const * o) { return o->get_positional(); })) {
            option->type_name(""); // they are all texts
        }
        addLogOption(*app);
        app->callback([this, command] { fSelected = command; });
    }

    void addLogOption(CLI::App & app) {
        app.add_option("--html-log", fHtmlLog, "Writes the library's log into NAME.html")->type_name("NAME");
    }

    /// What is wrong with the arguments.
    [[nodiscard]] std::string explain(CLI::ParseError const & error, std::vector<std::string> const & arguments) const {
        std::string const first = arguments.empty() ? std::string() : arguments.front();
        // After a double hyphen a name may look like an option.
        bool const hasNoNames = std::find(arguments.begin(), arguments.end(), "--") == arguments.end();
        if (auto const commands = commandsNamed(first); !commands.empty()) {
            std::string reason = hasNoNames ? unknownOption(*commands.front()) : std::string();
            if (reason.empty()) {
                reason = error.what();
            }
            if (reason.size() > 1 && std::islower(static_cast<unsigned char>(reason[1])) != 0) {
                reason.front() = static_cast<char>(std::tolower(static_cast<unsigned char>(reason.front())));
            }
            return first + ": " + reason + " (see zel " + first + " --help)";
        }
        if (std::string const option = unknownOption(fApp); hasNoNames && !option.empty()) {
            return option + " (see zel --help)";
        }
        if (!first.empty() && first.front() == '-' && dynamic_cast<CLI::RequiredError const *>(&error) == nullptr) {
            return error.what() + std::string(" (see zel --help)");
        }
        return noCommand(first);
    }

    /// One or none.
    [[nodiscard]] std::vector<CLI::App const *> commandsNamed(std::string const & name) const {
        return fApp.get_subcommands([&name](CLI::App const * app) { return app->get_name() == name; });
    }

    [[nodiscard]] std::string noCommand(std::string const & name) const {
        std::string const found = name.empty() || name.front() == '-' ? "no command" : "command " + name;
        return "found " + found + ", expected " + zelgen::anyOf(fNames) + " (see zel --help)";
    }

    /// The first of the arguments left over that looks like an option, and what was meant; empty if there is none.
    [[nodiscard]] static std::string unknownOption(CLI::App const & app) {
        for (std::string const & argument : app.remaining()) {
            if (argument.size() < 2 || argument.front() != '-') {
                continue;
            }
            std::string const name = argument.substr(0, argument.find('='));
            std::vector<std::string> known;
            for (CLI::Option const * const option : app.get_options()) {
                for (std::string const & longName : option->get_lnames()) {
                    known.push_back("--" + longName);
                }
            }
            std::string const meant = zelgen::suggestion(name, known);
            return "found unknown option " + name + (meant.empty() ? ", expected " + zelgen::anyOf(known) : meant);
        }
        return {};
    }

    std::vector<std::string> const fArguments;
    CLI::App fApp{"zel keeps models in memory, and reads and writes them as XMI.", "zel"};
    std::vector<std::string> fNames;
    Command fSelected;
    std::string fHtmlLog;
};

/// Prints the program's one line on what went wrong and returns the exit code.
int trouble(StandardStreams & streams, std::string const & text) {
    streams.flush(); // results come first
    complain(text);
    return InTrouble;
}

int runProgram(StandardStreams & streams, int argc, char const * const * argv) {
    try {
        ExitCode const code = Program({argv + std::min(argc, 1), argv + argc}).run();
        streams.flush();
        return code;
    } catch (std::bad_alloc const &) {
        return trouble(streams, "out of memory");
    } catch (std::exception const & exception) {
        return trouble(streams, exception.what());
    }
}

int main(int argc, char const * const * argv) {
    StandardStreams streams;
    removeUnfinishedFilesAtSignals();
    try {
        return runProgram(streams, argc, argv);
    } catch (OutputFailure const & failure) {
        return streams.exitAfter(failure);
    }
}

} // namespace
} // namespace cli

int main(int argc, char ** argv) { return cli::main(argc, argv); }
