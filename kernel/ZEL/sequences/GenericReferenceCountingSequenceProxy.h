#pragma once

#include <ZEL/sequences/ForwardingSequence.h>

#include <memory>

namespace ZEL::Generic {

/// Lets a storage that stands alone, such as the list of a query's results, live by its handles: owns the storage and
/// passes everything on to it.
class ZEL_API GenericReferenceCountingSequenceProxy final : public ForwardingSequence {
public:
    /// Takes a storage into ownership; on a body that counts itself it holds a count. Throws the NULL text on a null
    /// handle.
    explicit GenericReferenceCountingSequenceProxy(SequenceHandle const & wrapped) : ForwardingSequence(wrapped) {}
    ~GenericReferenceCountingSequenceProxy() override {
        // To a storage the count that is given up means nothing, so it goes here, and after that.
        bool const isCounted = dynamic_cast<SequenceProxy const *>(fWrapped.get()) != nullptr;
        std::unique_ptr<SequenceIntf> const storage(isCounted ? nullptr : fWrapped.get());
        fWrapped = nullptr;
    }
};

} // namespace ZEL::Generic
