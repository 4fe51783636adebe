#pragma once

#include <ZEL/Export.h>

#include <string>

namespace ZEL::util {

/// The time in UTC to the microsecond, as in "2026-Jan-31 23:59:59.000001".
[[nodiscard]] ZEL_API std::string now();

} // namespace ZEL::util
