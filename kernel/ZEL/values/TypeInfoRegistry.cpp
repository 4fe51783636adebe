#include <ZEL/base/Exception.h>
#include <ZEL/values/LateTypes.h>
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

std::map<std::string, HASP::TypeInfo> & typeInfos() {
    static std::map<std::string, HASP::TypeInfo> types;
    return types;
}

std::map<std::string, ImmutableObject> & metaTypes() {
    static std::map<std::string, ImmutableObject> types;
    return types;
}

constinit internal::LateTypes const * waiting = nullptr;

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

bool TypeInfoRegistry::internal_registerLater(internal::LateTypes const & types) {
    if (waiting != nullptr || !typeInfos().empty() || !metaTypes().empty()) {
        return false;
    }
    waiting = &types;
    ++fGeneration;
    return true;
}

bool TypeInfoRegistry::internal_forgetLater(internal::LateTypes const & types) noexcept {
    bool const didWait = waiting == &types;
    if (didWait) {
        waiting = nullptr;
        ++fGeneration;
    }
    return didWait;
}

void TypeInfoRegistry::registerWaiting() {
    internal::LateTypes const * const types = std::exchange(waiting, nullptr);
    try {
        types->registerTypes();
    } catch (...) {
        // All that is there is of these: they wait again.
        typeInfos().clear();
        metaTypes().clear();
        waiting = types;
        throw;
    }
}

std::map<std::string, HASP::TypeInfo> & TypeInfoRegistry::getTypeInfoMap() {
    if (waiting != nullptr) {
        registerWaiting();
    }
    return typeInfos();
}

std::map<std::string, ImmutableObject> & TypeInfoRegistry::getMetaTypeMap() {
    if (waiting != nullptr) {
        registerWaiting();
    }
    return metaTypes();
}

} // namespace ZEL
