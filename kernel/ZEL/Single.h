#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

namespace ZEL {

/// The 32-bit floating number. An operand of a comparison is narrowed to it first.
class ZEL_API Single : public ValueBase<Single> {
public:
    using Native = float;

    constexpr Single() noexcept = default;
    constexpr Single(float value) noexcept : fValue(value) {}
    /// Narrows.
    template <internal::OneOf<Double> Number>
    constexpr Single(Number const & value) noexcept : fValue(static_cast<float>(value.getValue())) {}
    /// Reads the number at the beginning of the text; none throws "Unable to convert from string to float!".
    explicit Single(String const & text);
    explicit Single(ImmutableValueObject const & object);
    explicit Single(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Single"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();

    [[nodiscard]] constexpr float getValue() const noexcept { return fValue; }
    constexpr operator float() const noexcept { return fValue; }
    /// Six significant digits.
    operator String() const { return String(fValue); }
    [[nodiscard]] String toString() const;

private:
    float fValue = 0.0f;
};

} // namespace ZEL
