#include <ZEL/base/Exception.h>
#include <ZEL/values/TypeInfoRegistry.h>
#include <ZEL/values/ValueObjectFactory.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <hasp_util/ErrorHolder.h>

#include <utility>

namespace ZEL {

namespace {

ValueObject make(std::string const & typeName, HASP::TypeInfo const & type, HASP::any value) {
    return ValueObject(
        new NSImplementation::ValueObjectImpl(type, TypeInfoRegistry::getMetaTypeObject(typeName), std::move(value)),
        Deviant());
}

} // namespace

ValueObject ValueObjectFactory::create(std::string const & typeName) {
    HASP::TypeInfo const * const type = TypeInfoRegistry::findTypeInfo(typeName);
    return type == nullptr ? ValueObject() : make(typeName, *type, type->defaultConstruct());
}

ValueObject ValueObjectFactory::create(std::string const & typeName, HASP::any const & value) {
    HASP::TypeInfo const * const type = TypeInfoRegistry::findTypeInfo(typeName);
    return type == nullptr ? ValueObject() : make(typeName, *type, value);
}

ValueObject ValueObjectFactory::createFromString(std::string const & typeName, std::string const & text) {
    HASP::TypeInfo const * const type = TypeInfoRegistry::findTypeInfo(typeName);
    if (type == nullptr) {
        return ValueObject();
    }
    HASP::ErrorHolder errors;
    HASP::any value = type->convertFromString(text, errors);
    if (errors.hasError()) {
        raiseInternalError(errors.getMessage());
    }
    return make(typeName, *type, std::move(value));
}

bool ValueObjectFactory::isValueObjectType(std::string const & typeName) { return TypeInfoRegistry::hasType(typeName); }

} // namespace ZEL
