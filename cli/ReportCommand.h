#pragma once

#include "Command.h"

#include <ZEL/serializer/reader/XmiReaderSettings.h>

#include <string>

namespace cli {

/// Writes what a file holds as a page for a browser.
class ReportCommand : public Command {
public:
    void declare(CLI::App & app) override;
    ExitCode run() override;

private:
    std::string fFile;
    std::string fOutput;
    ZEL::Serializer::XmiReaderSettings fSettings;
};

} // namespace cli
