#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace Quillon::System {

/// What the host requires of every exception: an identifier to classify it by, and a text.
class HOST_API IException {
public:
    virtual ~IException() = default;

    [[nodiscard]] virtual std::string const & GetID() const = 0;
    [[nodiscard]] virtual std::string const & GetMessageTxt() const = 0;

protected:
    IException() = default;
    IException(IException const &) = default;
    IException & operator=(IException const &) = default;
};

} // namespace Quillon::System
