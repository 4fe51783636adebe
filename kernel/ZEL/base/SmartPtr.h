#pragma once

#include <utility>

namespace ZEL::Generic {

/// Counting of `SmartPtr` through the object's own `incRef` and `decRef`.
struct ReferenceCounted {
    template <class T> static void retain(T * object) { object->incRef(); }
    template <class T> static void release(T * object) { object->decRef(); }
};

/// One pointer that holds one count on its object. Assignment from the same pointer does nothing; a move costs no
/// count. An object whose counting operations are empty, such as a storage sequence, is thereby not owned.
template <class T, class Counting> class SmartPtr {
public:
    SmartPtr() noexcept = default;
    explicit SmartPtr(T * object) : fObject(object) { retain(fObject); }
    SmartPtr(SmartPtr const & other) noexcept(noexcept(Counting::retain(other.fObject))) : fObject(other.fObject) {
        retain(fObject);
    }
    SmartPtr(SmartPtr && other) noexcept : fObject(other.fObject) { other.fObject = nullptr; }
    constexpr ~SmartPtr() { release(fObject); } // so that there are constants with null pointers

    // NOLINTNEXTLINE(bugprone-unhandled-self-assignment): the bodies are compared
    SmartPtr & operator=(SmartPtr const & other) noexcept(kCountsWithoutThrowing<T>) { return *this = other.fObject; }
    // NOLINTNEXTLINE(performance-noexcept-move-constructor): giving up a count may throw
    SmartPtr & operator=(SmartPtr && other) noexcept(kCountsWithoutThrowing<T>) {
        if (fObject != other.fObject) {
            T * const old = fObject;
            fObject = other.fObject;
            other.fObject = nullptr;
            release(old);
        }
        return *this;
    }
    SmartPtr & operator=(T * object) noexcept(kCountsWithoutThrowing<T>) {
        if (fObject != object) {
            // The new one first: giving up the old one may be what keeps the new one alive.
            retain(object);
            T * const old = fObject;
            fObject = object;
            release(old);
        }
        return *this;
    }

    [[nodiscard]] T * get() const noexcept { return fObject; }
    [[nodiscard]] T * operator->() const noexcept { return fObject; }
    [[nodiscard]] T & operator*() const noexcept { return *fObject; }
    explicit operator bool() const noexcept { return fObject != nullptr; }

    friend bool operator==(SmartPtr const & a, SmartPtr const & b) noexcept { return a.fObject == b.fObject; }

private:
    // A template, so that it is asked for only when `Counting` is complete.
    template <class U>
    static constexpr bool kCountsWithoutThrowing =
        noexcept(Counting::retain(std::declval<U *>())) && noexcept(Counting::release(std::declval<U *>()));

    static void retain(T * object) {
        if (object != nullptr) {
            Counting::retain(object);
        }
    }
    static constexpr void release(T * object) {
        if (object != nullptr) {
            Counting::release(object);
        }
    }

    T * fObject = nullptr;
};

} // namespace ZEL::Generic
