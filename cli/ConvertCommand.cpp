#include "ConvertCommand.h"

#include "Files.h"
#include "Models.h"
#include "Options.h"

#include <ZEL/String.h>
#include <ZEL/tools/ObjectsIn.h>

#include <CLI/CLI.hpp>

#include <iostream>

namespace cli {
namespace {

/// The links of the model would lead into the file itself.
void requireNoCompanion(std::string const & output, OpenModel const & opened, std::string const & input) {
    for (ZEL::Model const & companion : opened.companions) {
        if (areSameFile(pathOf(companion.getUri()), output)) {
            throw Trouble("cannot write " + output + ": " + input + " has links to it");
        }
    }
}

} // namespace

void ConvertCommand::declare(CLI::App & app) {
    app.add_option("IN", fInput, "The file to read")->required();
    app.add_option("OUT", fOutput, "The file to write; links into other files are made relative to it")->required();
    addRoot(app, fSettings);
    addFormat(app, "--from", fFrom, {"standard", "magicdraw"}, "The dialect of IN");
    addFormat(app, "--to", fTo, {"standard", "magicdraw", "rhapsody"}, "The dialect of OUT");
}

ExitCode ConvertCommand::run() {
    fSettings.setInputFormat(fFrom);
    requireWritable(fOutput);
    OpenModel const opened = readModel(fInput, fSettings);
    requireNoCompanion(fOutput, opened, fInput);
    writeModel(fOutput, opened.model, fTo);
    std::cout << printable(fOutput) << ": " << counted(ZEL::objectsIn(opened.model).size(), "object") << '\n';
    return Done;
}

} // namespace cli
