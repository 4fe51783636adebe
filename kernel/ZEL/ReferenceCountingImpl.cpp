#include <ZEL/Exception.h>
#include <ZEL/ReferenceCountingImpl.h>

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
