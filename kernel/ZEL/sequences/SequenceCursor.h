#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/SequenceIntf.h>

#include <utility>

namespace ZEL::Generic {

/// A place in a sequence, as the typed iterators hold it: a plain index where the sequence is quick at that, a part and
/// an index where it has such places, else an iterator of the sequence's own. Holds the sequence, so it may outlive the handle that it came from. A default
/// one has none: reading it, or writing at it, throws the NULL text.
class ZEL_API SequenceCursor {
public:
    SequenceCursor() noexcept = default;
    SequenceCursor(SequenceCursor const & other);
    SequenceCursor(SequenceCursor &&) noexcept = default;
    SequenceCursor & operator=(SequenceCursor other) noexcept;
    ~SequenceCursor() = default;

    [[nodiscard]] static SequenceCursor atBegin(SequencePtr const & sequence, Deviant deviant);
    [[nodiscard]] static SequenceCursor atEnd(SequencePtr const & sequence, Deviant deviant);
    /// At the place of `inner`, which is an iterator of `sequence`.
    [[nodiscard]] static SequenceCursor at(SequencePtr const & sequence, Deviant deviant, IteratorPtr inner);

    [[nodiscard]] Ref current() const {
        if (fInner != nullptr) {
            return fInner->current(fDeviant);
        }
        return fPlace.hasPart() ? sequence().generic_atPlace(fDeviant, fPlace)
                                : sequence().generic_at(fDeviant, fPlace.index);
    }
    void next() {
        if (fInner != nullptr) {
            fInner->next(fDeviant);
        } else if (fPlace.hasPart()) {
            fPlace = sequence().generic_placeAfter(fDeviant, fPlace);
        } else {
            ++fPlace.index;
        }
    }
    void previous() {
        if (fInner != nullptr) {
            fInner->previous(fDeviant);
        } else if (fPlace.hasPart()) {
            fPlace = sequence().generic_placeBefore(fDeviant, fPlace);
        } else {
            --fPlace.index;
        }
    }
    /// For the iterator forms of the sequence's operations.
    [[nodiscard]] IteratorPtr toIterator() const;

    /// Positions are compared, not sequences.
    friend bool operator==(SequenceCursor const & a, SequenceCursor const & b) {
        return a.fInner == nullptr || b.fInner == nullptr ? a.fInner == b.fInner && a.fPlace == b.fPlace
                                                          : a.fInner->equal(b.fInner.get());
    }

private:
    SequenceCursor(SequencePtr const & sequence, Deviant deviant, Place place)
        : fSequence(sequence), fDeviant(deviant), fPlace(place) {}
    SequenceCursor(SequencePtr const & sequence, Deviant deviant, IteratorPtr inner)
        : fSequence(sequence), fDeviant(deviant), fInner(std::move(inner)) {}

    [[nodiscard]] SequenceIntf & sequence() const {
        if (!fSequence) [[unlikely]] {
            raiseNullReference();
        }
        return *fSequence;
    }

    SequencePtr fSequence;
    Deviant fDeviant;
    Place fPlace; ///< without a part it is a plain index; not used beside an iterator
    IteratorPtr fInner;
};

} // namespace ZEL::Generic
