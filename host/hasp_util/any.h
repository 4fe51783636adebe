#pragma once

#include <hasp_util/Export.h>

#include <any>
#include <concepts>
#include <type_traits>
#include <typeinfo>
#include <utility>

namespace HASP {

/// Thrown when an `any` is cast to a type other than that of its value.
class HOST_API bad_any_cast : public std::bad_cast {
public:
    [[nodiscard]] char const * what() const noexcept override;
};

/// Holds a copy of a value of any copyable type, or nothing.
///
/// Two are equal if both are empty, or if they hold equal values of the same type. Values of a type without `==` equal
/// nothing, not even themselves.
class HOST_API any {
public:
    any() noexcept = default;
    template <class T>
    requires(!std::same_as<std::remove_cvref_t<T>, any> && std::copy_constructible<std::decay_t<T>>)
        any(T && value) // NOLINT(bugprone-forwarding-reference-overload): the constraint leaves copies alone
        : fValue(std::forward<T>(value)), fEqual(&equalAs<std::decay_t<T>>) {}

    [[nodiscard]] bool empty() const noexcept { return !fValue.has_value(); }
    /// `typeid(void)` when empty.
    [[nodiscard]] std::type_info const & type() const noexcept { return fValue.type(); }

    friend bool operator==(any const & left, any const & right) {
        if (left.empty() || right.empty()) {
            return left.empty() && right.empty();
        }
        return left.type() == right.type() && left.fEqual(left.fValue, right.fValue);
    }

    /// Null unless a `T` is held. Valid until the `any` changes.
    template <class T> [[nodiscard]] T const * get() const noexcept { return std::any_cast<T>(&fValue); }

private:
    template <class T> static bool equalAs(std::any const & left, std::any const & right) {
        if constexpr (requires(T const & value) {
                          { value == value } -> std::convertible_to<bool>;
                      }) {
            return *std::any_cast<T>(&left) == *std::any_cast<T>(&right);
        } else {
            return false;
        }
    }

    std::any fValue;
    bool (*fEqual)(std::any const &, std::any const &) = nullptr;
};

/// A copy of the value or, with a reference type, the value itself. Throws `bad_any_cast` if it is of another type.
template <class T> [[nodiscard]] T any_cast(any const & value) {
    auto const * const held = value.get<std::remove_cvref_t<T>>();
    if (held == nullptr) {
        throw bad_any_cast();
    }
    return static_cast<T>(*held);
}

} // namespace HASP
