#include <ZEL/base/Exception.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueObject.h>
#include <ZEL/values/ValueObjectImpl.h>

#include <hasp_util/ErrorHolder.h>

#include <utility>

namespace ZEL {

namespace NSInterface {

CooperativeVisitor::internal::ClassInfo const & ValueObjectIntf::classInfo() {
    static auto const info = CooperativeVisitor::internal::makeClassInfo<ValueObjectIntf, ObjectDomain>();
    return info;
}

} // namespace NSInterface

namespace NSImplementation {

namespace {

CooperativeVisitor::internal::CastTable const & casts() {
    return CooperativeVisitor::internal::castTable<ValueObjectImpl, NSInterface::ValueObjectIntf,
                                                   NSInterface::ObjectIntf>();
}

} // namespace

ValueObjectImpl::ValueObjectImpl(internal::BoxedTypePtr type, HASP::any && value)
    : fType(std::move(type)), fValue(std::move(value)) {}

ValueObjectImpl::ValueObjectImpl(HASP::TypeInfo type, ImmutableObject metaType, HASP::any value)
    : ValueObjectImpl(internal::BoxedTypePtr(new internal::BoxedType(std::move(type), std::move(metaType))),
                      std::move(value)) {}

ValueObjectImpl::~ValueObjectImpl() = default;

HASP::any const & ValueObjectImpl::getAny() const { return fValue; }

HASP::TypeInfo ValueObjectImpl::getTypeInfo() const { return fType->typeInfo; }

CooperativeVisitor::internal::MethodInfo
ValueObjectImpl::getVisitMethod(CooperativeVisitor::internal::VisitTable const & table) const {
    return casts().visitMethod(table, const_cast<ValueObjectImpl *>(this));
}

void * ValueObjectImpl::cast(CooperativeVisitor::internal::ClassInfo const & info) const {
    // Whoever unboxes a value asks for this one.
    if (info == ValueObjectIntf::classInfo()) {
        return static_cast<ValueObjectIntf *>(const_cast<ValueObjectImpl *>(this));
    }
    return casts().cast(info, const_cast<ValueObjectImpl *>(this));
}

char const * ValueObjectImpl::getOrcaName(bool immutable) const {
    return immutable ? "ZEL.ImmutableValueObject" : "ZEL.ValueObject";
}

String ValueObjectImpl::toString(Deviant) const { return String(fType->typeInfo.convertToString(fValue)); }

Object ValueObjectImpl::fromString(Deviant, String const & text) {
    HASP::ErrorHolder errors;
    HASP::any value = fType->typeInfo.convertFromString(text.str(), errors);
    if (errors.hasError()) {
        raiseInternalError(errors.getMessage());
    }
    return ValueObject(new ValueObjectImpl(fType, std::move(value)), Deviant());
}

NSInterface::SeenObject ValueObjectImpl::internal_metaType(Deviant) const {
    ImmutableObject const & metaType = fType->metaType;
    return {metaType.getImplementationWithoutAssert(), metaType.getDeviant()};
}

std::size_t ValueObjectImpl::getByteSize() const { return sizeof(*this); }

bool ValueObjectImpl::deviant_isValid(Deviant) const { return true; }

void ValueObjectImpl::deviant_commitTransientState(Deviant) {}

NSInterface::ObjectIntf * ValueObjectImpl::deviant_getCopyOfDeviation(Deviant) const {
    return const_cast<ValueObjectImpl *>(this);
}

NSInterface::ObjectIntf * ValueObjectImpl::internal_getDeviation(Deviant) const {
    return const_cast<ValueObjectImpl *>(this);
}

NSInterface::ObjectIntf * ValueObjectImpl::getReadDeviant(Deviant) const { return const_cast<ValueObjectImpl *>(this); }

NSInterface::ObjectIntf * ValueObjectImpl::getWriteDeviant(Deviant) const {
    return const_cast<ValueObjectImpl *>(this);
}

} // namespace NSImplementation
} // namespace ZEL
