#include <ZEL/Exception.h>
#include <ZEL/HTMLLogFormatter.h>
#include <ZEL/HTMLLogHandler.h>
#include <ZEL/Stringify.h>

#include <boost/filesystem.hpp>

#include <stdexcept>

namespace ZEL {

namespace {

std::string suffix(int number) {
    if (number == 0) {
        return {};
    }
    return number == 1 ? ".bak" : ".bak." + stringify(number);
}

std::string backupFile(std::string const & name, int number) { return name + suffix(number) + ".html"; }

/// From the oldest on: the one too many goes, each other one becomes the next older.
void moveEarlierReports(std::string const & name, int kept) {
    for (int number = kept; number >= 0; --number) {
        boost::filesystem::path const file = backupFile(name, number);
        if (!boost::filesystem::exists(file)) {
            continue;
        }
        if (number == kept) {
            boost::filesystem::remove(file);
        } else {
            boost::filesystem::rename(file, backupFile(name, number + 1));
        }
    }
}

} // namespace

HTMLLogHandler::HTMLLogHandler(std::string const & name)
    : DefaultLogHandler(new HTMLLogFormatter, nullptr, LogLevel::all) {
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
    if (std::ofstream * const stream = getLogStream()) {
        *stream << text << '\n' << std::flush;
    }
}

void HTMLLogHandler::flush() {
    if (std::ofstream * const stream = getLogStream()) {
        stream->flush();
    }
}

void HTMLLogHandler::close() {
    std::ofstream * const stream = getLogStream();
    if (stream != nullptr && stream->is_open()) {
        *stream << HTMLLogFormatter::getTail();
        stream->close();
    }
}

void HTMLLogHandler::setLogStream(std::string name) {
    std::string const file = backupFile(name, 0);
    try {
        moveEarlierReports(name, fMaxBackupFile);
    } catch (boost::filesystem::filesystem_error const & error) {
        raiseInternalError("Cannot create output log file: " + file + "; error thrown on " + error.what());
    }
    fStream = std::make_unique<std::ofstream>(file);
    if (!*fStream) {
        throw std::runtime_error("Cannot create output log file: " + file);
    }
}

} // namespace ZEL
