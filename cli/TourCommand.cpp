#include "TourCommand.h"

#include "Tour.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>

namespace cli {

void TourCommand::declare(CLI::App & app) {
    app.add_option("FILE", fFile, "A model of the built-in metamodel, of which nothing is changed")
        ->capture_default_str();
}

ExitCode TourCommand::run() {
    if (!std::filesystem::exists(fFile)) {
        throw Trouble("cannot read " + fFile + ": No such file or directory");
    }
    try {
        tour::run(fFile, std::cout);
        return Done;
    } catch (tour::Failure const & failure) {
        std::cout << std::flush;
        std::cerr << "zel: tour failed in " << failure.what() << '\n';
        return No;
    }
}

} // namespace cli
