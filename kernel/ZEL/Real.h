#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

namespace ZEL {

/// The 64-bit floating number of the metamodel; compared as one with every operand.
class ZEL_API Real : public ValueBase<Real> {
public:
    using Native = double;

    constexpr Real() noexcept = default;
    constexpr Real(double value) noexcept : fValue(value) {}
    template <internal::OneOf<Double> Number>
    constexpr Real(Number const & value) noexcept : fValue(value.getValue()) {}
    /// Reads the number at the beginning of the text; none throws "Unable to convert from string to double!".
    explicit Real(String const & text);
    explicit Real(ImmutableValueObject const & object);
    explicit Real(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Real"; }
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
