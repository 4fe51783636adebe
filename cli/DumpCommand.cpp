#include "Command.h"
#include "Models.h"
#include "Options.h"
#include "Text.h"

#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>

#include <CLI/CLI.hpp>

#include <iostream>
#include <memory>
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

ExitCode dump(Input const & input) {
    OpenModel const opened = readModel(input.file, input.settings);
    DumpWriter(std::cout).visitObject(opened.model);
    std::cout << '\n'; // each line of the writer begins with a line end
    return Done;
}

} // namespace

Command dumpCommand(CLI::App & app) {
    auto const input = std::make_shared<Input>();
    addInput(app, *input);
    return [input] { return dump(*input); };
}

} // namespace cli
