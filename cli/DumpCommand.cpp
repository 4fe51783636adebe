#include "DumpCommand.h"

#include "Models.h"

#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>

#include <CLI/CLI.hpp>

#include <iostream>

namespace cli {

void DumpCommand::declare(CLI::App & app) { app.add_option("FILE", fFile, "A model file")->required(); }

ExitCode DumpCommand::run() {
    OpenModel const opened = readModel(fFile);
    ZEL::ImmutableAccessVisitorTextWriter(std::cout).visitObject(opened.model);
    std::cout << '\n'; // each line of the writer begins with a line end
    return Done;
}

} // namespace cli
