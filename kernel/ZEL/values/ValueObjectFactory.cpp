#include <ZEL/base/Exception.h>
#include <ZEL/values/TypeInfoRegistry.h>
#include <ZEL/values/ValueObjectFactory.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <hasp_util/ErrorHolder.h>

#include <utility>

namespace ZEL {

namespace {

ValueObject make(internal::BoxedType & type, HASP::any && value) {
    return ValueObject(new NSImplementation::ValueObjectImpl(internal::BoxedTypePtr(&type), std::move(value)),
                       Deviant());
}

} // namespace

ValueObject ValueObjectFactory::create(std::string const & typeName) {
    internal::BoxedType * const type = TypeInfoRegistry::findBoxedType(typeName);
    return type == nullptr ? ValueObject() : make(*type, type->typeInfo.defaultConstruct());
}

ValueObject ValueObjectFactory::create(std::string const & typeName, HASP::any const & value) {
    internal::BoxedType * const type = TypeInfoRegistry::findBoxedType(typeName);
    return type == nullptr ? ValueObject() : make(*type, HASP::any(value));
}

ValueObject ValueObjectFactory::createFromString(std::string const & typeName, std::string const & text) {
    internal::BoxedType * const type = TypeInfoRegistry::findBoxedType(typeName);
    if (type == nullptr) {
        return ValueObject();
    }
    HASP::ErrorHolder errors;
    HASP::any value = type->typeInfo.convertFromString(text, errors);
    if (errors.hasError()) {
        raiseInternalError(errors.getMessage());
    }
    return make(*type, std::move(value));
}

bool ValueObjectFactory::isValueObjectType(std::string const & typeName) { return TypeInfoRegistry::hasType(typeName); }

} // namespace ZEL
