#pragma once

#include <concepts>
#include <cstddef>
#include <utility>

namespace ZEL::internal {

/// Owns one object on the heap, or none, and deletes it at its end.
///
/// For the headers that every program includes: what they pass on of `std::unique_ptr` without what `<memory>` costs to
/// compile. It takes over what any such owner releases, also one of a derived class if `T` has a virtual destructor, so
/// callees still use `std::make_unique`.
template <class T> class SoleOwner {
public:
    SoleOwner() noexcept = default;
    SoleOwner(std::nullptr_t) noexcept {}
    explicit SoleOwner(T * object) noexcept : fObject(object) {}
    SoleOwner(SoleOwner && other) noexcept : fObject(other.release()) {}
    /// From another owner that is given up.
    template <class Owner>
    requires(!std::same_as<Owner, SoleOwner> && requires(Owner & owner) {
        typename Owner::element_type;
        { owner.release() } -> std::convertible_to<T *>;
    }) SoleOwner(Owner && other) // NOLINT(bugprone-forwarding-reference-overload): not this class, by the constraint
    noexcept : fObject(other.release()) {}
    ~SoleOwner() { delete fObject; }

    SoleOwner & operator=(SoleOwner && other) noexcept {
        SoleOwner taken(std::move(other)); // with the old object from here on
        T * const old = fObject;
        fObject = taken.fObject;
        taken.fObject = old;
        return *this;
    }

    [[nodiscard]] T * get() const noexcept { return fObject; }
    [[nodiscard]] T * operator->() const noexcept { return fObject; }
    [[nodiscard]] T & operator*() const noexcept { return *fObject; }
    explicit operator bool() const noexcept { return fObject != nullptr; }

    /// The object, which now belongs to the caller.
    [[nodiscard]] T * release() noexcept {
        T * const object = fObject;
        fObject = nullptr;
        return object;
    }
    void reset() noexcept { *this = SoleOwner(); }

    friend bool operator==(SoleOwner const & a, SoleOwner const & b) noexcept { return a.fObject == b.fObject; }
    friend bool operator==(SoleOwner const & a, std::nullptr_t) noexcept { return a.fObject == nullptr; }

private:
    T * fObject = nullptr;
};

/// Owns an array.
template <class T> class SoleOwner<T[]> {
public:
    SoleOwner() noexcept = default;
    explicit SoleOwner(T * array) noexcept : fArray(array) {}
    SoleOwner(SoleOwner && other) noexcept : fArray(std::exchange(other.fArray, nullptr)) {}
    ~SoleOwner() { delete[] fArray; }

    SoleOwner & operator=(SoleOwner && other) noexcept {
        SoleOwner taken(std::move(other)); // with the old array from here on
        swap(taken);
        return *this;
    }

    [[nodiscard]] T * get() const noexcept { return fArray; }
    [[nodiscard]] T & operator[](std::size_t index) const noexcept { return fArray[index]; }
    explicit operator bool() const noexcept { return fArray != nullptr; }
    void swap(SoleOwner & other) noexcept { std::swap(fArray, other.fArray); }
    void reset() noexcept { *this = SoleOwner(); }

private:
    T * fArray = nullptr;
};

} // namespace ZEL::internal
