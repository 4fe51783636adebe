#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>

namespace ZEL {

std::map<std::string, Object> & GlobalXMIIdToObjectMap::getMap() {
    static std::map<std::string, Object> objects;
    return objects;
}

} // namespace ZEL
