#include <ZEL/ParameterDirectionKind.h>

namespace ZEL {

std::map<std::string, ParameterDirectionKind::Value> const & ParameterDirectionKind::getLiterals() {
    static std::map<std::string, Value> const literals{
        {"in", In},
        {"inout", Inout},
        {"out", Out},
        {"return", Return},
    };
    return literals;
}

} // namespace ZEL
