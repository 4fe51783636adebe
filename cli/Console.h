#pragma once

#include <ZEL/logging/HTMLLogHandler.h>

#include <memory>
#include <string>

namespace cli {

/// The library's log during a command: kept off the terminal, where each error is one line, and written to a file on
/// demand.
class Console {
public:
    Console();
    ~Console();
    Console(Console const &) = delete;
    Console & operator=(Console const &) = delete;

    /// Writes all records to `name`.html. Throws `Trouble` if the file cannot be created.
    void logInto(std::string const & name);
    /// Ends the file of the log. Throws `Trouble` if rows of it are missing.
    void endLog();

private:
    std::unique_ptr<ZEL::HTMLLogHandler> fHtmlLog;
    std::string fLogFile;
};

} // namespace cli
