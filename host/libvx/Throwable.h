#pragma once

#include <libvx/Externalizable.h>

namespace Quillon::System {

/// Root of the host's exceptions, on the side that is written to a stream.
class HOST_API Throwable : public Externalizable {};

} // namespace Quillon::System
