#include <ZEL/sequences/GenericFilteredSequence.h>

#include <utility>

namespace ZEL::Generic::filtered_sequence_internal {

namespace {

IteratorIntf const * innerOf(IteratorIntf const * iterator) {
    return ownIterator<GenericFilteredSequence::Iterator>(iterator).inner();
}

} // namespace

GenericFilteredSequence::GenericFilteredSequence(SequenceHandle const & underlying, GenericFilter filter)
    : fUnderlying(underlying.getImplementationWithoutAssert()), fFilter(filter), fDeviant(underlying.getDeviant()) {
    if (fUnderlying.get() == nullptr) {
        fFilter.destroy();
        raiseNullReference();
    }
}

GenericFilteredSequence::~GenericFilteredSequence() {
    fFilter.destroy();
    dropEnds();
}

// --- steps -----------------------------------------------------------------------------------------------------------

Ref GenericFilteredSequence::checkedFilterSet(Ref shown) const {
    Ref stored = filterSet(std::move(shown));
    if (stored.isNull()) {
        raiseAnInternalError();
    }
    return stored;
}

int GenericFilteredSequence::underlyingIndex(Deviant deviant, int index) const {
    int const size = fUnderlying->generic_size(deviant);
    if (index < 0 || index >= size) {
        raiseAnInternalError();
    }
    if (isPure()) {
        return index;
    }
    for (int i = 0; i < size; ++i) {
        if (!shownAt(deviant, i).isNull() && index-- == 0) {
            return i;
        }
    }
    raiseAnInternalError();
}

int GenericFilteredSequence::shownBefore(Deviant deviant, int underlyingIndex) const {
    if (isPure()) {
        return underlyingIndex;
    }
    int shown = 0;
    for (int i = 0; i < underlyingIndex; ++i) {
        shown += shownAt(deviant, i).isNull() ? 0 : 1;
    }
    return shown;
}

bool GenericFilteredSequence::isAtBegin(Deviant deviant, IteratorIntf const & inner) const {
    int const position = inner.position();
    if (position != IteratorIntf::kNoPosition) {
        return position <= 0;
    }
    if (fBegin == nullptr) {
        fBegin = fUnderlying->generic_begin(deviant);
    }
    return inner.equal(fBegin.get());
}

bool GenericFilteredSequence::isAtEnd(Deviant deviant, IteratorIntf const & inner) const {
    int const position = inner.position();
    if (position != IteratorIntf::kNoPosition) {
        return position >= fUnderlying->generic_size(deviant);
    }
    if (fEnd == nullptr) {
        fEnd = fUnderlying->generic_end(deviant);
    }
    return inner.equal(fEnd.get());
}

void GenericFilteredSequence::dropEnds() const noexcept {
    fBegin.reset();
    fEnd.reset();
}

IteratorPtr GenericFilteredSequence::wrap(Deviant deviant, IteratorPtr inner) const {
    dropEnds();
    return std::make_unique<Iterator>(deviant, this, std::move(inner));
}

// --- reads -----------------------------------------------------------------------------------------------------------

Ref GenericFilteredSequence::generic_back(Deviant deviant) const {
    if (isPure()) {
        return filterGet(fUnderlying->generic_back(deviant));
    }
    for (int i = fUnderlying->generic_size(deviant) - 1; i >= 0; --i) {
        Ref shown = shownAt(deviant, i);
        if (!shown.isNull()) {
            return shown;
        }
    }
    raiseAnInternalError();
}

bool GenericFilteredSequence::generic_contains(Deviant deviant, Ref element) const {
    Ref stored = filterSet(std::move(element));
    return !stored.isNull() && fUnderlying->generic_contains(deviant, std::move(stored));
}

int GenericFilteredSequence::generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                           int count) const {
    return fFilter.isIdentity() && deviant == fDeviant ? fUnderlying->generic_fetch(deviant, index, bodies, count) : -1;
}

int GenericFilteredSequence::generic_indexOf(Deviant deviant, Ref element) const {
    Ref const stored = filterSet(std::move(element));
    int const index = stored.isNull() ? -1 : fUnderlying->generic_indexOf(deviant, stored);
    return index < 0 || (!isPure() && shownAt(deviant, index).isNull()) ? -1 : shownBefore(deviant, index);
}

bool GenericFilteredSequence::generic_accepts(Deviant deviant, Ref const & element) const {
    Ref const stored = filterSet(element);
    return !stored.isNull() && fUnderlying->generic_accepts(deviant, stored);
}

// --- writes ----------------------------------------------------------------------------------------------------------

void GenericFilteredSequence::generic_clear(Deviant deviant) {
    if (isPure()) {
        fUnderlying->generic_clear(deviant);
    } else {
        for (int i = 0, size = fUnderlying->generic_size(deviant); i < size;) {
            if (shownAt(deviant, i).isNull()) {
                ++i;
            } else {
                fUnderlying->generic_erase(deviant, i);
                --size;
            }
        }
    }
    dropEnds();
}

IteratorPtr GenericFilteredSequence::generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) {
    return wrap(deviant, fUnderlying->generic_insert(deviant, innerOf(where), checkedFilterSet(std::move(element))));
}

void GenericFilteredSequence::generic_insert(Deviant deviant, int index, Ref element) {
    Ref stored = checkedFilterSet(std::move(element));
    fUnderlying->generic_insert(deviant, isPure() ? index : underlyingIndex(deviant, index), std::move(stored));
    dropEnds();
}

void GenericFilteredSequence::generic_erase(Deviant deviant, int index) {
    fUnderlying->generic_erase(deviant, isPure() ? index : underlyingIndex(deviant, index));
    dropEnds();
}

IteratorPtr GenericFilteredSequence::generic_erase(Deviant deviant, IteratorIntf const * where) {
    return wrap(deviant, fUnderlying->generic_erase(deviant, innerOf(where)));
}

void GenericFilteredSequence::generic_pop_back(Deviant deviant) {
    if (isPure()) {
        generic_erase(deviant, fUnderlying->generic_size(deviant) - 1);
        return;
    }
    // The last shown element, without counting those before it.
    for (int i = fUnderlying->generic_size(deviant) - 1; i >= 0; --i) {
        if (!shownAt(deviant, i).isNull()) {
            fUnderlying->generic_erase(deviant, i);
            dropEnds();
            return;
        }
    }
    raiseAnInternalError();
}

void GenericFilteredSequence::generic_push_back(Deviant deviant, Ref element) {
    fUnderlying->generic_push_back(deviant, checkedFilterSet(std::move(element)));
    dropEnds();
}

void GenericFilteredSequence::generic_push_front(Deviant deviant, Ref element) {
    fUnderlying->generic_push_front(deviant, checkedFilterSet(std::move(element)));
    dropEnds();
}

void GenericFilteredSequence::generic_replace(Deviant deviant, int index, Ref element) {
    Ref stored = checkedFilterSet(std::move(element));
    fUnderlying->generic_replace(deviant, isPure() ? index : underlyingIndex(deviant, index), std::move(stored));
    dropEnds();
}

bool GenericFilteredSequence::generic_eraseElement(Deviant deviant, Ref element) {
    Ref stored = filterSet(std::move(element));
    bool const isErased = !stored.isNull() && fUnderlying->generic_eraseElement(deviant, std::move(stored));
    dropEnds();
    return isErased;
}

// --- iterator --------------------------------------------------------------------------------------------------------

GenericFilteredSequence::Iterator::Iterator(Deviant deviant, GenericFilteredSequence const * sequence,
                                            IteratorPtr inner)
    : fSequence(const_cast<GenericFilteredSequence *>(sequence)), fInner(std::move(inner)) {
    while (!fSequence->isAtEnd(deviant, *fInner) && current(deviant).isNull()) {
        fInner->next(deviant);
    }
}

void GenericFilteredSequence::Iterator::next(Deviant deviant) {
    do {
        fInner->next(deviant);
    } while (!fSequence->isAtEnd(deviant, *fInner) && current(deviant).isNull());
}

void GenericFilteredSequence::Iterator::previous(Deviant deviant) {
    do {
        fInner->previous(deviant);
    } while (!fSequence->isAtBegin(deviant, *fInner) && current(deviant).isNull());
}

} // namespace ZEL::Generic::filtered_sequence_internal
