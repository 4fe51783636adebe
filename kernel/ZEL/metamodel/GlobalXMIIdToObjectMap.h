#pragma once

#include <ZEL/values/Object.h>

#include <map>
#include <string>

namespace ZEL {

/// The objects of registered metamodels by the keys under which files refer to them.
///
/// Filled when a metamodel is built. It holds each object, so whoever ends a metamodel takes its keys out first.
class ZEL_API GlobalXMIIdToObjectMap {
public:
    GlobalXMIIdToObjectMap() = delete;

    [[nodiscard]] static std::map<std::string, Object> & getMap();
};

} // namespace ZEL
