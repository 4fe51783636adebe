#include "DumpCommand.h"

#include "Models.h"
#include "Options.h"
#include "Text.h"

#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>

#include <CLI/CLI.hpp>

#include <iostream>
#include <string>

namespace cli {
namespace {

/// Each line is the writer's own: what of a value would end it, or steer the terminal, is escaped.
class DumpWriter : public ZEL::ImmutableAccessVisitorTextWriter {
public:
    using ImmutableAccessVisitorTextWriter::ImmutableAccessVisitorTextWriter;

protected:
    [[nodiscard]] std::string shown(std::string text) const override { return withoutControls(text); }
};

} // namespace

void DumpCommand::declare(CLI::App & app) {
    app.add_option("FILE", fFile, "A model file")->required();
    addRoot(app, fSettings);
}

ExitCode DumpCommand::run() {
    OpenModel const opened = readModel(fFile, fSettings);
    DumpWriter(std::cout).visitObject(opened.model);
    std::cout << '\n'; // each line of the writer begins with a line end
    return Done;
}

} // namespace cli
