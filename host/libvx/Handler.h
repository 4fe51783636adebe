#pragma once

#include <libvx/Formatter.h>
#include <libvx/Level.h>

#include <vector>

namespace Quillon::System {

class Externalizable;
class Filter;
class Logger;

/// Publishes log records somewhere: a terminal, a file.
///
/// Owned by whoever made it. Its destructor removes it from the loggers that it was added to, so the order of
/// destruction does not matter. It owns its formatter; its filter stays the caller's.
class HOST_API Handler {
public:
    virtual ~Handler();
    Handler(Handler const &) = delete;
    Handler & operator=(Handler const &) = delete;

    /// Called for every record by each logger that the handler was added to. The handler decides whether the record is
    /// severe enough.
    virtual void _publish(Level const & level, Externalizable const & record) = 0;

    /// Takes ownership; the previous formatter is deleted.
    void setFormatter(Formatter * formatter);
    /// Null until one is set.
    [[nodiscard]] Formatter * getFormatter() const noexcept { return fFormatter; }
    void setFilter(Filter * filter) noexcept { fFilter = filter; }
    [[nodiscard]] Filter * getFilter() const noexcept { return fFilter; }
    void setLevel(Level const & level) noexcept { fLevel = level; }
    [[nodiscard]] Level getLevel() const noexcept { return fLevel; }

protected:
    Handler() = default;

private:
    friend class Logger;

    Formatter * fFormatter = nullptr; ///< owned
    Filter * fFilter = nullptr;
    Level fLevel = Level::All;
    std::vector<Logger *> fLoggers;
};

} // namespace Quillon::System
