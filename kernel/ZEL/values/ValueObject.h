#pragma once

#include <ZEL/values/ObjectHandle.h>
#include <ZEL/values/ValueObjectIntf.h>

namespace ZEL {

/// Handle on a boxed value, for reading.
///
/// A boxed value never changes and is the same in every deviant, so the deviant of such a handle is of no account. `==`
/// and `!=` compare the values; the order is that of the bodies, so that handles can be keys. Converts implicitly to
/// `ImmutableObject` and is made of one explicitly: an object that is no value makes a null handle.
class ZEL_API ImmutableValueObject : public ObjectHandle<NSInterface::ValueObjectIntf> {
public:
    using ObjectHandle::ObjectHandle;
    ImmutableValueObject() noexcept = default;

    /// Valid as long as the object.
    [[nodiscard]] HASP::any const & getAny() const { return getImplementation()->getAny(); }
    [[nodiscard]] HASP::TypeInfo getTypeInfo() const { return getImplementation()->getTypeInfo(); }
    template <class DataType = ImmutableDataType> [[nodiscard]] DataType getMetaDataType() const {
        return getImplementation()->template getMetaDataType<DataType>();
    }
    [[nodiscard]] String toString() const;
    /// The same value, with the deviant of `model` in the handle.
    template <internal::HandleLike<ImmutableModel> Model>
    [[nodiscard]] ImmutableValueObject asDeviant(Model const & model) const {
        return ImmutableValueObject(getImplementation(), model.getDeviant());
    }
};

/// Handle on a boxed value that converts to `Object`. There is nothing to write: a value object is immutable.
class ZEL_API ValueObject : public MutableHandle<ImmutableValueObject> {
public:
    using MutableHandle::MutableHandle;
    ValueObject() noexcept = default;

    /// The same value, with the deviant of `model` in the handle.
    template <internal::HandleLike<ImmutableModel> Model>
    [[nodiscard]] ValueObject asDeviant(Model const & model) const {
        return ValueObject(getImplementation(), model.getDeviant());
    }
};

namespace internal {

template <class H>
concept ValueHandleType = ObjectHandleType<H> && KindOf<H, ImmutableValueObject>;

/// Whether both are null, or hold equal values of one class.
[[nodiscard]] ZEL_API bool haveEqualValues(ImmutableValueObject const & left, ImmutableValueObject const & right);

} // namespace internal

template <internal::ValueHandleType A, internal::ValueHandleType B> bool operator==(A const & left, B const & right) {
    return internal::haveEqualValues(left, right);
}
template <internal::ValueHandleType A, internal::ValueHandleType B> bool operator!=(A const & left, B const & right) {
    return !internal::haveEqualValues(left, right);
}

} // namespace ZEL
