#include <ZEL/logging/LogLevel.h>

namespace ZEL {

Quillon::System::Level::Enum LogLevel::tolevel(Setting setting) noexcept {
    switch (setting) {
    case trace:
    case debug:
        return Info;
    case fatal:
        return Error;
    default:
        return static_cast<Enum>(setting);
    }
}

char const * LogLevel::nameOf(Setting setting) noexcept {
    switch (setting) {
    case all:
        return "All";
    case trace:
        return "Trace";
    case debug:
        return "Debug";
    case info:
        return "Info";
    case warning:
        return "Warning";
    case error:
        return "Error";
    case fatal:
        return "Fatal";
    case off:
        return "Off";
    }
    return "Unknown FLevel";
}

} // namespace ZEL
