#include <ZEL/base/Exception.h>
#include <ZEL/base/FileAttributes.h>
#include <ZEL/logging/HTMLLogFormatter.h>
#include <ZEL/logging/HTMLLogHandler.h>
#include <ZEL/logging/Stringify.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <system_error>

namespace ZEL {

namespace {

std::string suffix(int number) {
    if (number == 0) {
        return {};
    }
    return number == 1 ? ".bak" : ".bak." + stringify(number);
}

std::string backupFile(std::string const & name, int number) { return name + suffix(number) + ".html"; }

/// From the oldest on: the surplus one is removed, each other one becomes the next older. Returns whether there was a
/// report.
bool moveEarlierReports(std::string const & name, int kept) {
    bool isThere = false;
    for (int number = kept; number >= 0; --number) {
        std::filesystem::path const file = backupFile(name, number);
        isThere = std::filesystem::exists(file);
        if (isThere && number == kept) {
            std::filesystem::remove(file);
        } else if (isThere) {
            std::filesystem::rename(file, backupFile(name, number + 1));
        }
    }
    return isThere;
}

} // namespace

HTMLLogHandler::HTMLLogHandler(std::string const & name)
    : DefaultLogHandler(new HTMLLogFormatter, nullptr, LogLevel::all), fStream(std::make_unique<std::ofstream>()) {
    setLogStream(name);
    _output(HTMLLogFormatter::getHead());
}

HTMLLogHandler::~HTMLLogHandler() { close(); }

void HTMLLogHandler::_publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) {
    if (isLoggable(level, record)) {
        _output(getFormatter()->format(record));
    }
}

void HTMLLogHandler::_output(std::string const & text) {
    bool const isOpen = fStream->is_open();
    *fStream << text << '\n' << std::flush;
    noteFailure(isOpen);
}

void HTMLLogHandler::flush() {
    fStream->flush();
    noteFailure(fStream->is_open());
}

void HTMLLogHandler::close() {
    if (fStream->is_open()) {
        *fStream << HTMLLogFormatter::getTail();
        fStream->close();
        noteFailure(true);
    }
}

/// Notes the first failure of an open report; the stream refuses everything after it.
void HTMLLogHandler::noteFailure(bool wasOpen) {
    if (wasOpen && !*fStream && fFailureReason.empty()) {
        fFailureReason = std::generic_category().message(errno);
    }
}

void HTMLLogHandler::setLogStream(std::string name) {
    std::string const file = backupFile(name, 0);
    try {
        if (moveEarlierReports(name, fMaxBackupFile)) {
            makeFileLike(file, backupFile(name, 1));
        }
    } catch (std::filesystem::filesystem_error const & error) {
        raiseInternalError("Cannot create output log file: " + file + "; error thrown on " + error.what());
    }
    *fStream = std::ofstream(file);
    if (!*fStream) {
        throw std::runtime_error("Cannot create output log file: " + file);
    }
}

} // namespace ZEL
