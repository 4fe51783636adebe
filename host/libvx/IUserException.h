#pragma once

#include <libvx/IException.h>

namespace Quillon::System {

/// Marks an exception whose text may be shown to an application's user.
class HOST_API IUserException : public IException {
public:
    ~IUserException() override;

protected:
    IUserException() = default;
    IUserException(IUserException const &) = default;
    IUserException & operator=(IUserException const &) = default;
};

} // namespace Quillon::System
