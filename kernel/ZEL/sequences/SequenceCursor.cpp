#include <ZEL/sequences/SequenceCursor.h>

#include <utility>

namespace ZEL::Generic {

SequenceCursor::SequenceCursor(SequencePtr const & sequence, Deviant deviant, int index, IteratorPtr inner)
    : fSequence(sequence), fDeviant(deviant), fIndex(index), fInner(std::move(inner)) {}

SequenceCursor::SequenceCursor(SequenceCursor const & other)
    : fSequence(other.fSequence),
      fDeviant(other.fDeviant),
      fIndex(other.fIndex),
      fInner(other.fInner == nullptr ? nullptr : other.fInner->clone()) {}

SequenceCursor & SequenceCursor::operator=(SequenceCursor other) noexcept {
    // Also the inner iterator may hold on to its sequence: it goes first.
    fInner = std::move(other.fInner);
    std::swap(fSequence, other.fSequence);
    fDeviant = other.fDeviant;
    fIndex = other.fIndex;
    return *this;
}

SequenceCursor SequenceCursor::atBegin(SequencePtr const & sequence, Deviant deviant) {
    return SequenceCursor(sequence, deviant, 0,
                          sequence->generic_isRandomAccess() ? nullptr : sequence->generic_begin(deviant));
}

SequenceCursor SequenceCursor::atEnd(SequencePtr const & sequence, Deviant deviant) {
    if (sequence->generic_isRandomAccess()) {
        return SequenceCursor(sequence, deviant, sequence->generic_size(deviant), nullptr);
    }
    return SequenceCursor(sequence, deviant, 0, sequence->generic_end(deviant));
}

SequenceCursor SequenceCursor::at(SequencePtr const & sequence, Deviant deviant, IteratorPtr inner) {
    if (sequence->generic_isRandomAccess()) {
        int const index = inner->position();
        if (index != IteratorIntf::kNoPosition) {
            return SequenceCursor(sequence, deviant, index, nullptr);
        }
    }
    return SequenceCursor(sequence, deviant, 0, std::move(inner));
}

IteratorPtr SequenceCursor::toIterator() const {
    return fInner != nullptr ? fInner->clone() : sequence().generic_iteratorAt(fDeviant, fIndex);
}

} // namespace ZEL::Generic
