#pragma once

#include <ZEL/UnlimitedNatural.h>

namespace ZEL {

class Real;
class Single;

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
    constexpr Double(Boolean const & value) noexcept : fValue(value.getValue() ? 1.0 : 0.0) {}
    constexpr Double(Integer const & value) noexcept : fValue(value.getValue()) {}
    /// The unlimited value becomes 4294967295.0.
    constexpr Double(UnlimitedNatural const & value) noexcept : fValue(value.getValue()) {}
    inline constexpr Double(Single const & value) noexcept;
    inline constexpr Double(Real const & value) noexcept;
    /// Reads the number at the beginning of the text; none throws "Unable to convert from string to double!".
    explicit Double(String const & text);
    explicit Double(ImmutableValueObject const & object) : Double(internal::unboxed<Double>(object)) {}
    explicit Double(ImmutableObject const & object) : Double(internal::unboxed<Double>(object)) {}

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

inline Boolean::Boolean(Double const & value) noexcept : Boolean(value.getValue()) {}
inline constexpr Integer::Integer(Double const & value) noexcept : Integer(value.getValue()) {}
inline constexpr UnlimitedNatural::UnlimitedNatural(Double const & value) noexcept
    : UnlimitedNatural(value.getValue()) {}

} // namespace ZEL
