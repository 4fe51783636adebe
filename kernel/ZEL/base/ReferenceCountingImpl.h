#pragma once

#include <ZEL/base/ReferenceCountingIntf.h>

namespace ZEL {

/// Plain count for bodies that no model owns. The count is not copied and not assigned: a copy is a new body.
class ZEL_API ReferenceCountingImpl : public virtual ReferenceCountingIntf {
public:
    /// Throws "An Internal Error has occurred" on a negative count.
    void incRef() override;
    /// Deletes the body at 0; throws "An Internal Error has occurred" below it.
    void decRef() override;
    int numRef() override;

protected:
    ReferenceCountingImpl() = default;
    ReferenceCountingImpl(ReferenceCountingImpl const &) : ReferenceCountingIntf(), fCount(0) {}
    ReferenceCountingImpl & operator=(ReferenceCountingImpl const &) { return *this; }

private:
    std::int32_t fCount = 0;
};

} // namespace ZEL
