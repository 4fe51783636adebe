#include "TourCommand.h"

#include "Files.h"
#include "StandardStreams.h"
#include "Tour.h"

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>

namespace cli {

void TourCommand::declare(CLI::App & app) {
    app.add_option("FILE", fFile, "A model of the built-in metamodel, of which nothing is changed")
        ->capture_default_str();
}

ExitCode TourCommand::run() {
    requireReadable(fFile);
    try {
        tour::run(fFile, std::cout);
        return Done;
    } catch (tour::Failure const & failure) {
        std::cout << std::flush;
        complain(std::string("tour failed in ") + failure.what());
        return No;
    }
}

} // namespace cli
