#pragma once

#include <ZEL/metamodel/Remainder.h>

namespace ZEL::Compare {

/// Whether files say the same that no object can hold. Prefixes and the place of an element in its file say nothing.
[[nodiscard]] bool saySame(Remainder const & a, Remainder const & b);

} // namespace ZEL::Compare
