#pragma once

#include "Command.h"

#include <optional>
#include <string>

namespace cli {

/// Lists the registered metamodels, or the types of one.
class MetamodelCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::optional<std::string> fName;
};

} // namespace cli
