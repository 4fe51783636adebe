#include <ZEL/VisibilityKind.h>

namespace ZEL {

std::map<std::string, VisibilityKind::Value> const & VisibilityKind::getLiterals() {
    static std::map<std::string, Value> const literals{
        {"public", Public},
        {"private", Private},
        {"protected", Protected},
        {"package", Package},
    };
    return literals;
}

} // namespace ZEL
