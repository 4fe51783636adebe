#pragma once

#include <ZEL/Export.h>

#include <string>

namespace ZEL {

/// `value` as an output stream with default settings prints it: six significant digits, in the process's locale. Throws
/// "bad conversion stringify(double)" if the stream fails, which only a facet of the locale can cause.
[[nodiscard]] ZEL_API std::string stringify(double value);

} // namespace ZEL
