#include "Command.h"
#include "Files.h"
#include "Options.h"
#include "StandardStreams.h"
#include "Tour.h"

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

ExitCode tell(std::string const & file) {
    requireReadable(file);
    try {
        tour::run(file, std::cout);
        return Done;
    } catch (tour::Failure const & failure) {
        std::cout << std::flush;
        complain(std::string("tour failed in ") + failure.what());
        return No;
    }
}

} // namespace

Command tourCommand(CLI::App & app) {
    auto const file = std::make_shared<std::string>("examples/tour/library.xmi");
    addText(app, "FILE", *file, "", "A model of the built-in metamodel, of which nothing is changed");
    return [file] { return tell(*file); };
}

} // namespace cli
