#include "ConvertCommand.h"

#include "Models.h"

#include <CLI/CLI.hpp>

#include <iostream>

namespace cli {

void ConvertCommand::declare(CLI::App & app) {
    app.add_option("IN", fInput, "The file to read")->required();
    app.add_option("OUT", fOutput, "The file to write; links into other files are made relative to it")->required();
    addFormatOption(app, "--from", fFrom, {"standard", "magicdraw"}, "The dialect of IN");
    addFormatOption(app, "--to", fTo, {"standard", "magicdraw", "rhapsody"}, "The dialect of OUT");
}

ExitCode ConvertCommand::run() {
    ZEL::Serializer::XmiReaderSettings settings;
    settings.setInputFormat(fFrom);
    OpenModel const opened = readModel(fInput, settings);
    writeModel(fOutput, opened.model, fTo);
    std::cout << fOutput << ": " << counted(objectsOf(opened.model).size(), "object") << '\n';
    return Done;
}

} // namespace cli
