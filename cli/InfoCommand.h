#pragma once

#include "Command.h"

#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>

namespace cli {

/// Says what is in a model file.
class InfoCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::string fFile;
    ZEL::Serializer::XmiReaderSettings fSettings;
};

} // namespace cli
