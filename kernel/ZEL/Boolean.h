#pragma once

#include <ZEL/values/NumberConversion.h>
#include <ZEL/values/String.h>
#include <ZEL/values/ValueBase.h>
#include <ZEL/values/ValuesFwd.h>

#include <concepts>

namespace ZEL {

/// The truth value. False comes before true; a number is compared as "not 0".
class ZEL_API Boolean : public ValueBase<Boolean> {
public:
    using Native = bool;

    constexpr Boolean() noexcept = default;
    /// A number counts as true unless it is 0; NaN counts as true. Pointers do not convert.
    template <internal::NativeNumber N>
    constexpr explicit(!std::same_as<N, bool>) Boolean(N value) noexcept : fValue(value != N(0)) {}
    template <internal::OneOf<Integer, Double> Number>
    constexpr Boolean(Number const & value) noexcept : fValue(value.getValue() != 0) {}
    /// Reads "0" or "1"; anything else throws "Unable to convert from string to bool!".
    explicit Boolean(String const & text);
    explicit Boolean(ImmutableValueObject const & object);
    explicit Boolean(ImmutableObject const & object);

    [[nodiscard]] static std::string getTypeName() { return "ZEL.Boolean"; }
    [[nodiscard]] static HASP::TypeInfo const & getTypeInfo();

    [[nodiscard]] constexpr bool getValue() const noexcept { return fValue; }
    constexpr operator bool() const noexcept { return fValue; }
    /// "0" or "1".
    operator String() const { return String(fValue); }
    /// "true" or "false".
    [[nodiscard]] String toString() const;

private:
    bool fValue = false;
};

} // namespace ZEL
