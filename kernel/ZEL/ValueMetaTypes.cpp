// What the most general handles, values and their types say in the metamodel's own handle classes.

#include <ZEL/Exception.h>
#include <ZEL/IteratorType.h>
#include <ZEL/SequenceType.h>
#include <ZEL/TypeInfoRegistry.h>
#include <ZEL/ValueObject.h>
#include <ZEL/ValueObjectImpl.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Object.h>
#include <ZEL/metamodel/Type.h>

namespace ZEL {

ImmutableObject ImmutableObject::asDeviant(ImmutableModel const & model) const {
    return ImmutableObject(getImplementation(), model.getDeviant());
}

Object Object::asDeviant(ImmutableModel const & model) const { return Object(getImplementation(), model.getDeviant()); }

ImmutableValueObject ImmutableValueObject::asDeviant(ImmutableModel const & model) const {
    return ImmutableValueObject(getImplementation(), model.getDeviant());
}

ValueObject ValueObject::asDeviant(ImmutableModel const & model) const {
    return ValueObject(getImplementation(), model.getDeviant());
}

ImmutableType ImmutableObject::getMetaType() const { return getImplementation()->getMetaType(getDeviant()); }

ImmutableDataType ImmutableValueObject::getMetaDataType() const { return getImplementation()->getMetaDataType(); }

void TypeInfoRegistry::registerMetaType(std::string const & name, HASP::TypeInfo const & info,
                                        ImmutableDataType const & type) {
    registerTypeInfo(name, info);
    if (!type.isValid()) {
        raiseAnInternalError();
    }
    getMetaTypeMap().insert_or_assign(name, ImmutableObject(type));
}

ImmutableDataType TypeInfoRegistry::getMetaType(std::string const & name) {
    return ImmutableDataType(getMetaTypeObject(name));
}

HASP::TypeInfo SequenceType::Create(ImmutableType const & elementType) {
    return CreateTypeInfo(new SequenceType(elementType));
}

ImmutableType SequenceType::getElementType() const { return ImmutableType(fElementType); }

HASP::TypeInfo IteratorType::Create(ImmutableType const & elementType) {
    return CreateTypeInfo(new IteratorType(elementType));
}

ImmutableType IteratorType::getElementType() const { return ImmutableType(fElementType); }

namespace NSImplementation {

ImmutableType ValueObjectImpl::getMetaType(Deviant) const { return ImmutableType(fMetaType); }

ImmutableDataType ValueObjectImpl::getMetaDataType() const { return ImmutableDataType(fMetaType); }

} // namespace NSImplementation
} // namespace ZEL
