#pragma once

#include <ZEL/values/Object.h>

#include <map>
#include <string>

namespace ZEL {

/// The objects of registered metamodels by the keys under which files refer to them.
///
/// It holds each object, so whoever ends a metamodel takes its keys out first.
class ZEL_API GlobalXMIIdToObjectMap {
public:
    GlobalXMIIdToObjectMap() = delete;

    /// With the keys of all metamodels that have been built: here those are entered that have come since the last call.
    [[nodiscard]] static std::map<std::string, Object> & getMap();

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    /// As it is.
    static std::map<std::string, Object> & internal_map();
};

} // namespace ZEL
