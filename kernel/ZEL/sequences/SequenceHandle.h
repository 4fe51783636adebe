#pragma once

#include <ZEL/sequences/SequenceIntf.h>
#include <ZEL/sequences/SequenceProxy.h>

#include <concepts>
#include <utility>

namespace ZEL::Generic {

/// The owner of a sequence's body, such as `std::unique_ptr`.
template <class Owner>
concept BodyOwner = std::derived_from<typename Owner::element_type, SequenceIntf> && requires(Owner & owner) {
    owner.release();
};

/// What the handles on sequences are without the type of their elements: a counted body and the deviant that is passed
/// to each of its operations.
///
/// Copies are handles on the same body. All but `isValid` and the plain accessors throw "Cannot access NULL ref. Use
/// isValid() before calling methods" on a null handle.
class ZEL_API SequenceHandle {
public:
    using size_type = int;

    SequenceHandle() noexcept = default;
    SequenceHandle(SequenceIntf * body, Deviant deviant) : fBody(body), fDeviant(deviant) {}
    /// Takes the body into ownership: it goes with the last handle. A storage, which nobody counts, gets a counted body
    /// around it, which `getImplementation` returns.
    template <BodyOwner Owner> SequenceHandle(Owner body, Deviant deviant) : fDeviant(deviant) {
        if constexpr (std::derived_from<typename Owner::element_type, SequenceProxy>) {
            fBody = body.release();
        } else {
            fBody = counted(body.release(), deviant);
        }
    }

    [[nodiscard]] bool isValid() const noexcept { return fBody.get() != nullptr; }
    [[nodiscard]] Deviant getDeviant() const noexcept { return fDeviant; }
    void setDeviant(Deviant deviant) const noexcept { fDeviant = deviant; }
    [[nodiscard]] SequenceIntf * getImplementation() const { return &body(); }
    [[nodiscard]] SequenceIntf * getImplementationWithoutAssert() const noexcept { return fBody.get(); }

    /// Linear for a view that hides elements.
    [[nodiscard]] int size() const { return body().generic_size(fDeviant); }
    [[nodiscard]] bool empty() const;

    /// Handles are equal that share their body.
    friend bool operator==(SequenceHandle const & a, SequenceHandle const & b) noexcept { return a.fBody == b.fBody; }

protected:
    [[nodiscard]] SequenceIntf & body() const {
        if (fBody.get() == nullptr) [[unlikely]] {
            failOnNull();
        }
        return *fBody;
    }
    [[nodiscard]] SequencePtr const & pointer() const noexcept { return fBody; }

private:
    [[noreturn]] static void failOnNull();
    /// The body, which it takes into ownership, or a counted one around it.
    [[nodiscard]] static SequenceIntf * counted(SequenceIntf * body, Deviant deviant);

    SequencePtr fBody;
    mutable Deviant fDeviant;
};

} // namespace ZEL::Generic
