#include <ZEL/base/Exception.h>
#include <ZEL/base/ReferenceCountingImpl.h>

namespace ZEL {

void ReferenceCountingImpl::incRef() {
    if (fCount < 0) {
        raiseAnInternalError();
    }
    ++fCount;
}

void ReferenceCountingImpl::decRef() {
    --fCount;
    if (fCount < 0) {
        raiseAnInternalError();
    }
    if (fCount == 0) {
        delete this;
    }
}

int ReferenceCountingImpl::numRef() { return fCount; }

} // namespace ZEL
