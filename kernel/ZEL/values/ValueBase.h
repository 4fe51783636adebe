#pragma once

#include <ZEL/values/Object.h>
#include <ZEL/values/ValueObject.h>

#include <hasp_util/TypeInfo.h>
#include <hasp_util/any.h>

#include <string>

namespace ZEL {

class ImmutableDataType;

namespace internal {

/// The boxed value; both throw "An Internal Error has occurred" on a null handle, the second also on an object that is
/// no value.
[[nodiscard]] ZEL_API HASP::any const & boxedAny(ImmutableValueObject const & object);
[[nodiscard]] ZEL_API HASP::any const & boxedAny(ImmutableObject const & object);

/// A new value object; null if `typeName` is not registered.
[[nodiscard]] ZEL_API ValueObject box(std::string const & typeName, HASP::any const & value);

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

    /// A new object on the heap that holds a copy.
    operator ValueObject() const {
        return internal::box(Derived::getTypeName(), HASP::any(static_cast<Derived const &>(*this)));
    }
    operator Object() const { return Object(operator ValueObject()); }

protected:
    ValueBase() noexcept = default;
    ~ValueBase() = default;
    ValueBase(ValueBase const &) noexcept = default;
    ValueBase & operator=(ValueBase const &) noexcept = default;
};

} // namespace ZEL
