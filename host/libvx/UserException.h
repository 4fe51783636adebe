#pragma once

#include <libvx/Throwable.h>

namespace Quillon::System {

/// Base of exceptions that an application's user may see.
class HOST_API UserException : public Throwable {};

} // namespace Quillon::System
