#pragma once

#include <ZEL/base/SoleOwner.h>

#include <concepts>
#include <utility>

namespace ZEL::internal {

/// An object that is handed over by a smart pointer of any kind, which keeps it alive from then on.
///
/// For the public operations that take a `std::shared_ptr`: they need not name it, so programs that have none do not
/// pay for `<memory>`.
template <class T> class HandedOver {
public:
    class Keeper {
    public:
        virtual ~Keeper() = default;

    protected:
        Keeper() = default;
        Keeper(Keeper const &) = delete;
        Keeper & operator=(Keeper const &) = delete;
    };

    template <class Pointer>
    requires requires(Pointer const & pointer) {
        typename Pointer::element_type;
        { pointer.get() } -> std::convertible_to<T *>;
    }
    HandedOver(Pointer pointer) : fObject(pointer.get()), fKeeper(new KeeperOf<Pointer>(std::move(pointer))) {}

    [[nodiscard]] T * object() const noexcept { return fObject; }
    /// What keeps the object, from here on the caller's.
    [[nodiscard]] Keeper * release() noexcept { return fKeeper.release(); }

private:
    template <class Pointer> class KeeperOf final : public Keeper {
    public:
        explicit KeeperOf(Pointer && pointer) : fPointer(std::move(pointer)) {}

    private:
        Pointer fPointer;
    };

    T * fObject;
    SoleOwner<Keeper> fKeeper;
};

} // namespace ZEL::internal
