// zel: the command line. Results go to standard output, all else to standard error; what goes wrong is one line.

#include "CompareCommand.h"
#include "Console.h"
#include "ConvertCommand.h"
#include "InfoCommand.h"
#include "MetamodelCommand.h"
#include "RandomCommand.h"
#include "ReportCommand.h"
#include "TourCommand.h"

#include <CLI/CLI.hpp>

#include <exception>
#include <functional>
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace cli {
namespace {

/// The program's arguments, and the command that they ask for.
class Program {
public:
    Program() {
        fApp.require_subcommand(1);
        fApp.set_version_flag("--version", "zel " ZEL_VERSION);
        fApp.footer(
            "Exit codes: 0 done (compare: equal); 1 different (compare), a step failed (tour); 2 trouble: wrong\n"
            "arguments, or a file that cannot be read or written.");
        add<TourCommand>("tour", "Tells the main job step by step on a model file");
        add<InfoCommand>("info", "Says what is in a model file");
        add<ConvertCommand>("convert", "Reads a file and writes it again, in another dialect or at another place");
        add<MetamodelCommand>("metamodel", "Lists the metamodels, or shows the types of one");
        add<CompareCommand>("compare", "Compares the models of two files, apart from their ids");
        add<ReportCommand>("report", "Writes what is in a model file as a page for a browser");
        add<RandomCommand>("random", "Writes a random model");
    }

    int run(int argc, char const * const * argv) {
        std::string const first = argc > 1 ? argv[1] : "-";
        auto const isFirst = [&first](CLI::App const * app) { return app->get_name() == first; };
        if (first.empty() || (first.front() != '-' && std::as_const(fApp).get_subcommands(isFirst).empty())) {
            throw Trouble("found command '" + first + "', expected one of those of zel --help");
        }
        try {
            fApp.parse(argc, argv);
        } catch (CLI::Success const & request) {
            return finish(static_cast<ExitCode>(fApp.exit(request))); // help or version, which is now printed
        } catch (CLI::ParseError const & error) {
            throw Trouble(error.what() + std::string(" (see zel --help)"));
        }
        Console console;
        if (!fHtmlLog.empty()) {
            console.logInto(fHtmlLog);
        }
        return finish(fSelected->run());
    }

private:
    template <class C> void add(std::string const & name, std::string const & description) {
        fCommands.push_back(std::make_unique<C>());
        Command * const command = fCommands.back().get();
        CLI::App * const app = fApp.add_subcommand(name, description);
        command->declare(*app);
        app->add_option("--html-log", fHtmlLog, "Writes the library's log into NAME.html")->option_text("NAME");
        app->callback([this, command] { fSelected = command; });
    }

    static int finish(ExitCode code) {
        std::cout << std::flush;
        if (!std::cout) {
            throw Trouble("cannot write the results to standard output");
        }
        return code;
    }

    CLI::App fApp{"zel keeps models in memory, and reads and writes them as XMI.", "zel"};
    std::vector<std::unique_ptr<Command>> fCommands;
    Command * fSelected = nullptr;
    std::string fHtmlLog;
};

int main(int argc, char const * const * argv) {
    try {
        return Program().run(argc, argv);
    } catch (std::exception const & exception) {
        std::cerr << "zel: " << oneLine(exception.what()) << '\n';
        return InTrouble;
    }
}

} // namespace
} // namespace cli

int main(int argc, char ** argv) { return cli::main(argc, argv); }
