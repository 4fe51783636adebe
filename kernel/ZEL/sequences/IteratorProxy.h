#pragma once

#include <ZEL/sequences/IteratorIntf.h>
#include <ZEL/sequences/ShortLived.h>

#include <cstdint>

namespace ZEL::Generic {

/// An iterator with a count of its own, by the rules of `SequenceProxy`. The owner of an iterator holds it by
/// `std::unique_ptr`; the count serves those who share one.
class ZEL_API IteratorProxy : public IteratorIntf, public internal::ShortLived {
public:
    /// Throws "An Internal Error has occurred" on a negative count.
    void incRef() override;
    /// Deletes the iterator at 0; throws "An Internal Error has occurred" below it.
    void decRef() override;

protected:
    IteratorProxy() = default;
    IteratorProxy(IteratorProxy const & other) : IteratorIntf(other) {} ///< a copy is a new object: its count is 0
    IteratorProxy & operator=(IteratorProxy const &) = delete;

private:
    std::int32_t fCount = 0;
};

} // namespace ZEL::Generic
