#include <ZEL/logging/LogRecord.h>
#include <ZEL/logging/Logger.h>
#include <ZEL/logging/TerminalHandler.h>

#include <libvx/MessageCatalogue.h>
#include <libvx/MessageFormat.h>
#include <libvx/Printing.h>

#include <limits>
#include <memory>

namespace ZEL {

Logger * Logger::fInstance = nullptr;

Logger * Logger::instance() {
    // Never deleted: what is destroyed at the end of the process may still log.
    if (fInstance == nullptr) {
        fInstance = new Logger;
    }
    return fInstance;
}

Logger::Logger() : fDefaultHandler(std::make_unique<TerminalHandler>()), fLevel(LogLevel::info) {
    fHostLogger.setLevel(fLevel);
    fHostLogger.addHandler(fDefaultHandler.get());
}

Logger::~Logger() {
    fHostLogger.removeHandler(fDefaultHandler.get());
    fInstance = nullptr;
}

void Logger::vreportsf(LogLevel const & level, char const * format, std::va_list arguments) {
    if (format == nullptr) {
        return;
    }
    char buffer[MAX_LOG_MSG_LEN];
    int const length = vxVSNprintf(buffer, sizeof(buffer), format, arguments);
    if (length >= 0) {
        report(level, std::string_view(buffer, static_cast<std::size_t>(length)));
    }
}

LogLevel Logger::getLevel() const { return fLevel; }

void Logger::setLevel(LogLevel const & level) {
    fLevel = level;
    fHostLogger.setLevel(level);
    setDefaultHandlerLevel(level);
}

bool Logger::isLoggable(LogLevel const & level) const {
    return fLevel.getLevel() <= level.getLevel() && fLevel.getLevel() != LogLevel::off &&
           level.getLevel() != LogLevel::off;
}

void Logger::addHandler(DefaultLogHandler * handler, LogLevel const & level) {
    if (handler != nullptr) {
        handler->setZelLevel(level);
        fHostLogger.addHandler(handler);
    }
}

void Logger::removeHandler(DefaultLogHandler * handler) { fHostLogger.removeHandler(handler); }

void Logger::setDefaultHandlerLevel(LogLevel const & level) {
    if (fDefaultHandler) {
        fDefaultHandler->setZelLevel(level);
    }
}

LogLevel Logger::getDefaultHandlerLevel(LogLevel const &) const {
    return fDefaultHandler ? fDefaultHandler->getZelLevel() : LogLevel(LogLevel::off);
}

void Logger::report(LogLevel const & level, char const * format, std::initializer_list<std::string> arguments) {
    if (format != nullptr) {
        report(level, vx::formatMessage(format, arguments));
    }
}

void Logger::report(LogLevel const & level, unsigned long id, std::initializer_list<std::string> arguments) {
    bool const isNumber = id <= std::numeric_limits<std::uint32_t>::max();
    char const * const format = isNumber ? vx::findMessage(static_cast<std::uint32_t>(id)) : nullptr;
    if (format != nullptr) {
        report(level, format, arguments);
    }
}

void Logger::report(LogLevel const & level, std::string_view message) {
    LogRecord record;
    record.setLevel(level);
    record.setMessage(std::string(vx::cutUtf8(message, MAX_LOG_MSG_LEN - 1)));
    fHostLogger.report(record, level);
}

} // namespace ZEL
