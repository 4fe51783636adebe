#pragma once

#include <ZEL/base/ObjectPool.h>
#include <ZEL/base/ReferenceCountingImpl.h>
#include <ZEL/values/BoxedType.h>
#include <ZEL/values/ValueObjectIntf.h>

#include <utility>

namespace ZEL::NSImplementation {

/// Body of a boxed value: immutable, counted, without states. What the state protocol asks for is the body itself.
///
/// Made by `ValueObjectFactory` alone, and owned by its handles.
class ZEL_API ValueObjectImpl final : public virtual NSInterface::ValueObjectIntf, public ReferenceCountingImpl {
public:
    /// A value of the type, which is not checked and not null.
    ValueObjectImpl(internal::BoxedTypePtr type, HASP::any && value);
    /// A `T` made of the arguments.
    template <class T, class... Arguments>
    ValueObjectImpl(internal::BoxedTypePtr type, std::in_place_type_t<T> value, Arguments &&... arguments)
        : fType(std::move(type)), fValue(value, std::forward<Arguments>(arguments)...) {}
    /// The same with a type of its own. `metaType` may be null.
    ValueObjectImpl(HASP::TypeInfo type, ImmutableObject metaType, HASP::any value);
    ~ValueObjectImpl() override;
    static void * operator new(std::size_t size) { return internal::takeFromPool(size); }
    static void operator delete(void * memory, std::size_t size) noexcept { internal::giveToPool(memory, size); }

    [[nodiscard]] HASP::any const & getAny() const override;
    [[nodiscard]] HASP::TypeInfo getTypeInfo() const override;

    CooperativeVisitor::internal::MethodInfo
    getVisitMethod(CooperativeVisitor::internal::VisitTable const & table) const override;
    void * cast(CooperativeVisitor::internal::ClassInfo const & info) const override;

    [[nodiscard]] char const * getOrcaName(bool immutable) const override;
    [[nodiscard]] String toString(Deviant deviant) const override;
    /// A new value object of the same type. Throws the error's text if the text is no value of it.
    Object fromString(Deviant deviant, String const & text) override;
    [[nodiscard]] NSInterface::SeenObject internal_metaType(Deviant deviant) const override;
    [[nodiscard]] std::size_t getByteSize() const override;

    [[nodiscard]] bool deviant_isValid(Deviant deviant) const override;
    void deviant_commitTransientState(Deviant deviant) override;
    [[nodiscard]] NSInterface::ObjectIntf * deviant_getCopyOfDeviation(Deviant deviant) const override;
    [[nodiscard]] NSInterface::ObjectIntf * internal_getDeviation(Deviant deviant) const override;
    [[nodiscard]] NSInterface::ObjectIntf * getReadDeviant(Deviant deviant) const override;
    [[nodiscard]] NSInterface::ObjectIntf * getWriteDeviant(Deviant deviant) const override;

private:
    internal::BoxedTypePtr const fType;
    HASP::any const fValue;
};

} // namespace ZEL::NSImplementation
