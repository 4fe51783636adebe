#pragma once

#include <hasp_util/Export.h>

#include <cstdarg>
#include <cstddef>
#include <cstdint>
#include <cstdio>

struct VxContext;

extern "C" {

/// Prints to standard output, or to where `vx::setPrintStream` points. Returns the bytes written, negative on failure.
[[gnu::format(printf, 1, 2)]] HOST_API int vxPrintf(char const * format, ...);

/// Formats as printf does into a buffer of so many bytes. A longer text is cut to what fits with its final zero byte,
/// never inside a UTF-8 character. Returns the number of bytes written without the zero byte, -1 if nothing can be.
[[gnu::format(printf, 3, 0)]] HOST_API int vxVSNprintf(char * buffer, std::size_t size, char const * format,
                                                       std::va_list arguments);

/// Formats the message of that number in the current language, and cuts as `vxVSNprintf`. In order, `%s` takes a
/// `char const *`, `%d` an `int`, `%u` an `unsigned`; `%1` to `%9` stand for the first to the ninth of a list of
/// `char const *`. A null text prints as "(null)". Returns -1 for an unknown number.
HOST_API int vx_vsprintm(VxContext * context, char * buffer, std::size_t size, std::uint32_t identifier,
                         std::va_list arguments);
}

namespace vx {

/// Where `vxPrintf` prints from now on, standard output for null. The stream stays the caller's.
HOST_API void setPrintStream(std::FILE * stream) noexcept;

} // namespace vx
