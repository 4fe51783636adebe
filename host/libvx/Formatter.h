#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace Quillon::System {

class Externalizable;

/// Turns a record into the text that a handler publishes. Owned by its handler.
class HOST_API Formatter {
public:
    virtual ~Formatter() = default;

    [[nodiscard]] virtual std::string format(Externalizable const & record) = 0;

protected:
    Formatter() = default;
    Formatter(Formatter const &) = default;
    Formatter & operator=(Formatter const &) = default;
};

} // namespace Quillon::System
