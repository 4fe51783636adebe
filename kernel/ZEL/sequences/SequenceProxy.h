#pragma once

#include <ZEL/sequences/SequenceIntf.h>
#include <ZEL/sequences/ShortLived.h>

#include <cstdint>

namespace ZEL::Generic {

/// A sequence that lives by the count of its handles. `numRef` stays 0: the count is private.
class ZEL_API SequenceProxy : public SequenceIntf, public internal::ShortLived {
public:
    /// Throws "An Internal Error has occurred" on a negative count.
    void incRef() override;
    /// Deletes the sequence at 0; throws "An Internal Error has occurred" below it.
    void decRef() override;

protected:
    SequenceProxy() = default;
    SequenceProxy(SequenceProxy const &) = delete;
    SequenceProxy & operator=(SequenceProxy const &) = delete;

private:
    std::int32_t fCount = 0;
};

} // namespace ZEL::Generic
