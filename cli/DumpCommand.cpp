#include "Command.h"
#include "Models.h"
#include "Options.h"
#include "Text.h"

#include <ZEL/tools/ImmutableAccessVisitorTextWriter.h>

#include <iostream>
#include <memory>
#include <string>

namespace cli {
namespace {

/// Escapes what would end a line in a value, or control the terminal, so that all lines are the writer's.
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
