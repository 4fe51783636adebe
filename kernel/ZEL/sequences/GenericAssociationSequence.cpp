#include <ZEL/sequences/GenericAssociationSequence.h>

#include <utility>

namespace ZEL::Generic {

GenericAssociationSequence::GenericAssociationSequence(SequenceHandle const & wrapped,
                                                       internal::PropertyDescriptor const * end, Owner owner, Hook hook)
    : fWrapped(wrapped.getImplementation()), fEnd(end), fOwner(std::move(owner)), fHook(hook) {}

// --- reads -----------------------------------------------------------------------------------------------------------

Ref GenericAssociationSequence::generic_at(Deviant deviant, int index) const {
    return fWrapped->generic_at(deviant, index);
}

Ref GenericAssociationSequence::generic_front(Deviant deviant) const { return fWrapped->generic_front(deviant); }

Ref GenericAssociationSequence::generic_back(Deviant deviant) const { return fWrapped->generic_back(deviant); }

std::unique_ptr<IteratorIntf> GenericAssociationSequence::generic_begin(Deviant deviant) const {
    return fWrapped->generic_begin(deviant);
}

std::unique_ptr<IteratorIntf> GenericAssociationSequence::generic_end(Deviant deviant) const {
    return fWrapped->generic_end(deviant);
}

int GenericAssociationSequence::generic_size(Deviant deviant) const { return fWrapped->generic_size(deviant); }

bool GenericAssociationSequence::generic_contains(Deviant deviant, Ref element) const {
    return fWrapped->generic_contains(deviant, std::move(element));
}

char const * GenericAssociationSequence::generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                             char const * fallback) const {
    return fWrapped->generic_getOrcaName(immutableSequence, immutableElement, fallback);
}

bool GenericAssociationSequence::generic_isRandomAccess() const { return fWrapped->generic_isRandomAccess(); }

std::unique_ptr<IteratorIntf> GenericAssociationSequence::generic_iteratorAt(Deviant deviant, int index) const {
    return fWrapped->generic_iteratorAt(deviant, index);
}

int GenericAssociationSequence::generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                              int count) const {
    return fWrapped->generic_fetch(deviant, index, bodies, count);
}

int GenericAssociationSequence::generic_indexOf(Deviant deviant, Ref element) const {
    return fWrapped->generic_indexOf(deviant, std::move(element));
}

bool GenericAssociationSequence::generic_isUnique() const { return fWrapped->generic_isUnique(); }

bool GenericAssociationSequence::generic_accepts(Deviant deviant, Ref const & element) const {
    return fWrapped->generic_accepts(deviant, element);
}

// --- writes; where the wrapped sequence refuses an element, it is left to raise its own text ---------------------------

void GenericAssociationSequence::generic_clear(Deviant deviant) {
    for (int i = 0, size = fWrapped->generic_size(deviant); i < size; ++i) {
        leaves(fWrapped->generic_at(deviant, i));
    }
    fWrapped->generic_clear(deviant);
}

std::unique_ptr<IteratorIntf> GenericAssociationSequence::generic_insert(Deviant deviant, IteratorIntf const * where,
                                                                         Ref element) {
    if (fWrapped->generic_accepts(deviant, element)) {
        enters(element);
    }
    return fWrapped->generic_insert(deviant, where, std::move(element));
}

void GenericAssociationSequence::generic_insert(Deviant deviant, int index, Ref element) {
    if (fWrapped->generic_accepts(deviant, element)) {
        enters(element);
    }
    fWrapped->generic_insert(deviant, index, std::move(element));
}

void GenericAssociationSequence::generic_erase(Deviant deviant, int index) {
    leaves(fWrapped->generic_at(deviant, index));
    fWrapped->generic_erase(deviant, index);
}

std::unique_ptr<IteratorIntf> GenericAssociationSequence::generic_erase(Deviant deviant, IteratorIntf const * first,
                                                                        IteratorIntf const * last) {
    if (first->position() <= last->position()) {
        for (auto iterator = first->clone(); !iterator->equal(last); iterator->next(deviant)) {
            leaves(iterator->current(deviant));
        }
    }
    return fWrapped->generic_erase(deviant, first, last);
}

std::unique_ptr<IteratorIntf> GenericAssociationSequence::generic_erase(Deviant deviant, IteratorIntf const * where) {
    leaves(where->current(deviant));
    return fWrapped->generic_erase(deviant, where);
}

void GenericAssociationSequence::generic_pop_back(Deviant deviant) {
    leaves(fWrapped->generic_back(deviant));
    fWrapped->generic_pop_back(deviant);
}

void GenericAssociationSequence::generic_pop_front(Deviant deviant) {
    leaves(fWrapped->generic_front(deviant));
    fWrapped->generic_pop_front(deviant);
}

void GenericAssociationSequence::generic_push_back(Deviant deviant, Ref element) {
    if (fWrapped->generic_accepts(deviant, element)) {
        enters(element);
    }
    fWrapped->generic_push_back(deviant, std::move(element));
}

void GenericAssociationSequence::generic_push_front(Deviant deviant, Ref element) {
    if (fWrapped->generic_accepts(deviant, element)) {
        enters(element);
    }
    fWrapped->generic_push_front(deviant, std::move(element));
}

void GenericAssociationSequence::generic_replace(Deviant deviant, int index, Ref element) {
    // A unique sequence does not take what it holds already, be it there or at another place: all links stay too.
    bool const isTaken = !fWrapped->generic_isUnique() || fWrapped->generic_indexOf(deviant, element) < 0;
    if (isTaken && fWrapped->generic_accepts(deviant, element)) {
        leaves(fWrapped->generic_at(deviant, index));
        enters(element);
    }
    fWrapped->generic_replace(deviant, index, std::move(element));
}

bool GenericAssociationSequence::generic_eraseElement(Deviant deviant, Ref element) {
    // Not `generic_contains`, which of a single-valued property says only that there is a value.
    if (fWrapped->generic_indexOf(deviant, element) < 0) {
        return false;
    }
    leaves(element.withDeviant(deviant));
    return fWrapped->generic_eraseElement(deviant, std::move(element));
}

} // namespace ZEL::Generic
