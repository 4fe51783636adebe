#pragma once

#include <ZEL/values/ValuesFwd.h>

#include <compare>
#include <concepts>
#include <cstdint>
#include <type_traits>

namespace ZEL::internal {

/// The greatest value of an integer type; not of `<limits>`, which costs every program that includes a value.
template <class T> [[nodiscard]] constexpr T greatest() noexcept {
    return static_cast<T>(std::is_signed_v<T> ? static_cast<std::make_unsigned_t<T>>(-1) / 2
                                              : static_cast<std::make_unsigned_t<T>>(-1));
}
/// The least value of an integer type.
template <class T> [[nodiscard]] constexpr T least() noexcept {
    return static_cast<T>(std::is_signed_v<T> ? -greatest<T>() - 1 : 0);
}

/// Truncates toward zero. Out of range becomes the nearest value, and NaN becomes 0.
template <class T> [[nodiscard]] constexpr T truncated(double value) noexcept {
    // The limits as doubles: the upper one is the first value that does not fit.
    constexpr double low = static_cast<double>(least<T>());
    constexpr double beyond = 2.0 * static_cast<double>((greatest<T>() >> 1) + 1);
    if (value != value) {
        return 0;
    }
    if (value >= beyond) {
        return greatest<T>();
    }
    return value <= low ? least<T>() : static_cast<T>(value);
}

/// One of the named classes. Value classes are made of each other by constructors over this, so that none needs the
/// header of another.
template <class T, class... Classes>
concept OneOf = (std::same_as<T, Classes> || ...);

/// A number of the language, or an enumerator that converts to one.
template <class T>
concept NativeNumber = std::is_arithmetic_v<T> ||(std::is_enum_v<T> && std::is_convertible_v<T, int>);

/// A value class that holds a number.
template <class T>
concept NumberValue = requires {
    typename T::Native;
}
&&std::is_arithmetic_v<typename T::Native>;

/// What a number value can be compared with.
template <class T>
concept NumberOperand = std::is_arithmetic_v<T> || NumberValue<T>;

template <class R> [[nodiscard]] constexpr auto nativeOf(R const & operand) noexcept {
    if constexpr (NumberValue<R>) {
        return operand.getValue();
    } else {
        return operand;
    }
}

template <class T> struct Operands {
    T left;
    T right;
};
template <class T> Operands(T, T) -> Operands<T>;

/// Both sides of a comparison in the one type in which they are compared; the left side decides.
///
/// A boolean sees numbers as "not 0", and is seen as one by an integer or a `Double`. An integer sees a floating
/// operand truncated to its own type, and an unsigned one by bit pattern. A `Double` is truncated before an integer,
/// and narrowed before a `float`; a `Single` narrows its operand. `Class` is the class of the left side, `L` what it
/// holds.
template <class Class, class L, class R> [[nodiscard]] constexpr auto reduced(L left, R right) noexcept {
    if constexpr (std::is_same_v<L, bool>) {
        return Operands{left, right != R(0)};
    } else if constexpr (std::is_same_v<R, bool>) {
        return Operands{left != L(0), right};
    } else if constexpr (std::is_integral_v<L> && std::is_floating_point_v<R>) {
        return Operands{left, truncated<L>(static_cast<double>(right))};
    } else if constexpr (std::is_integral_v<L>) {
        using Wide = std::conditional_t<(sizeof(R) > sizeof(L)), R, L>;
        if constexpr (std::is_unsigned_v<L> || std::is_unsigned_v<R>) {
            // By way of 32 bits: -1 is the same word as the unlimited value, also beside a longer operand.
            auto const word = static_cast<std::make_unsigned_t<L>>(left);
            return Operands{static_cast<std::make_unsigned_t<Wide>>(word),
                            static_cast<std::make_unsigned_t<Wide>>(right)};
        } else {
            return Operands{static_cast<Wide>(left), static_cast<Wide>(right)};
        }
    } else if constexpr (std::is_same_v<Class, Double> && std::is_integral_v<R>) {
        return Operands{truncated<R>(left), right};
    } else if constexpr (std::is_same_v<L, float> || (std::is_same_v<Class, Double> && std::is_same_v<R, float>)) {
        return Operands{static_cast<float>(left), static_cast<float>(right)};
    } else {
        return Operands{static_cast<double>(left), static_cast<double>(right)};
    }
}

} // namespace ZEL::internal

namespace ZEL {

template <internal::NumberValue L, internal::NumberOperand R>
[[nodiscard]] constexpr bool operator==(L const & left, R const & right) noexcept {
    auto const operands = internal::reduced<L>(internal::nativeOf(left), internal::nativeOf(right));
    return operands.left == operands.right;
}

template <internal::NumberValue L, internal::NumberOperand R>
[[nodiscard]] constexpr auto operator<=>(L const & left, R const & right) noexcept {
    auto const operands = internal::reduced<L>(internal::nativeOf(left), internal::nativeOf(right));
    return operands.left <=> operands.right;
}

} // namespace ZEL
