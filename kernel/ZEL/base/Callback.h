#pragma once

#include <ZEL/Export.h>

#include <cstddef>
#include <new>
#include <type_traits>
#include <utility>

namespace ZEL {

namespace internal {

/// Where a `Callback` keeps its function, whatever its type: small plain ones inside, others on the heap.
class ZEL_API CallbackRoom {
protected:
    /// How a function on the heap is copied and ends.
    struct Heap {
        void * (*copy)(void const * function);
        void (*destroy)(void * function) noexcept;
    };
    static constexpr std::size_t kBytes = 3 * sizeof(void *);

    CallbackRoom() noexcept = default;
    CallbackRoom(CallbackRoom const & other);
    CallbackRoom(CallbackRoom && other) noexcept;
    CallbackRoom & operator=(CallbackRoom const &) = delete;
    void swap(CallbackRoom & other) noexcept;
    ~CallbackRoom() {
        if (fHeap != nullptr) {
            fHeap->destroy(function());
        }
    }

    /// Takes what was made by `new`.
    void keep(void * function, Heap const & heap) noexcept {
        ::new (inside()) void *(function);
        fHeap = &heap;
    }
    [[nodiscard]] void * inside() const noexcept { return fBytes; }
    [[nodiscard]] void * function() const noexcept {
        return fHeap == nullptr ? inside() : *std::launder(static_cast<void **>(inside()));
    }

    /// Throws `boost::bad_function_call`.
    [[noreturn]] static void raiseEmpty();

private:
    Heap const * fHeap = nullptr; ///< null for one inside, which is its bytes
    alignas(void *) mutable std::byte fBytes[kBytes] = {};
};

/// Of functions of any signature.
struct CallbackBase {};

/// Of the classes of objects that can be called, those that hold a function of any type.
template <class F>
concept FunctionHolder = std::is_base_of_v<CallbackBase, F> || requires(F const & function) {
    function.target_type();
};

/// Whether there is nothing to call: a null pointer, or another library's empty holder of a function.
template <class F> [[nodiscard]] bool isEmptyFunction(F const & function) {
    if constexpr (std::is_pointer_v<F> || std::is_member_pointer_v<F> || FunctionHolder<F>) {
        return !function;
    } else {
        return false;
    }
}

/// Calls a function, or a member of the first argument, which may be a pointer or another reference to the object.
template <class F, class... A> decltype(auto) called(F & function, A &&... arguments) {
    return function(std::forward<A>(arguments)...);
}
template <class M, class C, class Object, class... A>
decltype(auto) called(M C::*member, Object && object, A &&... arguments) {
    if constexpr (!std::is_same_v<C, std::remove_cvref_t<Object>> &&
                  !std::is_base_of_v<C, std::remove_cvref_t<Object>>) {
        if constexpr (requires { *object; }) {
            return called(member, *object, std::forward<A>(arguments)...);
        } else {
            return called(member, object.get(), std::forward<A>(arguments)...);
        }
    } else if constexpr (std::is_function_v<M>) {
        return (std::forward<Object>(object).*member)(std::forward<A>(arguments)...);
    } else {
        return std::forward<Object>(object).*member;
    }
}

} // namespace internal

/// A function that one part hands to another to be called later: a lambda, a pointer, a bound member, any object that
/// can be called and copied.
///
/// For public headers: what they need of `std::function` without what `<functional>` costs every program. Converts to
/// it, as it does from it. A call of an empty one throws `boost::bad_function_call`.
template <class Signature> class Callback;

template <class R, class... A> class Callback<R(A...)> : public internal::CallbackBase, private internal::CallbackRoom {
public:
    using result_type = R;

    Callback() noexcept = default;
    Callback(std::nullptr_t) noexcept {}
    Callback(Callback const &) = default;
    Callback(Callback && other) noexcept : CallbackRoom(static_cast<CallbackRoom &&>(other)), fCall(other.fCall) {
        other.fCall = nullptr;
    }
    /// Empty if `function` is.
    template <class F>
    requires(!std::is_same_v<F, Callback> && std::is_invocable_r_v<R, F &, A...> && std::is_copy_constructible_v<F>)
        Callback(F function) {
        if (internal::isEmptyFunction(function)) {
            return;
        }
        if constexpr (std::is_trivially_copyable_v<F> && sizeof(F) <= kBytes && alignof(F) <= alignof(void *)) {
            ::new (inside()) F(std::move(function));
        } else {
            static constexpr Heap heap{
                [](void const * other) -> void * { return new F(*static_cast<F const *>(other)); },
                [](void * other) noexcept { delete static_cast<F *>(other); }};
            keep(new F(std::move(function)), heap);
        }
        fCall = &call<F>;
    }

    ~Callback() = default;
    Callback & operator=(Callback other) noexcept {
        swap(other);
        return *this;
    }

    [[nodiscard]] bool empty() const noexcept { return fCall == nullptr; }
    explicit operator bool() const noexcept { return fCall != nullptr; }
    void clear() noexcept { *this = Callback(); }
    void swap(Callback & other) noexcept {
        CallbackRoom::swap(other);
        std::swap(fCall, other.fCall);
    }

    R operator()(A... arguments) const {
        if (fCall == nullptr) [[unlikely]] {
            raiseEmpty();
        }
        return fCall(function(), std::forward<A>(arguments)...);
    }

    friend bool operator==(Callback const & callback, std::nullptr_t) noexcept { return callback.empty(); }

private:
    template <class F> static R call(void * function, A &&... arguments) {
        F & target = *std::launder(static_cast<F *>(function));
        if constexpr (std::is_void_v<R>) {
            internal::called(target, std::forward<A>(arguments)...);
        } else {
            return internal::called(target, std::forward<A>(arguments)...);
        }
    }

    R (*fCall)(void * function, A &&... arguments) = nullptr;
};

} // namespace ZEL
