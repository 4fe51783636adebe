#include <ZEL/sequences/GenericNullSequence.h>

namespace ZEL::Generic {

// It lives as long as the process and would be in every list of leaked objects.
GenericNullSequence::GenericNullSequence() { ZEL::internal::leaveOutOfLiveObjects(typeid(GenericNullSequence)); }

GenericNullSequence * GenericNullSequence::getSingleton() {
    static GenericNullSequence sequence;
    return &sequence;
}

} // namespace ZEL::Generic
