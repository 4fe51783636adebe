#include <ZEL/base/Exception.h>
#include <ZEL/sequences/GenericReferenceCountingSequenceProxy.h>
#include <ZEL/sequences/SequenceHandle.h>

#include <memory>

namespace ZEL::Generic {

bool SequenceHandle::empty() const {
    SequenceIntf const & sequence = body();
    if (sequence.generic_isRandomAccess()) {
        return sequence.generic_size(fDeviant) == 0;
    }
    // A view may have to look at all its elements to count them, but at few to find the first.
    if (Place const first = sequence.generic_beginPlace(fDeviant); first.hasPart()) {
        return first == sequence.generic_endPlace(fDeviant);
    }
    return sequence.generic_begin(fDeviant)->equal(sequence.generic_end(fDeviant).get());
}

SequenceIntf * SequenceHandle::counted(SequenceIntf * body, Deviant deviant) {
    std::unique_ptr<SequenceIntf> own(body);
    if (own == nullptr || dynamic_cast<SequenceProxy const *>(body) != nullptr) {
        return own.release();
    }
    auto owner = std::make_unique<GenericReferenceCountingSequenceProxy>(SequenceHandle(body, deviant));
    static_cast<void>(own.release()); // the owner's now
    return owner.release();
}

void SequenceHandle::failOnNull() { raiseNullReference(); }

} // namespace ZEL::Generic
