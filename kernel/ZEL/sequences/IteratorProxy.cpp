#include <ZEL/base/Exception.h>
#include <ZEL/sequences/IteratorProxy.h>

namespace ZEL::Generic {

void IteratorProxy::incRef() {
    if (fCount < 0) {
        raiseAnInternalError();
    }
    ++fCount;
}

void IteratorProxy::decRef() {
    if (--fCount < 0) {
        raiseAnInternalError();
    }
    if (fCount == 0) {
        delete this;
    }
}

} // namespace ZEL::Generic
