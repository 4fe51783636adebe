#pragma once

#include "Command.h"

#include <string>

namespace cli {

/// Tells the main job step by step on a model file.
class TourCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::string fFile = "examples/tour/library.xmi";
};

} // namespace cli
