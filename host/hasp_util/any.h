#pragma once

#include <hasp_util/Export.h>

#include <concepts>
#include <cstddef>
#include <new>
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
/// A value of up to 32 bytes that moves without a throw, a text among them, is in the `any` itself; others are on the
/// heap. What has been moved from is empty. Two are equal if both are empty, or if they hold equal values of the same
/// type. Values of a type without `==` equal nothing, not even themselves.
class HOST_API any {
public:
    any() noexcept : fOperations(nullptr) {}
    template <class T>
    requires(!std::same_as<std::remove_cvref_t<T>, any> && std::copy_constructible<std::decay_t<T>>)
        any(T && value) // NOLINT(bugprone-forwarding-reference-overload): the constraint leaves copies alone
        : fOperations(&Held<std::decay_t<T>>::operations) {
        Held<std::decay_t<T>>::make(fRoom, std::forward<T>(value));
    }
    /// A `T` made of the arguments where it is to be.
    template <class T, class... Arguments>
    explicit any(std::in_place_type_t<T> /*type*/, Arguments &&... arguments) : fOperations(&Held<T>::operations) {
        Held<T>::make(fRoom, std::forward<Arguments>(arguments)...);
    }
    any(any const & other) : fOperations(other.fOperations) {
        if (fOperations != nullptr) {
            fOperations->copy(other.fRoom, fRoom);
        }
    }
    any(any && other) noexcept : any() { take(other); }
    ~any() { destroy(); }

    any & operator=(any const & other) {
        if (this != &other) {
            *this = any(other); // before the old value goes: the copy may throw
        }
        return *this;
    }
    any & operator=(any && other) noexcept {
        if (this != &other) {
            destroy();
            take(other);
        }
        return *this;
    }

    [[nodiscard]] bool empty() const noexcept { return fOperations == nullptr; }
    /// `typeid(void)` when empty.
    [[nodiscard]] std::type_info const & type() const noexcept { return empty() ? typeid(void) : *fOperations->type; }

    friend bool operator==(any const & left, any const & right) {
        if (left.empty() || right.empty()) {
            return left.empty() && right.empty();
        }
        return left.type() == right.type() && left.fOperations->equal(left.fRoom, right.fRoom);
    }

    /// Null unless a `T` is held. Valid until the `any` changes.
    template <class T> [[nodiscard]] T const * get() const noexcept {
        // The table's address first; it may differ between libraries, the type does not.
        using Value = std::remove_cv_t<T>;
        if (fOperations == &Held<Value>::operations || (!empty() && *fOperations->type == typeid(T))) {
            return Held<Value>::in(fRoom);
        }
        return nullptr;
    }

private:
    static constexpr std::size_t kRoom = 32;
    static constexpr std::size_t kAlignment = 8;

    /// What there is to do with a value of one type. The room is that of an `any`.
    struct Operations {
        std::type_info const * type;
        void (*copy)(void const * from, void * to);
        void (*move)(void * from, void * to) noexcept; ///< ends what is left
        void (*destroy)(void * room) noexcept;         ///< null if there is nothing to do
        bool (*equal)(void const * left, void const * right);
    };

    /// A `T` in a room: the value itself, or the address of one that the room owns.
    template <class T> struct Held {
        static constexpr bool isInside =
            sizeof(T) <= kRoom && alignof(T) <= kAlignment && std::is_nothrow_move_constructible_v<T>;

        template <class... V> static void make(void * room, V &&... value) {
            if constexpr (isInside) {
                ::new (room) T(std::forward<V>(value)...);
            } else {
                ::new (room) T *(new T(std::forward<V>(value)...));
            }
        }
        static T * in(void * room) noexcept {
            if constexpr (isInside) {
                return std::launder(static_cast<T *>(room));
            } else {
                return *std::launder(static_cast<T **>(room));
            }
        }
        static T const * in(void const * room) noexcept { return in(const_cast<void *>(room)); }

        static void copy(void const * from, void * to) { make(to, *in(from)); }
        static void move(void * from, void * to) noexcept {
            T * const value = in(from);
            if constexpr (isInside) {
                ::new (to) T(std::move(*value));
                value->~T();
            } else {
                ::new (to) T *(value);
            }
        }
        static void destroy(void * room) noexcept {
            T * const value = in(room);
            if constexpr (isInside) {
                value->~T();
            } else {
                delete value;
            }
        }
        static bool equal(void const * left, void const * right) {
            if constexpr (requires(T const & value) {
                              { value == value } -> std::convertible_to<bool>;
                          }) {
                return *in(left) == *in(right);
            } else {
                return false;
            }
        }
        static constexpr Operations operations{
            &typeid(T), &copy, &move, isInside && std::is_trivially_destructible_v<T> ? nullptr : &destroy, &equal};
    };

    void destroy() noexcept {
        if (fOperations != nullptr && fOperations->destroy != nullptr) {
            fOperations->destroy(fRoom);
        }
    }
    /// The value of `other`, which is empty then. Nothing is held before.
    void take(any & other) noexcept {
        fOperations = other.fOperations;
        other.fOperations = nullptr;
        if (fOperations != nullptr) {
            fOperations->move(other.fRoom, fRoom);
        }
    }

    Operations const * fOperations; ///< null when empty
    alignas(kAlignment) std::byte fRoom[kRoom];
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
