#include <ZEL/sequences/GenericReferenceCountingSequenceProxy.h>

namespace ZEL::Generic {

GenericReferenceCountingSequenceProxy::~GenericReferenceCountingSequenceProxy() {
    // To a storage the count that is given up means nothing, so it goes here, and after that.
    bool const isCounted = dynamic_cast<SequenceProxy const *>(fWrapped.get()) != nullptr;
    std::unique_ptr<SequenceIntf> const storage(isCounted ? nullptr : fWrapped.get());
    fWrapped = nullptr;
}

} // namespace ZEL::Generic
