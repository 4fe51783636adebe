#include <ZEL/base/Exception.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/TypeInfoRegistry.h>

#include <utility>

namespace ZEL {

namespace {

/// By name, of the registered types that have been asked for. Never freed: metamodels end after the statics of this
/// library.
std::map<std::string, internal::BoxedTypePtr> & boxedTypes() {
    static auto & types = *new std::map<std::string, internal::BoxedTypePtr>;
    return types;
}

} // namespace

std::uint64_t TypeInfoRegistry::fGeneration = 1;

void TypeInfoRegistry::registerTypeInfo(std::string const & name, HASP::TypeInfo const & info) {
    if (!getTypeInfoMap().emplace(name, info).second) {
        raiseAnInternalError();
    }
    forget(name);
}

void TypeInfoRegistry::registerMetaType(std::string const & name, HASP::TypeInfo const & info,
                                        ImmutableObject const & type) {
    registerTypeInfo(name, info);
    if (!type.isValid()) {
        raiseAnInternalError();
    }
    getMetaTypeMap().insert_or_assign(name, type);
    forget(name);
}

void TypeInfoRegistry::unregisterTypeInfo(std::string const & name) {
    forget(name);
    getTypeInfoMap().erase(name);
}

void TypeInfoRegistry::unregisterMetaType(std::string const & name) {
    forget(name);
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

internal::BoxedType * TypeInfoRegistry::findBoxedType(std::string const & name) {
    auto const found = boxedTypes().find(name);
    if (found != boxedTypes().end()) {
        return found->second.get();
    }
    HASP::TypeInfo const * const info = findTypeInfo(name);
    if (info == nullptr) {
        return nullptr;
    }
    internal::BoxedTypePtr type(new internal::BoxedType(*info, getMetaTypeObject(name)));
    return boxedTypes().emplace(name, std::move(type)).first->second.get();
}

void TypeInfoRegistry::forget(std::string const & name) {
    ++fGeneration;
    boxedTypes().erase(name);
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
