#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

#include <concepts>
#include <cstdint>

namespace ZEL {

/// The unsigned 32-bit number whose greatest value means "unlimited". Compared with integers as an unsigned one.
class ZEL_API UnlimitedNatural : public ValueBase<UnlimitedNatural> {
public:
    using Native = std::uint32_t;

    constexpr UnlimitedNatural() noexcept = default;
    /// A negative number keeps its bit pattern: -1 is the unlimited value.
    constexpr UnlimitedNatural(std::uint32_t value) noexcept : fValue(value) {}
    /// Truncates by way of 64 unsigned bits, of which the lower half stays. A negative number, and NaN, become
    /// 0.
    template <std::floating_point F>
    constexpr explicit UnlimitedNatural(F value) noexcept
        : fValue(static_cast<std::uint32_t>(internal::truncated<std::uint64_t>(value))) {}
    /// Keeps the bit pattern.
    template <internal::OneOf<Integer> Number>
    constexpr UnlimitedNatural(Number const & value) noexcept : fValue(static_cast<std::uint32_t>(value.getValue())) {}
    /// As from a native floating number.
    template <internal::OneOf<Double> Number>
    constexpr UnlimitedNatural(Number const & value) noexcept : UnlimitedNatural(value.getValue()) {}
    /// Reads the number at the beginning of the text; none, or one out of range, throws "Unable to convert from string
    /// to UINT32_T!". Knows nothing of "*".
    explicit UnlimitedNatural(String const & text);
    explicit UnlimitedNatural(ImmutableValueObject const & object);
    explicit UnlimitedNatural(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.UnlimitedNatural"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();
    [[nodiscard]] static constexpr std::uint32_t GetUnlimitedValue() noexcept { return 0xFFFFFFFFu; }

    [[nodiscard]] constexpr bool isUnlimited() const noexcept { return fValue == GetUnlimitedValue(); }
    [[nodiscard]] constexpr std::uint32_t getValue() const noexcept { return fValue; }
    constexpr operator std::uint32_t() const noexcept { return fValue; }
    /// In digits, the unlimited value too.
    operator String() const { return String(fValue); }
    /// "*" for the unlimited value.
    [[nodiscard]] String toString() const;

private:
    std::uint32_t fValue = 0;
};

} // namespace ZEL
