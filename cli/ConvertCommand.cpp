#include "Command.h"
#include "Files.h"
#include "Models.h"
#include "Options.h"

#include <ZEL/String.h>
#include <ZEL/tools/ObjectsIn.h>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

/// Links to the output file would lead into the model itself.
void requireNoCompanion(std::string const & output, OpenModel const & opened, std::string const & input) {
    for (ZEL::Model const & companion : opened.companions) {
        if (areSameFile(ZEL::Interchange::pathOfFileUri(companion.getUri()), output)) {
            throw Trouble("cannot write " + output + ": " + input + " has links to it");
        }
    }
}

struct Arguments {
    std::string input;
    std::string output;
    std::string from = "standard";
    std::string to = "standard";
    ReadSettings settings;
};

ExitCode convert(Arguments & given) {
    given.settings.setInputFormat(dialectOf(given.from));
    requireWritable(given.output);
    OpenModel const opened = readModel(given.input, given.settings);
    requireNoCompanion(given.output, opened, given.input);
    writeModelAs(given.to, given.output, opened.model);
    std::cout << printable(given.output) << ": " << counted(ZEL::objectsIn(opened.model).size(), "object") << '\n';
    return Done;
}

} // namespace

Command convertCommand(CLI::App & app) {
    auto const given = std::make_shared<Arguments>();
    addArgument(app, "IN", given->input, "The file to read");
    addArgument(app, "OUT", given->output, "The file to write; links into other files are made relative to it");
    addLinks(app, given->settings);
    addFormat(app, "--from", given->from, {"standard", "magicdraw"}, "The dialect of IN");
    addFormat(app, "--to", given->to, outputFormats(), "The form of OUT");
    return [given] { return convert(*given); };
}

} // namespace cli
