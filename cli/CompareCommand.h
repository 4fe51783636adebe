#pragma once

#include "Command.h"

#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>

namespace cli {

/// Compares the models of two files, whatever the ids and the places of the files.
class CompareCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::string fFirst;
    std::string fSecond;
    ZEL::Serializer::XmiReaderSettings fSettings;
};

} // namespace cli
