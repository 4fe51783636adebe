#pragma once

#include <libvx/Throwable.h>

namespace Quillon::System {

/// Base of exceptions that the user of an application may see.
class HOST_API UserException : public Throwable {};

} // namespace Quillon::System
