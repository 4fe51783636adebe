#include <ZEL/base/Exception.h>
#include <ZEL/values/TypeInfoRegistry.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <utility>

namespace ZEL::internal {

HASP::any const & boxedAny(ImmutableValueObject const & object) {
    NSInterface::ValueObjectIntf const * const body = object.getImplementationWithoutAssert();
    if (body == nullptr) {
        raiseAnInternalError();
    }
    return body->getAny();
}

HASP::any const & boxedAny(ImmutableObject const & object) {
    NSInterface::ObjectIntf const * const body = object.getImplementationWithoutAssert();
    void const * const value = body == nullptr ? nullptr : body->cast(NSInterface::ValueObjectIntf::classInfo());
    if (value == nullptr) {
        raiseAnInternalError();
    }
    return static_cast<NSInterface::ValueObjectIntf const *>(value)->getAny();
}

BoxedType * boxedType(BoxedTypeMemory & memory) {
    if (memory.generation != TypeInfoRegistry::generation()) [[unlikely]] {
        memory.type = TypeInfoRegistry::findBoxedType(memory.typeName());
        memory.generation = TypeInfoRegistry::generation();
    }
    return memory.type;
}

NSInterface::ValueObjectIntf * box(BoxedTypeMemory & memory, HASP::any && value) {
    BoxedType * const type = boxedType(memory);
    return type == nullptr ? nullptr : new NSImplementation::ValueObjectImpl(BoxedTypePtr(type), std::move(value));
}

ImmutableObject metaDataType(std::string const & typeName) { return TypeInfoRegistry::getMetaTypeObject(typeName); }

} // namespace ZEL::internal
