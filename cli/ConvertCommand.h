#pragma once

#include "Command.h"

#include <ZEL/serializer/XmiFormat.h>
#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>

namespace cli {

/// Reads a file and writes what it holds into another one.
class ConvertCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::string fInput;
    std::string fOutput;
    ZEL::Serializer::XmiFormat fFrom = ZEL::Serializer::XmiFormat::Standard;
    ZEL::Serializer::XmiFormat fTo = ZEL::Serializer::XmiFormat::Standard;
    ZEL::Serializer::XmiReaderSettings fSettings;
};

} // namespace cli
