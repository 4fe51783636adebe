#pragma once

#include <hasp_util/Export.h>
#include <libvx/Level.h>

#include <vector>

namespace Quillon::System {

class Externalizable;
class Handler;

/// Passes each record to its handlers, in the order in which they were added.
///
/// The level is only stored: handlers decide for themselves what they publish. Handlers stay the caller's. Not
/// thread-safe.
class HOST_API Logger {
public:
    Logger() = default;
    ~Logger();
    Logger(Logger const &) = delete;
    Logger & operator=(Logger const &) = delete;

    /// Null is ignored, and so is a handler that has been added already.
    void addHandler(Handler * handler);
    /// A handler that was not added is ignored.
    void removeHandler(Handler * handler) noexcept;

    void setLevel(Level const & level) noexcept { fLevel = level; }
    [[nodiscard]] Level getLevel() const noexcept { return fLevel; }

    /// A handler may add and remove handlers while it publishes: a new one is called from the next record on, a removed
    /// one is not called again. An exception from a handler reaches the caller, and the handlers after it are not
    /// called.
    void report(Externalizable const & record, Level const & level);

private:
    std::vector<Handler *> fHandlers;
    Level fLevel = Level::Info;
};

} // namespace Quillon::System
