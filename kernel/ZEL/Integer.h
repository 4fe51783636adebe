#pragma once

#include <ZEL/Boolean.h>

#include <cstdint>

namespace ZEL {

class Double;
class UnlimitedNatural;

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
    constexpr Integer(Boolean const & value) noexcept : fValue(value.getValue() ? 1 : 0) {}
    /// Keeps the bit pattern: the unlimited value becomes -1.
    inline constexpr Integer(UnlimitedNatural const & value) noexcept;
    /// As from a native floating number.
    inline constexpr Integer(Double const & value) noexcept;
    /// Reads the number at the beginning of the text; none, or one out of range, throws "Unable to convert from string
    /// to INT32_T!".
    explicit Integer(String const & text);
    explicit Integer(ImmutableValueObject const & object) : Integer(internal::unboxed<Integer>(object)) {}
    explicit Integer(ImmutableObject const & object) : Integer(internal::unboxed<Integer>(object)) {}

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Integer"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();

    [[nodiscard]] constexpr std::int32_t getValue() const noexcept { return fValue; }
    constexpr operator std::int32_t() const noexcept { return fValue; }
    operator String() const { return String(fValue); }
    [[nodiscard]] String toString() const;

private:
    std::int32_t fValue = 0;
};

inline Boolean::Boolean(Integer const & value) noexcept : fValue(value.getValue() != 0) {}

} // namespace ZEL
