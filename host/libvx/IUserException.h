#pragma once

#include <libvx/IException.h>

namespace Quillon::System {

/// Marks an exception whose text may be shown to the user of an application.
class HOST_API IUserException : public IException {};

} // namespace Quillon::System
