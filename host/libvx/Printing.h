#pragma once

#include <hasp_util/Export.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>

struct VxContext;

extern "C" {

/// Prints to standard output, or to the stream of `vx::setPrintStream`. Returns the number of bytes written, negative
/// on failure.
[[gnu::format(printf, 1, 2)]] HOST_API int vxPrintf(char const * format, ...);

/// Formats as printf does into a buffer of `size` bytes. A longer text is cut to what fits with the terminating zero
/// byte, never inside a UTF-8 character. Returns the number of bytes written without the zero byte, or -1 on failure.
[[gnu::format(printf, 3, 0)]] HOST_API int vxVSNprintf(char * buffer, std::size_t size, char const * format,
                                                       std::va_list arguments);

/// Formats the message of that number in the current language, and cuts it as `vxVSNprintf` does. `%s` takes the next
/// argument, a `char const *`; `%d` an `int`; `%u` an `unsigned`; `%1` to `%9` mean the first to the ninth argument,
/// all of them `char const *`. A null text is printed as "(null)". Returns -1 for an unknown number.
HOST_API int vx_vsprintm(VxContext * context, char * buffer, std::size_t size, std::uint32_t identifier,
                         std::va_list arguments);
}

namespace vx {

/// Sets the stream that `vxPrintf` prints to; null means standard output. The stream stays the caller's.
HOST_API void setPrintStream(std::FILE * stream) noexcept;

} // namespace vx
