#pragma once

#include <ZEL/values/Object.h>
#include <ZEL/values/ValueObject.h>

#include <hasp_util/TypeInfo.h>
#include <hasp_util/any.h>

#include <cstdint>
#include <string>
#include <utility>

namespace ZEL {

class ImmutableDataType;

namespace internal {

class BoxedType;

/// The boxed value; both throw "An Internal Error has occurred" on a null handle, the second also on an object that is
/// no value.
[[nodiscard]] ZEL_API HASP::any const & boxedAny(ImmutableValueObject const & object);
[[nodiscard]] ZEL_API HASP::any const & boxedAny(ImmutableObject const & object);

/// Where a value class remembers what its boxed values share.
struct BoxedTypeMemory {
    std::string (*typeName)();
    BoxedType * type = nullptr;   ///< null if the name is not registered
    std::uint64_t generation = 0; ///< that of the registry when it was asked
};

/// Null if the type is not registered.
[[nodiscard]] ZEL_API BoxedType * boxedType(BoxedTypeMemory & memory);

/// A new value object without a count, which the first handle takes; null if the type is not registered.
[[nodiscard]] ZEL_API NSInterface::ValueObjectIntf * box(BoxedTypeMemory & memory, HASP::any && value);

/// The data type object registered under the name, null if there is none.
[[nodiscard]] ZEL_API ImmutableObject metaDataType(std::string const & typeName);

/// The value of class `V` in the object. Throws `HASP::bad_any_cast` if it holds a value of another class.
template <class V, class Handle> V unboxed(Handle const & object) { return HASP::any_cast<V>(boxedAny(object)); }

} // namespace internal

/// What all value classes share: they are always valid, know their data type, and can be boxed.
///
/// A value is a small copyable object of its own; boxing it makes a counted `ValueObject`, so that it can stand
/// wherever an `Object` is expected. `Derived` offers `static std::string getTypeName()`, the name under which its type
/// is registered. The base is empty, so a value is as small as what it holds.
template <class Derived> class ValueBase {
public:
    [[nodiscard]] bool isValid() const noexcept { return true; }

    /// The metamodel's object for this type; null as long as it is not registered. A template, so that the generated
    /// class `ImmutableDataType` is needed only by who calls it.
    template <class DataType = ImmutableDataType> [[nodiscard]] static DataType MetaDataType() {
        return DataType(internal::metaDataType(Derived::getTypeName()));
    }
    template <class DataType = ImmutableDataType> [[nodiscard]] DataType getMetaDataType() const {
        return MetaDataType<DataType>();
    }

    /// A new object that holds a copy; null as long as the type is not registered. A value that ends is moved.
    operator ValueObject() const & { return ValueObject(boxed(static_cast<Derived const &>(*this)), Deviant()); }
    operator ValueObject() && { return ValueObject(boxed(static_cast<Derived &&>(*this)), Deviant()); }
    operator Object() const & { return Object(boxed(static_cast<Derived const &>(*this)), Deviant()); }
    operator Object() && { return Object(boxed(static_cast<Derived &&>(*this)), Deviant()); }

protected:
    ValueBase() noexcept = default;
    ~ValueBase() = default;
    ValueBase(ValueBase const &) noexcept = default;
    ValueBase & operator=(ValueBase const &) noexcept = default;

private:
    static NSInterface::ValueObjectIntf * boxed(HASP::any && value) {
        static constinit internal::BoxedTypeMemory memory{[] { return std::string(Derived::getTypeName()); }};
        return internal::box(memory, std::move(value));
    }
};

} // namespace ZEL
