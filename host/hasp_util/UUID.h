#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace HASP {

/// Universally unique identifiers.
class HOST_API UUID {
public:
    /// A new random identifier (version 4): 36 characters, lower-case hexadecimal digits and hyphens. Thread-safe.
    [[nodiscard]] static std::string createUuidAsString();
};

} // namespace HASP
