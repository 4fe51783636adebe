#pragma once

#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/base/Exception.h>
#include <ZEL/base/GiveBackCount.h>
#include <ZEL/deviants/Deviant.h>

#include <concepts>
#include <type_traits>
#include <utility>

namespace ZEL {

class ImmutableModel;

/// Handle on a counted body: a pointer and the deviant through which the body is seen.
///
/// `T` is a pointer to a body interface. A handle owns one count on its body; should it be gone, the handle ends all the
/// same. Handles compare by body alone. Assignment
/// between two handles on the same body leaves the deviant of the left side as it was, on purpose: use `setDeviant`
/// to change a handle's deviant, and `rebind` of the object handles to take over both. A handle's constness says nothing
/// of the body.
template <class T> class RefBase {
public:
    using BodyInterface = std::remove_const_t<std::remove_pointer_t<T>>;

    RefBase() noexcept = default;
    RefBase(BodyInterface const * body, Deviant deviant) : fBody(const_cast<BodyInterface *>(body)), fDeviant(deviant) {
        take(fBody);
    }
    RefBase(RefBase const & other) : fBody(other.fBody), fDeviant(other.fDeviant) { take(fBody); }
    RefBase(RefBase && other) noexcept : fBody(other.fBody), fDeviant(other.fDeviant) { other.fBody = nullptr; }
    constexpr ~RefBase() { release(fBody); } // so that there are constants with null handles

    RefBase & operator=(RefBase const & other) { // NOLINT(bugprone-unhandled-self-assignment): the bodies are compared
        if (fBody != other.fBody) {
            // The new body first: giving up the old one may be what keeps the new one alive.
            take(other.fBody);
            BodyInterface * const old = fBody;
            fBody = other.fBody;
            fDeviant = other.fDeviant;
            release(old);
        }
        return *this;
    }
    RefBase & operator=(RefBase && other) noexcept {
        if (fBody != other.fBody) {
            BodyInterface * const old = fBody;
            fBody = other.fBody;
            other.fBody = nullptr;
            fDeviant = other.fDeviant;
            release(old);
        }
        return *this;
    }

    [[nodiscard]] bool isValid() const { return fBody != nullptr; }
    /// As `isValid`, for conditions: `if (handle)`.
    explicit operator bool() const { return fBody != nullptr; }
    /// Throws "Cannot access NULL ref. Use isValid() before calling methods" on a null handle.
    [[nodiscard]] BodyInterface * getImplementation() const {
        if (fBody == nullptr) [[unlikely]] {
            raiseNullReference();
        }
        return fBody;
    }
    [[nodiscard]] BodyInterface * getImplementationWithoutAssert() const noexcept { return fBody; }
    [[nodiscard]] Deviant getDeviant() const noexcept { return fDeviant; }
    void setDeviant(Deviant deviant) const noexcept { fDeviant = deviant; }

protected:
    /// As `getImplementation`, for an operation that is a template by its result: what is called of the body is then
    /// looked at where the operation is called, and only there its result must be complete.
    template <class Result> [[nodiscard]] BodyInterface * implementationFor() const { return getImplementation(); }
    [[nodiscard]] BodyInterface * getImpl() const noexcept { return fBody; }

private:
    static void take(BodyInterface * body) {
        if (body != nullptr) {
            body->incRef();
        }
    }
    static constexpr void release(BodyInterface * body) noexcept {
        if (body != nullptr) {
            internal::giveBackCount(*body);
        }
    }

    BodyInterface * fBody = nullptr;
    mutable Deviant fDeviant;
};

/// Comparison of handles on any two interfaces, by the address of the one object behind them.
template <class H>
concept BodyHandle = requires(H const & h) {
    typename H::BodyInterface;
    h.getImplementationWithoutAssert();
};

} // namespace ZEL
