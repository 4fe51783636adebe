#pragma once

#include <ZEL/base/ReferenceCountingIntf.h>

namespace ZEL {

/// Plain count for bodies that no model owns. The count is neither copied nor assigned: a copy is a new body.
class ZEL_API ReferenceCountingImpl : public virtual ReferenceCountingIntf {
public:
    /// Throws "An Internal Error has occurred" if the count is negative.
    void incRef() override;
    /// Deletes the body when the count reaches 0; throws "An Internal Error has occurred" below that.
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
