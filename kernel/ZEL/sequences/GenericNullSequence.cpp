#include <ZEL/sequences/GenericNullSequence.h>

namespace ZEL::Generic {

// The one object would stand in every list of what is alive.
GenericNullSequence::GenericNullSequence() { ZEL::internal::leaveOutOfLiveObjects(typeid(GenericNullSequence)); }

GenericNullSequence * GenericNullSequence::getSingleton() {
    static GenericNullSequence sequence;
    return &sequence;
}

Ref GenericNullSequence::generic_at(Deviant, int) const { return Ref(); }

Ref GenericNullSequence::generic_front(Deviant) const { return Ref(); }

Ref GenericNullSequence::generic_back(Deviant) const { return Ref(); }

std::unique_ptr<IteratorIntf> GenericNullSequence::generic_begin(Deviant) const { return std::make_unique<Iterator>(); }

std::unique_ptr<IteratorIntf> GenericNullSequence::generic_end(Deviant) const { return std::make_unique<Iterator>(); }

void GenericNullSequence::generic_clear(Deviant) {}

int GenericNullSequence::generic_size(Deviant) const { return 0; }

std::unique_ptr<IteratorIntf> GenericNullSequence::generic_insert(Deviant, IteratorIntf const *, Ref) {
    return std::make_unique<Iterator>();
}

void GenericNullSequence::generic_insert(Deviant, int, Ref) {}

void GenericNullSequence::generic_erase(Deviant, int) {}

std::unique_ptr<IteratorIntf> GenericNullSequence::generic_erase(Deviant, IteratorIntf const *, IteratorIntf const *) {
    return std::make_unique<Iterator>();
}

std::unique_ptr<IteratorIntf> GenericNullSequence::generic_erase(Deviant, IteratorIntf const *) {
    return std::make_unique<Iterator>();
}

void GenericNullSequence::generic_pop_back(Deviant) {}

void GenericNullSequence::generic_pop_front(Deviant) {}

void GenericNullSequence::generic_push_back(Deviant, Ref) {}

void GenericNullSequence::generic_push_front(Deviant, Ref) {}

void GenericNullSequence::generic_replace(Deviant, int, Ref) {}

bool GenericNullSequence::generic_contains(Deviant, Ref) const { return false; }

char const * GenericNullSequence::generic_getOrcaName(bool, bool, char const * fallback) const { return fallback; }

Ref GenericNullSequence::Iterator::current(Deviant) const { return Ref(); }

void GenericNullSequence::Iterator::next(Deviant) {}

void GenericNullSequence::Iterator::previous(Deviant) {}

std::unique_ptr<IteratorIntf> GenericNullSequence::Iterator::clone() const { return std::make_unique<Iterator>(); }

bool GenericNullSequence::Iterator::equal(IteratorIntf const *) const { return true; }

} // namespace ZEL::Generic
