#pragma once

#include <ZEL/values/HandleType.h>
#include <ZEL/values/ObjectHandle.h>

namespace ZEL {

class String;

/// The most general handle for reading: on an instance of a metaclass, or on a boxed value.
///
/// Every other handle converts to it implicitly, and is made of it explicitly: a body of another class then makes a
/// null handle.
class ZEL_API ImmutableObject : public ObjectHandle<NSInterface::ObjectIntf> {
public:
    using ObjectHandle::ObjectHandle;
    ImmutableObject() noexcept = default;

    [[nodiscard]] static constexpr char const * getOrcaName() noexcept { return "ZEL.ImmutableObject"; }
    template <class H = ImmutableObject> [[nodiscard]] static HASP::TypeInfo const & getTypeInfo() {
        return internal::handleTypeInfo<H>();
    }
    [[nodiscard]] String toString() const;
    /// The name of the object's class if the handle is valid, else of the handle's: "ZEL.ImmutableObject".
    [[nodiscard]] String getFullyQualifiedOrcaTypeName() const;
    /// The class of an object, the data type of a value. Throws "The Object.getMetaType operation is not yet
    /// implemented!" for what has neither.
    template <class Type = ImmutableType> [[nodiscard]] Type getMetaType() const {
        return getImplementation()->template getMetaType<Type>(getDeviant());
    }
    /// The same object in the deviant of `model`.
    template <internal::HandleLike<ImmutableModel> Model>
    [[nodiscard]] ImmutableObject asDeviant(Model const & model) const {
        return ImmutableObject(getImplementation(), model.getDeviant());
    }
};

/// The most general handle for writing.
class ZEL_API Object : public MutableHandle<ImmutableObject> {
public:
    using MutableHandle::MutableHandle;
    Object() noexcept = default;

    [[nodiscard]] static constexpr char const * getOrcaName() noexcept { return "ZEL.Object"; }
    template <class H = Object> [[nodiscard]] static HASP::TypeInfo const & getTypeInfo() {
        return internal::handleTypeInfo<H>();
    }
    /// An object as this one, read from `text`.
    [[nodiscard]] Object fromString(String const & text) const;
    /// The name of the object's class if the handle is valid, else of the handle's: "ZEL.Object".
    [[nodiscard]] String getFullyQualifiedOrcaTypeName() const;
    /// The same object in the deviant of `model`.
    template <internal::HandleLike<ImmutableModel> Model> [[nodiscard]] Object asDeviant(Model const & model) const {
        return Object(getImplementation(), model.getDeviant());
    }
};

} // namespace ZEL
