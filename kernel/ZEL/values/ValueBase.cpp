#include <ZEL/base/Exception.h>
#include <ZEL/values/TypeInfoRegistry.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValueObjectFactory.h>

namespace ZEL::internal {

HASP::any const & boxedAny(ImmutableValueObject const & object) {
    NSInterface::ValueObjectIntf const * const body = object.getImplementationWithoutAssert();
    if (body == nullptr) {
        raiseAnInternalError();
    }
    return body->getAny();
}

HASP::any const & boxedAny(ImmutableObject const & object) {
    // The caller's handle keeps the body, and with it the value, beyond this one.
    return boxedAny(ImmutableValueObject(object));
}

ValueObject box(std::string const & typeName, HASP::any const & value) {
    return ValueObjectFactory::create(typeName, value);
}

ImmutableObject metaDataType(std::string const & typeName) { return TypeInfoRegistry::getMetaTypeObject(typeName); }

} // namespace ZEL::internal
