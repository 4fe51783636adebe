#pragma once

#include <ZEL/base/SoleOwner.h>
#include <ZEL/logging/LogLevel.h>
#include <ZEL/values/String.h>

#include <libvx/Logger.h>

#include <concepts>
#include <cstdarg>
#include <initializer_list>
#include <string>
#include <string_view>
#include <type_traits>

namespace ZEL {

class DefaultLogHandler;
class TerminalHandler;

namespace internal {

template <class T>
concept LogArgument = std::convertible_to<T const &, std::string_view> || std::same_as<T, String> || std::integral<T> ||
    std::is_enum_v<T>;

template <LogArgument T> [[nodiscard]] std::string logText(T const & argument) {
    if constexpr (std::is_pointer_v<T>) {
        return argument == nullptr ? "(null)" : std::string(argument);
    } else if constexpr (std::convertible_to<T const &, std::string_view>) {
        return std::string(std::string_view(argument));
    } else if constexpr (std::same_as<T, String>) {
        return argument.str();
    } else if constexpr (std::is_enum_v<T>) {
        return std::to_string(static_cast<std::underlying_type_t<T>>(argument));
    } else {
        return std::to_string(argument);
    }
}

} // namespace internal

/// The logger of the process: makes a record of each message and passes it to its handlers, which decide what they
/// publish.
///
/// Made on first use, with a terminal handler, and never destroyed. Formats take texts and integers: `%s`, `%d` and
/// `%u` mean the next argument, `%1` to `%9` the argument of that number, `%%` a per cent sign; a directive without an
/// argument is left as it is, a null text is printed as "(null)", a message with a null format is dropped. Text from
/// outside belongs into the arguments, never into the format. A message is cut to `MAX_LOG_MSG_LEN` - 1 bytes, never
/// inside a character. Not thread-safe.
class ZEL_API Logger {
public:
    static constexpr int MAX_LOG_MSG_LEN = 4096;

    [[nodiscard]] static Logger * instance();

    /// At the current level.
    template <internal::LogArgument... Args> void log(char const * format, Args const &... args) {
        report(fLevel, format, {internal::logText(args)...});
    }
    template <internal::LogArgument... Args>
    void log(LogLevel const & level, char const * format, Args const &... args) {
        report(level, format, {internal::logText(args)...});
    }
    /// A message of the catalogue in the current language; an unknown number is dropped.
    template <internal::LogArgument... Args> void log(LogLevel const & level, unsigned long id, Args const &... args) {
        report(level, id, {internal::logText(args)...});
    }
    /// The format has the directives of `printf`; a message that cannot be formatted is dropped.
    void vreportsf(LogLevel const & level, char const * format, std::va_list arguments);

    template <internal::LogArgument... Args> void trace(std::string const & format, Args const &... args) {
        log(LogLevel::trace, format.c_str(), args...);
    }
    template <internal::LogArgument... Args> void debug(std::string const & format, Args const &... args) {
        log(LogLevel::debug, format.c_str(), args...);
    }
    template <internal::LogArgument... Args> void info(std::string const & format, Args const &... args) {
        log(LogLevel::info, format.c_str(), args...);
    }
    template <internal::LogArgument... Args> void warning(std::string const & format, Args const &... args) {
        log(LogLevel::warning, format.c_str(), args...);
    }
    template <internal::LogArgument... Args> void error(std::string const & format, Args const &... args) {
        log(LogLevel::error, format.c_str(), args...);
    }
    template <internal::LogArgument... Args> void fatal(std::string const & format, Args const &... args) {
        log(LogLevel::fatal, format.c_str(), args...);
    }

    /// Info unless set.
    [[nodiscard]] LogLevel getLevel() const;
    /// Sets the default handler's level too.
    void setLevel(LogLevel const & level);
    /// Whether the current level lets `level` through. Off lets nothing through, and no level lets off through. For the
    /// caller's use: `log` does not check it.
    [[nodiscard]] bool isLoggable(LogLevel const & level) const;

    /// Sets the handler's level. The handler stays the caller's; null is ignored.
    void addHandler(DefaultLogHandler * handler, LogLevel const & level);
    void removeHandler(DefaultLogHandler * handler);
    void setDefaultHandlerLevel(LogLevel const & level);
    /// The argument is ignored.
    [[nodiscard]] LogLevel getDefaultHandlerLevel(LogLevel const & level) const;

private:
    Logger();
    virtual ~Logger();
    Logger(Logger const &) = delete;
    Logger & operator=(Logger const &) = delete;

    void report(LogLevel const & level, char const * format, std::initializer_list<std::string> arguments);
    void report(LogLevel const & level, unsigned long id, std::initializer_list<std::string> arguments);
    void report(LogLevel const & level, std::string_view message);

    Quillon::System::Logger fHostLogger;
    internal::SoleOwner<TerminalHandler> fDefaultHandler;
    LogLevel fLevel;
    static Logger * fInstance;
};

} // namespace ZEL
