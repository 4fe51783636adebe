#pragma once

#include <cstdio>
#include <string>

namespace ZEL::bench {

/// The names of sample objects, made in the same way for the library and for its limit.
[[nodiscard]] inline std::string numberedName(char const * text, int number) {
    char buffer[64];
    int const size = std::snprintf(buffer, sizeof buffer, "%s%d", text, number);
    return std::string(buffer, static_cast<std::size_t>(size));
}

} // namespace ZEL::bench
