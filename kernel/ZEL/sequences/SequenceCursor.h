#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/SequenceIntf.h>

namespace ZEL::Generic {

/// A place in a sequence, as the typed iterators hold it: a plain index where the sequence is quick at that, else an
/// iterator of the sequence's own. Holds the sequence, so it may outlive the handle that it came from. A default
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
        return fInner == nullptr ? sequence().generic_at(fDeviant, fIndex) : fInner->current(fDeviant);
    }
    void next() {
        if (fInner == nullptr) {
            ++fIndex;
        } else {
            fInner->next(fDeviant);
        }
    }
    void previous() {
        if (fInner == nullptr) {
            --fIndex;
        } else {
            fInner->previous(fDeviant);
        }
    }
    /// For the iterator forms of the sequence's operations.
    [[nodiscard]] IteratorPtr toIterator() const;

    /// Positions are compared, not sequences.
    friend bool operator==(SequenceCursor const & a, SequenceCursor const & b) {
        return a.fInner == nullptr || b.fInner == nullptr ? a.fInner == b.fInner && a.fIndex == b.fIndex
                                                          : a.fInner->equal(b.fInner.get());
    }

private:
    SequenceCursor(SequencePtr const & sequence, Deviant deviant, int index, IteratorPtr inner);

    [[nodiscard]] SequenceIntf & sequence() const {
        if (!fSequence) [[unlikely]] {
            raiseNullReference();
        }
        return *fSequence;
    }

    SequencePtr fSequence;
    Deviant fDeviant;
    int fIndex = 0;
    IteratorPtr fInner;
};

} // namespace ZEL::Generic
