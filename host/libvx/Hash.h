#pragma once

#include <hasp_util/Export.h>

#include <cstdint>

extern "C" {

/// A hash of a null-terminated text, the same in every process. Null hashes like the empty text.
HOST_API std::uint32_t vx_hash_string(char const * text);
}
