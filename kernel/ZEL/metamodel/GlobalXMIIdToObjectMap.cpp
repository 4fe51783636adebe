#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/MetaModelKeys.h>

namespace ZEL {

std::map<std::string, Object> & GlobalXMIIdToObjectMap::internal_map() {
    static std::map<std::string, Object> objects;
    return objects;
}

std::map<std::string, Object> & GlobalXMIIdToObjectMap::getMap() {
    internal::enterWaitingKeys(internal_map());
    return internal_map();
}

} // namespace ZEL
