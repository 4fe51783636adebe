#pragma once

#include <ZEL/logging/LogLevel.h>

#include <libvx/Handler.h>

namespace ZEL {

/// Base of the log handlers; by itself it prints each record as a line of time, level and message.
///
/// Owned by whoever makes it. Its destructor removes it from the loggers that it was added to.
class ZEL_API DefaultLogHandler : public Quillon::System::Handler {
public:
    /// Takes ownership of `formatter`; null stands for a new `SimpleFormatter`. `filter` may be null and stays the
    /// caller's.
    DefaultLogHandler(Quillon::System::Formatter * formatter, Quillon::System::Filter * filter, LogLevel const & level);

    void setZelLevel(LogLevel const & level);
    [[nodiscard]] LogLevel getZelLevel() const { return fLevel; }
    /// The same level, as the host counts it.
    [[nodiscard]] Quillon::System::Level getLevel() const { return fLevel; }

    void _publish(Quillon::System::Level const & level, Quillon::System::Externalizable const & record) override;

protected:
    /// Whether the record is severe enough for this handler and passes its filter. Throws `std::bad_cast` for a record
    /// that is not a `LogRecord`; so does `getLevelName`.
    [[nodiscard]] bool isLoggable(Quillon::System::Level const & level,
                                  Quillon::System::Externalizable const & record) const;
    [[nodiscard]] char const * getLevelName(Quillon::System::Level const & level,
                                            Quillon::System::Externalizable const & record) const;

private:
    LogLevel fLevel;
};

} // namespace ZEL
