#include <ZEL/base/Exception.h>
#include <ZEL/sequences/SequenceProxy.h>

namespace ZEL::Generic {

void SequenceProxy::incRef() {
    if (fCount < 0) {
        raiseAnInternalError();
    }
    ++fCount;
}

void SequenceProxy::decRef() {
    if (--fCount < 0) {
        raiseAnInternalError();
    }
    if (fCount == 0) {
        delete this;
    }
}

} // namespace ZEL::Generic
