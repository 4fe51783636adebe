#pragma once

#include <ZEL/deviants/ObjectIntf.h>
#include <ZEL/values/RefBase.h>

#include <compare>
#include <concepts>
#include <cstddef>
#include <string_view>

namespace ZEL {

namespace NSInterface {
class ValueObjectIntf;
} // namespace NSInterface

namespace internal {

/// Whether `Derived` is `Base` or a class below it. Of `std::derived_from` the part that can differ here: its check of
/// access and ambiguity is made anew for each class, and every program pays for it with each handle class it sees.
template <class Derived, class Base>
concept KindOf = __is_base_of(Base, Derived);

/// A handle class on an object, of any interface.
template <class H>
concept ObjectHandleType = requires {
    typename H::BodyInterface;
}
&&KindOf<typename H::BodyInterface, NSInterface::ObjectIntf>;

/// One that compares by the object and not by a value in it.
template <class H>
concept IdentityHandleType = ObjectHandleType<H> && !KindOf<typename H::BodyInterface, NSInterface::ValueObjectIntf>;

/// A handle class with write operations.
template <class H>
concept MutableHandleType = ObjectHandleType<H> && requires {
    typename H::ImmutableForm;
};

/// Handles whose body is an `I` by its static type: they convert implicitly.
template <class H, class I>
concept HandleOf = ObjectHandleType<H> && KindOf<typename H::BodyInterface, I>;

/// A handle that goes where an `H` is expected.
template <class T, class H>
concept HandleLike = std::convertible_to<T const &, H const &>;

} // namespace internal

/// Shape of every `ImmutableX` handle on an object with interface `I`.
///
/// Handles on derived interfaces convert implicitly. A handle on any other interface is narrowed by the explicit
/// constructor: the body goes through `cast`, and a body of another class makes a null handle with a null deviant.
template <class I> class ObjectHandle : public RefBase<I *> {
public:
    ObjectHandle() noexcept = default;
    ObjectHandle(I const * body, Deviant deviant) : RefBase<I *>(body, deviant) {}

    template <class H>
    requires(internal::HandleOf<H, I> && !internal::KindOf<H, ObjectHandle>) ObjectHandle(H const & other)
        : RefBase<I *>(other.getImplementationWithoutAssert(), other.getDeviant()) {}

    template <class H>
    requires(internal::ObjectHandleType<H> && !internal::HandleOf<H, I>) explicit ObjectHandle(H const & other)
        : ObjectHandle(narrow(other.getImplementationWithoutAssert()), other.getDeviant()) {}

    /// Whether the body exists in the handle's deviant. Never throws.
    [[nodiscard]] bool isValid() const {
        return this->getImpl() != nullptr && this->getImpl()->deviant_isValid(this->getDeviant());
    }
    /// As `isValid`, for conditions: `if (handle)`.
    explicit operator bool() const { return isValid(); }

    /// Takes over the body and the deviant of `other`. An assignment leaves the deviant as it is if the body is the same.
    void rebind(ObjectHandle const & other) {
        *this = other;
        this->setDeviant(other.getDeviant());
    }

    [[nodiscard]] static std::size_t getInterfaceByteSize() noexcept { return sizeof(ObjectHandle); }

private:
    struct Narrowed {
        I * body;
    };
    static Narrowed narrow(NSInterface::ObjectIntf * body) {
        return {body == nullptr ? nullptr : static_cast<I *>(body->cast(I::classInfo()))};
    }
    ObjectHandle(Narrowed narrowed, Deviant deviant)
        : RefBase<I *>(narrowed.body, narrowed.body == nullptr ? Deviant() : deviant) {}
};

/// Shape of every `X` handle: the read operations of `Immutable`, and constructors from other writing handles only.
template <class Immutable> class MutableHandle : public Immutable {
public:
    using ImmutableForm = Immutable;
    using BodyInterface = typename Immutable::BodyInterface;

    MutableHandle() noexcept = default;
    MutableHandle(BodyInterface * body, Deviant deviant) : Immutable(body, deviant) {}

    template <class H>
    requires(internal::MutableHandleType<H> && internal::HandleOf<H, BodyInterface> &&
             !internal::KindOf<H, MutableHandle>) MutableHandle(H const & other)
        : Immutable(other.getImplementationWithoutAssert(), other.getDeviant()) {}

    template <class H>
    requires(internal::MutableHandleType<H> &&
             !internal::HandleOf<H, BodyInterface>) explicit MutableHandle(H const & other)
        : Immutable(other) {}

    /// Takes over the body and the deviant of `other`. An assignment leaves the deviant as it is if the body is the same.
    void rebind(MutableHandle const & other) { Immutable::rebind(other); }
};

/// Handles compare by the address of the object behind them, by whatever road they were converted.
template <internal::ObjectHandleType A, internal::ObjectHandleType B>
bool operator==(A const & a, B const & b) noexcept {
    return static_cast<NSInterface::ObjectIntf const *>(a.getImplementationWithoutAssert()) ==
           static_cast<NSInterface::ObjectIntf const *>(b.getImplementationWithoutAssert());
}
template <internal::ObjectHandleType A, internal::ObjectHandleType B>
bool operator!=(A const & a, B const & b) noexcept {
    return !(a == b);
}
template <internal::ObjectHandleType A, internal::ObjectHandleType B>
bool operator<(A const & a, B const & b) noexcept {
    // Any addresses, in the order of `<compare>`: `std::less` takes all of `<functional>`. As plain addresses, because
    // for pointers to this library's classes its own comparisons are looked up as well.
    NSInterface::ObjectIntf const * const left = a.getImplementationWithoutAssert();
    NSInterface::ObjectIntf const * const right = b.getImplementationWithoutAssert();
    // NOLINTNEXTLINE(modernize-use-nullptr): an ordering is compared with 0
    return std::compare_three_way()(static_cast<void const *>(left), static_cast<void const *>(right)) < 0;
}
template <internal::ObjectHandleType A, internal::ObjectHandleType B>
bool operator>(A const & a, B const & b) noexcept {
    return b < a;
}
template <internal::ObjectHandleType A, internal::ObjectHandleType B>
bool operator<=(A const & a, B const & b) noexcept {
    return !(b < a);
}
template <internal::ObjectHandleType A, internal::ObjectHandleType B>
bool operator>=(A const & a, B const & b) noexcept {
    return !(a < b);
}

} // namespace ZEL

/// By the object behind the handle, as handles compare: the deviant does not count.
template <ZEL::internal::IdentityHandleType H> struct std::hash<H> {
    [[nodiscard]] std::size_t operator()(H const & handle) const noexcept {
        return std::hash<ZEL::NSInterface::ObjectIntf const *>()(handle.getImplementationWithoutAssert());
    }
};
