#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

#include <type_traits>

namespace ZEL {

/// The 64-bit floating number that converts from and to all other numbers.
///
/// Before an integer operand it is truncated, and before a `float` narrowed, so that `Double(3.7) == 3`.
class ZEL_API Double : public ValueBase<Double> {
public:
    using Native = double;

    constexpr Double() noexcept = default;
    template <class N>
    requires std::is_arithmetic_v<N>
    constexpr Double(N value) noexcept : fValue(static_cast<double>(value)) {}
    /// The unlimited value becomes 4294967295.0.
    template <internal::OneOf<Boolean, Integer, UnlimitedNatural, Single, Real> Number>
    constexpr Double(Number const & value) noexcept : fValue(static_cast<double>(value.getValue())) {}
    /// Reads the number at the beginning of the text; none throws "Unable to convert from string to double!".
    explicit Double(String const & text);
    explicit Double(ImmutableValueObject const & object);
    explicit Double(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Double"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();

    [[nodiscard]] constexpr double getValue() const noexcept { return fValue; }
    constexpr operator double() const noexcept { return fValue; }
    /// Six significant digits.
    operator String() const { return String(fValue); }
    [[nodiscard]] String toString() const;

private:
    double fValue = 0.0;
};

} // namespace ZEL
