#pragma once

#include <ZEL/logging/HTMLLogHandler.h>

#include <memory>
#include <string>

namespace cli {

/// The library's log for the length of a command: kept off the terminal, where each error is one line, and written into
/// a file on demand.
class Console {
public:
    Console();
    ~Console();
    Console(Console const &) = delete;
    Console & operator=(Console const &) = delete;

    /// Writes all records into `name`.html. Raises `Trouble` if that cannot be made.
    void logInto(std::string const & name);
    /// Ends the file of the log. Raises `Trouble` if rows of it are missing.
    void endLog();

private:
    std::unique_ptr<ZEL::HTMLLogHandler> fHtmlLog;
    std::string fLogFile;
};

} // namespace cli
