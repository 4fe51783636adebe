#pragma once

#include <hasp_util/Export.h>

namespace Quillon::System {

class Externalizable;
class Level;

/// Decides whether a handler publishes a record. Set on a handler; it stays the caller's.
class HOST_API Filter {
public:
    virtual ~Filter() = default;

    [[nodiscard]] virtual bool isLoggable(Level const & level, Externalizable const & record) const = 0;

protected:
    Filter() = default;
    Filter(Filter const &) = default;
    Filter & operator=(Filter const &) = default;
};

} // namespace Quillon::System
