#include <ZEL/PackageMergeKind.h>

namespace ZEL {

std::map<std::string, PackageMergeKind::Value> const & PackageMergeKind::getLiterals() {
    static std::map<std::string, Value> const literals{
        {"exdend", Extend},
        {"define", Define},
    };
    return literals;
}

} // namespace ZEL
