#pragma once

#include <ZEL/sequences/CountedByHandles.h>
#include <ZEL/sequences/IteratorIntf.h>

namespace ZEL::Generic {

/// An iterator with a count of its own. The owner of an iterator holds it by `IteratorPtr`; the count serves those who
/// share one.
class ZEL_API IteratorProxy : public CountedByHandles<IteratorIntf> {};

/// What iterators do alike. `Kind` is the class that derives from this one and makes it a friend; its
/// `bool isAt(Kind const & other) const` says whether both stand at one place.
template <class Kind> class ZEL_API IteratorOf : public IteratorProxy {
public:
    [[nodiscard]] IteratorPtr clone() const override { return IteratorPtr(new Kind(self())); }
    /// False for an iterator of another class.
    [[nodiscard]] bool equal(IteratorIntf const * other) const override {
        auto const * const that = dynamic_cast<Kind const *>(other);
        return that != nullptr && self().isAt(*that);
    }

private:
    [[nodiscard]] Kind const & self() const noexcept { return static_cast<Kind const &>(*this); }
};

/// The iterator as one of the class that a sequence makes. Throws "An Internal Error has occurred" for another.
template <class Iterator> Iterator const & ownIterator(IteratorIntf const * iterator) {
    auto const * const own = dynamic_cast<Iterator const *>(iterator);
    if (own == nullptr) {
        raiseAnInternalError();
    }
    return *own;
}

} // namespace ZEL::Generic
