#include <ZEL/PersistenceKind.h>

namespace ZEL {

std::map<std::string, PersistenceKind::Value> const & PersistenceKind::getLiterals() {
    static std::map<std::string, Value> const literals{
        {"default", Default},
        {"transient", Transient},
        {"extension", Extension},
    };
    return literals;
}

} // namespace ZEL
