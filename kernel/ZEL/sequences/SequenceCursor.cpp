#include <ZEL/sequences/SequenceCursor.h>

#include <utility>

namespace ZEL::Generic {

namespace {

Place indexed(int index) { return {Place::kNoPart, index}; }

} // namespace

SequenceCursor::SequenceCursor(SequenceCursor const & other)
    : fSequence(other.fSequence),
      fDeviant(other.fDeviant),
      fPlace(other.fPlace),
      fInner(other.fInner == nullptr ? nullptr : other.fInner->clone()) {}

SequenceCursor & SequenceCursor::operator=(SequenceCursor other) noexcept {
    // Also the inner iterator may hold on to its sequence: it goes first.
    fInner = std::move(other.fInner);
    std::swap(fSequence, other.fSequence);
    fDeviant = other.fDeviant;
    fPlace = other.fPlace;
    return *this;
}

SequenceCursor SequenceCursor::atBegin(SequencePtr const & sequence, Deviant deviant) {
    if (sequence->generic_isRandomAccess()) {
        return SequenceCursor(sequence, deviant, indexed(0));
    }
    Place const place = sequence->generic_beginPlace(deviant);
    return place.hasPart() ? SequenceCursor(sequence, deviant, place)
                           : SequenceCursor(sequence, deviant, sequence->generic_begin(deviant));
}

SequenceCursor SequenceCursor::atEnd(SequencePtr const & sequence, Deviant deviant) {
    if (sequence->generic_isRandomAccess()) {
        return SequenceCursor(sequence, deviant, indexed(sequence->generic_size(deviant)));
    }
    Place const place = sequence->generic_endPlace(deviant);
    return place.hasPart() ? SequenceCursor(sequence, deviant, place)
                           : SequenceCursor(sequence, deviant, sequence->generic_end(deviant));
}

SequenceCursor SequenceCursor::at(SequencePtr const & sequence, Deviant deviant, IteratorPtr inner) {
    if (sequence->generic_isRandomAccess()) {
        int const index = inner->position();
        if (index != IteratorIntf::kNoPosition) {
            return SequenceCursor(sequence, deviant, indexed(index));
        }
    }
    Place const place = inner->place();
    return place.hasPart() ? SequenceCursor(sequence, deviant, place)
                           : SequenceCursor(sequence, deviant, std::move(inner));
}

IteratorPtr SequenceCursor::toIterator() const {
    if (fInner != nullptr) {
        return fInner->clone();
    }
    return fPlace.hasPart() ? sequence().generic_iteratorAtPlace(fDeviant, fPlace)
                            : sequence().generic_iteratorAt(fDeviant, fPlace.index);
}

} // namespace ZEL::Generic
