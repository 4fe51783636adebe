#pragma once

#include <ZEL/sequences/CountedByHandles.h>
#include <ZEL/sequences/SequenceIntf.h>

namespace ZEL::Generic {

/// A sequence that lives by the count of its handles.
class ZEL_API SequenceProxy : public CountedByHandles<SequenceIntf> {
protected:
    SequenceProxy() = default;
    SequenceProxy(SequenceProxy const &) = delete;
};

} // namespace ZEL::Generic
