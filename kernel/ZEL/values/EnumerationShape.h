#pragma once

#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>

#include <compare>
#include <cstdint>
#include <type_traits>

namespace ZEL {

namespace internal {

template <class Value> class EnumerationLiterals;

/// The type of the values of `Kind`, made of its literals.
template <class Kind> [[nodiscard]] HASP::TypeInfo const & enumerationType();

} // namespace internal

/// Mechanics of the kinds: value classes that hold one enumerator, of the built-in metamodel and of applications.
///
/// A kind derives from this base with itself as the argument and has three things: the nested `enum Value`, numbered
/// from 0 in the order of the literals; `getTypeName()`, the prefix of its metamodel, a dot and the kind's name; and
/// `getLiterals()`, the texts. The whole of a kind is
///
///     class Colour : public ZEL::EnumerationValue<Colour> {
///     public:
///         enum Value { Red, Green };
///
///         using EnumerationValue::EnumerationValue;
///         constexpr Colour() noexcept = default;
///         constexpr Colour(Value value) noexcept : EnumerationValue(value) {}
///         constexpr operator Value() const noexcept { return getValue(); }
///
///         static std::string getTypeName() { return "library.Colour"; }
///         static std::map<std::string, Value> const & getLiterals();
///     };
///
/// where `getLiterals()` returns a function-local static. Text goes through the kind's type: exactly the literals.
///
/// This header has what every program needs that sees a kind in an operation, without the texts and the type: a kind
/// written by hand includes `<ZEL/values/EnumerationValue.h>`.
template <class Derived> class EnumerationValue : public ValueBase<Derived> {
public:
    constexpr EnumerationValue() noexcept = default;
    explicit EnumerationValue(ImmutableValueObject const & object)
        : EnumerationValue(internal::unboxed<Derived>(object)) {}
    explicit EnumerationValue(ImmutableObject const & object) : EnumerationValue(internal::unboxed<Derived>(object)) {}

    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo() { return internal::enumerationType<Derived>(); }

    /// The literal. Throws `std::logic_error` for a number that no literal has.
    [[nodiscard]] String toString() const {
        return Derived::getTypeInfo().convertToString(static_cast<Derived const &>(*this));
    }

    /// Parameterised, because the enumeration is nested in the derived class.
    template <class Kind = Derived> [[nodiscard]] constexpr typename Kind::Value getValue() const noexcept {
        return static_cast<typename Kind::Value>(fValue);
    }

protected:
    template <class Value>
    requires std::is_enum_v<Value>
    constexpr explicit EnumerationValue(Value value) noexcept : fValue(static_cast<std::int32_t>(value)) {}

private:
    explicit EnumerationValue(Derived const & value) noexcept
        : fValue(static_cast<EnumerationValue const &>(value).fValue) {}

    std::int32_t fValue = 0;
};

namespace internal {

template <class T>
concept EnumerationKind = KindOf<T, EnumerationValue<T>>;

} // namespace internal

template <internal::EnumerationKind Kind>
[[nodiscard]] constexpr bool operator==(Kind const & left, Kind const & right) noexcept {
    return left.getValue() == right.getValue();
}
template <internal::EnumerationKind Kind>
[[nodiscard]] constexpr std::strong_ordering operator<=>(Kind const & left, Kind const & right) noexcept {
    return left.getValue() <=> right.getValue();
}
template <internal::EnumerationKind Kind>
[[nodiscard]] constexpr bool operator==(Kind const & left, std::type_identity_t<typename Kind::Value> right) noexcept {
    return left.getValue() == right;
}
template <internal::EnumerationKind Kind>
[[nodiscard]] constexpr std::strong_ordering operator<=>(Kind const & left,
                                                         std::type_identity_t<typename Kind::Value> right) noexcept {
    return left.getValue() <=> right;
}

} // namespace ZEL
