#include <ZEL/sequences/GenericNullSequence.h>

namespace ZEL::Generic {

// The one object would stand in every list of what is alive.
GenericNullSequence::GenericNullSequence() { ZEL::internal::leaveOutOfLiveObjects(typeid(GenericNullSequence)); }

GenericNullSequence * GenericNullSequence::getSingleton() {
    static GenericNullSequence sequence;
    return &sequence;
}

} // namespace ZEL::Generic
