#include <ZEL/sequences/GenericAssociationSequence.h>

#include <utility>

namespace ZEL::Generic {

GenericAssociationSequence::GenericAssociationSequence(SequenceHandle const & wrapped,
                                                       internal::PropertyDescriptor const * end, Owner owner, Hook hook,
                                                       Push push)
    : ForwardingSequence(wrapped), fEnd(end), fOwner(std::move(owner)), fHook(hook), fPush(push) {}

void GenericAssociationSequence::generic_clear(Deviant deviant) {
    for (int i = 0, size = fWrapped->generic_size(deviant); i < size; ++i) {
        leaves(fWrapped->generic_at(deviant, i));
    }
    fWrapped->generic_clear(deviant);
}

IteratorPtr GenericAssociationSequence::generic_erase(Deviant deviant, IteratorIntf const * first,
                                                      IteratorIntf const * last) {
    if (first->position() <= last->position()) {
        for (auto iterator = first->clone(); !iterator->equal(last); iterator->next(deviant)) {
            leaves(iterator->current(deviant));
        }
    }
    return fWrapped->generic_erase(deviant, first, last);
}

void GenericAssociationSequence::generic_replace(Deviant deviant, int index, Ref element) {
    // A unique sequence refuses what it holds already, at this index or at another: then all links stay as well.
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
