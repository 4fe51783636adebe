#pragma once

#include "Command.h"

#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>

namespace cli {

/// Prints all that is in a file, object by object, as indented text.
class DumpCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::string fFile;
    ZEL::Serializer::XmiReaderSettings fSettings;
};

} // namespace cli
