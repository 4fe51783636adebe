#pragma once

#include "Command.h"

#include <ZEL/metamodel/Model.h>

#include <string>

namespace cli {

/// Writes a random model of a metamodel.
class RandomCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    /// Sets the seed that was taken.
    [[nodiscard]] ZEL::Model makeModel();

    std::string fOutput;
    std::string fMetamodel;
    unsigned int fSeed = 0;
    int fDepth = 4;
    int fBreadth = 4;
    int fAssociations = 100;
};

} // namespace cli
