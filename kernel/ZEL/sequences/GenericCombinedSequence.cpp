#include <ZEL/sequences/GenericCombinedSequence.h>

#include <utility>

namespace ZEL::Generic::combined_sequence_internal {

namespace {

[[noreturn]] void raiseInvalidIterator() { raiseInternalError("invalid iterator passed to erase"); }

std::unique_ptr<GenericCombinedSequence::Iterator::SubIterator> own(IteratorPtr iterator) {
    using SubIterator = GenericCombinedSequence::Iterator::SubIterator;
    return std::unique_ptr<SubIterator>(static_cast<SubIterator *>(iterator.release()));
}

} // namespace

// --- steps -----------------------------------------------------------------------------------------------------------

bool GenericCombinedSequence::isEmptyAt(Deviant deviant, int index) const {
    return isCounted(index) ? sub(index).generic_size(deviant) == 0
                            : own(sub(index).generic_begin(deviant))->isEnd(deviant);
}

int GenericCombinedSequence::get_sub_sequence(Ref const & element) const {
    for (int i = 0; i < count(); ++i) {
        // A filter may let through more than the sequence under it holds: operations, where attributes are stored.
        if (!sub(i).filterSet(element).isNull() && sub(i).generic_accepts(element.getDeviant(), element)) {
            return i;
        }
    }
    return -1;
}

GenericCombinedSequence::SubSequence & GenericCombinedSequence::subSequenceFor(Ref const & element) const {
    int const index = get_sub_sequence(element);
    if (index == -1) {
        raiseInternalError("cannot insert value into the combined sequence");
    }
    return sub(index);
}

GenericCombinedSequence::Place GenericCombinedSequence::placeOf(Deviant deviant, int index) const {
    for (int i = 0; i < count(); ++i) {
        int const size = sub(i).generic_size(deviant);
        if (index < size) {
            return {i, index};
        }
        index -= size;
    }
    return {count(), index};
}

GenericCombinedSequence::Iterator const & GenericCombinedSequence::ownIterator(IteratorIntf const * iterator) const {
    auto const * const own = dynamic_cast<Iterator const *>(iterator);
    if (own == nullptr || own->fSequence != this) {
        raiseInvalidIterator();
    }
    return *own;
}

// --- reads -----------------------------------------------------------------------------------------------------------

Ref GenericCombinedSequence::generic_at(Deviant deviant, int index) const {
    if (index < 0) {
        raiseAnInternalError();
    }
    for (int i = 0; i < count(); ++i) {
        if (isCounted(i)) {
            int const size = sub(i).generic_size(deviant);
            if (index < size) {
                return sub(i).generic_at(deviant, index);
            }
            index -= size;
        } else {
            for (auto iterator = own(sub(i).generic_begin(deviant)); !iterator->isEnd(deviant);
                 iterator->next(deviant)) {
                if (index-- == 0) {
                    return iterator->current(deviant);
                }
            }
        }
    }
    raiseAnInternalError();
}

IteratorPtr GenericCombinedSequence::generic_begin(Deviant deviant) const {
    auto iterator = std::make_unique<Iterator>(this, 0, 0);
    iterator->enter(deviant, 0);
    return iterator;
}

IteratorPtr GenericCombinedSequence::generic_end(Deviant) const { return std::make_unique<Iterator>(this, count(), 0); }

int GenericCombinedSequence::generic_size(Deviant deviant) const {
    int size = 0;
    for (auto const & subSequence : fSubSequences) {
        size += subSequence->generic_size(deviant);
    }
    return size;
}

bool GenericCombinedSequence::generic_contains(Deviant deviant, Ref element) const {
    for (auto const & subSequence : fSubSequences) {
        if (subSequence->generic_contains(deviant, element)) {
            return true;
        }
    }
    return false;
}

int GenericCombinedSequence::generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                           int number) const {
    // The caller must learn before the first element, not halfway through, that this cannot be done.
    for (auto const & subSequence : fSubSequences) {
        if (subSequence->generic_fetch(deviant, 0, bodies, 0) < 0) {
            return -1;
        }
    }
    Place const place = placeOf(deviant, index);
    return place.sub == count() ? 0 : sub(place.sub).generic_fetch(deviant, place.position, bodies, number);
}

int GenericCombinedSequence::generic_indexOf(Deviant deviant, Ref element) const {
    int before = 0;
    for (auto const & subSequence : fSubSequences) {
        int const index = subSequence->generic_indexOf(deviant, element);
        if (index >= 0) {
            return before + index;
        }
        before += subSequence->generic_size(deviant);
    }
    return -1;
}

bool GenericCombinedSequence::generic_accepts(Deviant deviant, Ref const & element) const {
    int const index = get_sub_sequence(element);
    return index != -1 && sub(index).generic_accepts(deviant, element);
}

// --- writes ----------------------------------------------------------------------------------------------------------

void GenericCombinedSequence::generic_clear(Deviant deviant) {
    for (auto const & subSequence : fSubSequences) {
        subSequence->generic_clear(deviant);
    }
}

void GenericCombinedSequence::generic_erase(Deviant deviant, int index) {
    Place const place = placeOf(deviant, index);
    if (index < 0 || (place.sub == count() && place.position > 0)) {
        raiseInternalError("erase requested for invalid index");
    }
    Iterator const where(this, place.sub, place.position);
    generic_erase(deviant, &where);
}

IteratorPtr GenericCombinedSequence::generic_erase(Deviant deviant, IteratorIntf const * where) {
    Iterator const & place = ownIterator(where);
    if (place.fSub >= count() || place.isEndOfSub(deviant)) {
        raiseInvalidIterator();
    }
    SubSequence & subSequence = sub(place.fSub);
    std::unique_ptr<Iterator> result(new Iterator(place));
    // The next element moves to where the result is, unless the last of the sub-sequence goes.
    if (isCounted(place.fSub)) {
        bool const isLast = place.fPosition == subSequence.generic_size(deviant) - 1;
        subSequence.generic_erase(deviant, place.fPosition);
        if (isLast) {
            result->enter(deviant, place.fSub + 1);
        }
    } else {
        result->fInner = own(subSequence.generic_erase(deviant, &place.inner(deviant)));
        if (result->fInner->isEnd(deviant)) {
            result->enter(deviant, place.fSub + 1);
        }
    }
    return result;
}

void GenericCombinedSequence::generic_pop_back(Deviant deviant) {
    for (int i = count(); i-- > 0;) {
        if (!isEmptyAt(deviant, i)) {
            sub(i).generic_pop_back(deviant);
            return;
        }
    }
    raiseInternalError("pop_back on empty CombinedSequence");
}

void GenericCombinedSequence::generic_pop_front(Deviant deviant) {
    if (fSubSequences.empty()) {
        raiseInternalError("pop_back on empty CombinedSequence");
    }
    int index = 0;
    if (isEmptyAt(deviant, 0)) {
        // A sub-sequence is passed over unless it has more elements than its own number. Clients rely on it.
        index = 1;
        while (index < count() && index >= sub(index).generic_size(deviant)) {
            ++index;
        }
    }
    if (index >= count()) {
        raiseInternalError("pop_front on empty CombinedSequence");
    }
    sub(index).generic_pop_front(deviant);
}

bool GenericCombinedSequence::generic_eraseElement(Deviant deviant, Ref element) {
    for (auto const & subSequence : fSubSequences) {
        if (subSequence->generic_eraseElement(deviant, element)) {
            return true;
        }
    }
    return false;
}

// --- iterator --------------------------------------------------------------------------------------------------------

GenericCombinedSequence::Iterator::Iterator(Iterator const & other)
    : IteratorOf(other),
      fSequence(other.fSequence),
      fSub(other.fSub),
      fPosition(other.fPosition),
      fInner(other.fInner == nullptr ? nullptr : own(other.fInner->clone())) {}

GenericCombinedSequence::Iterator::SubIterator & GenericCombinedSequence::Iterator::inner(Deviant deviant) const {
    if (fInner == nullptr) {
        fInner = own(fSequence->sub(fSub).generic_begin(deviant));
        for (int i = 0; i < fPosition && !fInner->isEnd(deviant); ++i) {
            fInner->next(deviant);
        }
    }
    return *fInner;
}

bool GenericCombinedSequence::Iterator::isEndOfSub(Deviant deviant) const {
    return fSequence->isCounted(fSub) ? fPosition >= fSequence->sub(fSub).generic_size(deviant)
                                      : inner(deviant).isEnd(deviant);
}

void GenericCombinedSequence::Iterator::enter(Deviant deviant, int sub) {
    fSub = sub;
    fPosition = 0;
    fInner.reset();
    while (fSub < fSequence->count() && isEndOfSub(deviant)) {
        ++fSub;
        fInner.reset();
    }
}

Ref GenericCombinedSequence::Iterator::current(Deviant deviant) const {
    if (fSub >= fSequence->count()) {
        raiseAnInternalError();
    }
    return fSequence->isCounted(fSub) ? fSequence->sub(fSub).generic_at(deviant, fPosition)
                                      : inner(deviant).current(deviant);
}

void GenericCombinedSequence::Iterator::next(Deviant deviant) {
    if (fSub >= fSequence->count()) {
        return;
    }
    if (!fSequence->isCounted(fSub)) {
        inner(deviant).next(deviant);
    }
    ++fPosition;
    if (isEndOfSub(deviant)) {
        enter(deviant, fSub + 1);
    }
}

void GenericCombinedSequence::Iterator::previous(Deviant deviant) {
    if (fPosition > 0) {
        if (!fSequence->isCounted(fSub)) {
            inner(deviant).previous(deviant);
        }
        --fPosition;
        return;
    }
    int sub = fSub - 1;
    while (sub >= 0 && fSequence->isEmptyAt(deviant, sub)) {
        --sub;
    }
    if (sub < 0) {
        raiseAnInternalError();
    }
    fSub = sub;
    fPosition = fSequence->sub(sub).generic_size(deviant) - 1;
    fInner.reset();
    if (!fSequence->isCounted(sub)) {
        fInner = own(fSequence->sub(sub).generic_end(deviant));
        fInner->previous(deviant);
    }
}

} // namespace ZEL::Generic::combined_sequence_internal
