#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

#include <concepts>
#include <cstdint>

namespace ZEL {

/// The signed 32-bit number.
///
/// Compared with an unsigned operand it is one by bit pattern; a floating operand is truncated first, so that
/// `Integer(3) == 3.7`.
class ZEL_API Integer : public ValueBase<Integer> {
public:
    using Native = std::int32_t;

    constexpr Integer() noexcept = default;
    constexpr Integer(std::int32_t value) noexcept : fValue(value) {}
    /// Truncates toward zero; out of range becomes the nearest value, and NaN becomes 0.
    template <std::floating_point F>
    constexpr explicit Integer(F value) noexcept : fValue(internal::truncated<std::int32_t>(value)) {}
    /// Keeps the bit pattern: the unlimited value becomes -1.
    template <internal::OneOf<Boolean, UnlimitedNatural> Number>
    constexpr Integer(Number const & value) noexcept : fValue(static_cast<std::int32_t>(value.getValue())) {}
    /// As from a native floating number.
    template <internal::OneOf<Double> Number>
    constexpr Integer(Number const & value) noexcept : Integer(value.getValue()) {}
    /// Reads the number at the beginning of the text; none, or one out of range, throws "Unable to convert from string
    /// to INT32_T!".
    explicit Integer(String const & text);
    explicit Integer(ImmutableValueObject const & object);
    explicit Integer(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Integer"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();

    [[nodiscard]] constexpr std::int32_t getValue() const noexcept { return fValue; }
    constexpr operator std::int32_t() const noexcept { return fValue; }
    operator String() const { return String(fValue); }
    [[nodiscard]] String toString() const;

private:
    std::int32_t fValue = 0;
};

} // namespace ZEL
