#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace HASP {

/// Universally unique identifiers.
class HOST_API UUID {
public:
    /// A fresh random identifier (version 4) as 36 characters of lower-case hex digits and dashes. Safe in every
    /// thread.
    [[nodiscard]] static std::string createUuidAsString();
};

} // namespace HASP
