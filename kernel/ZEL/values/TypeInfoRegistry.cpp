#include <ZEL/base/Exception.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/TypeInfoRegistry.h>

namespace ZEL {

void TypeInfoRegistry::registerTypeInfo(std::string const & name, HASP::TypeInfo const & info) {
    if (!getTypeInfoMap().emplace(name, info).second) {
        raiseAnInternalError();
    }
}

void TypeInfoRegistry::registerMetaType(std::string const & name, HASP::TypeInfo const & info,
                                        ImmutableObject const & type) {
    registerTypeInfo(name, info);
    if (!type.isValid()) {
        raiseAnInternalError();
    }
    getMetaTypeMap().insert_or_assign(name, type);
}

void TypeInfoRegistry::unregisterTypeInfo(std::string const & name) { getTypeInfoMap().erase(name); }

void TypeInfoRegistry::unregisterMetaType(std::string const & name) {
    getMetaTypeMap().erase(name);
    getTypeInfoMap().erase(name);
}

HASP::TypeInfo TypeInfoRegistry::getTypeInfo(std::string const & name) {
    HASP::TypeInfo const * const info = findTypeInfo(name);
    if (info == nullptr) {
        raiseAnInternalError();
    }
    return *info;
}

bool TypeInfoRegistry::hasType(std::string const & name) { return findTypeInfo(name) != nullptr; }

HASP::TypeInfo const * TypeInfoRegistry::findTypeInfo(std::string const & name) {
    auto const & types = getTypeInfoMap();
    auto const found = types.find(name);
    return found == types.end() ? nullptr : &found->second;
}

ImmutableObject TypeInfoRegistry::getMetaTypeObject(std::string const & name) {
    auto const & types = getMetaTypeMap();
    auto const found = types.find(name);
    return found == types.end() ? ImmutableObject() : found->second;
}

std::map<std::string, HASP::TypeInfo> & TypeInfoRegistry::getTypeInfoMap() {
    static std::map<std::string, HASP::TypeInfo> types;
    return types;
}

std::map<std::string, ImmutableObject> & TypeInfoRegistry::getMetaTypeMap() {
    static std::map<std::string, ImmutableObject> types;
    return types;
}

} // namespace ZEL
