#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ContaineeSequence.h>
#include <ZEL/metamodel/Containment.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/sequences/PersistentSequence.h>

#include <array>
#include <memory>

namespace ZEL::internal {

using Generic::IteratorPtr;
using Generic::Ref;

// --- making ----------------------------------------------------------------------------------------------------------

/// Sequences without an object, so that a loop over the containees of each object of a tree need not make one each time.
/// They are not entered among the live objects, where they would look like leaks; that is why there are few. Who nests
/// loops more deeply has others made, which end with their handles.
class ContaineeSequence::Spares {
public:
    /// Null if none is left.
    [[nodiscard]] static ContaineeSequence * take() {
        if (fKept > 0) {
            return fSequences[--fKept];
        }
        return fMade < fSequences.size() ? make() : nullptr;
    }
    static void keep(ContaineeSequence * sequence) noexcept { fSequences[fKept++] = sequence; }

private:
    [[nodiscard]] static ContaineeSequence * make() {
        bool const isTracking = Cleanup::isTrackingObjects();
        Cleanup::stopTrackingObjects();
        AtScopeEnd const resume([isTracking] {
            if (isTracking) {
                Cleanup::startTrackingObjects();
            }
        });
        auto * const sequence = new ContaineeSequence;
        ++fMade;
        return sequence;
    }

    // Never freed: objects outlive the statics of this library.
    static constinit inline std::array<ContaineeSequence *, 8> fSequences{};
    static constinit inline std::size_t fKept = 0;
    static constinit inline std::size_t fMade = 0;
};

Sequence<ClassObject> ContaineeSequence::of(BodyCore const & object, Deviant deviant) {
    CompositeFields const & parts = compositeFieldsOf(object.readState(deviant)->internal_stateDescriptor());
    ContaineeSequence * const spare = Spares::take();
    if (spare == nullptr) {
        return Sequence<ClassObject>(new ContaineeSequence(object, deviant, parts), deviant);
    }
    spare->fObject = RefBase<BodyCore *>(&object, deviant);
    spare->fParts = &parts;
    return Sequence<ClassObject>(spare, deviant);
}

void ContaineeSequence::released() {
    if (!fIsSpare) {
        delete this;
        return;
    }
    fCombined = nullptr;
    fWrapped = nullptr;
    fObject = RefBase<BodyCore *>();
    Spares::keep(this);
}

Generic::SequencePtr ContaineeSequence::makeWrapped() const {
    BodyCore const & object = *fObject.getImplementation();
    Sequence<ClassObject> const raw = object.getContaineeZELsWithoutAssociation(fObject.getDeviant());
    fCombined = dynamic_cast<Combined const *>(raw.getImplementation());
    if (fCombined == nullptr) {
        raiseAnInternalError();
    }
    return Generic::SequencePtr(containeeView(object, fObject.getDeviant(), raw).getImplementation());
}

// --- places ----------------------------------------------------------------------------------------------------------

namespace {

int sizeOf(FieldDescriptor const & field, StateCore const & state) {
    return field.sequence != nullptr ? static_cast<int>(field.sequence(state).size())
                                     : static_cast<int>(field.get(state) != nullptr);
}

} // namespace

NSInterface::ObjectIntf * ContaineeSequence::elementAt(StateCore const & state, Place place) const {
    if (place.part >= partCount() || place.index < 0) {
        raiseAnInternalError();
    }
    FieldDescriptor const & each = part(place.part);
    if (each.sequence == nullptr) {
        NSInterface::ObjectIntf * const element = each.get(state);
        if (place.index > 0 || element == nullptr) {
            raiseAnInternalError();
        }
        return element;
    }
    PersistentSequence const & elements = each.sequence(state);
    auto const index = static_cast<std::size_t>(place.index);
    if (index >= elements.size()) {
        raiseAnInternalError();
    }
    return static_cast<NSInterface::ObjectIntf *>(elements.at(index));
}

Generic::Place ContaineeSequence::firstFrom(StateCore const & state, int number) const {
    while (number < partCount() && sizeOf(part(number), state) == 0) {
        ++number;
    }
    return {number, 0};
}

Generic::Place ContaineeSequence::generic_beginPlace(Deviant deviant) const {
    return isFor(deviant) ? firstFrom(state(), 0) : Place();
}

Generic::Place ContaineeSequence::generic_endPlace(Deviant deviant) const {
    return isFor(deviant) ? Place{partCount(), 0} : Place();
}

Ref ContaineeSequence::generic_atPlace(Deviant, Place place) const {
    return Ref::ofStoredBody(elementAt(state(), place), fObject.getDeviant());
}

Generic::Place ContaineeSequence::generic_placeAfter(Deviant, Place place) const {
    if (place.part >= partCount()) {
        return place;
    }
    StateCore const & present = state();
    if (place.index + 1 < sizeOf(part(place.part), present)) {
        return {place.part, place.index + 1};
    }
    return firstFrom(present, place.part + 1);
}

Generic::Place ContaineeSequence::generic_placeBefore(Deviant, Place place) const {
    if (place.index > 0) {
        return {place.part, place.index - 1};
    }
    StateCore const & present = state();
    int number = place.part - 1;
    while (number >= 0 && sizeOf(part(number), present) == 0) {
        --number;
    }
    if (number < 0) {
        raiseAnInternalError();
    }
    return {number, sizeOf(part(number), present) - 1};
}

IteratorPtr ContaineeSequence::generic_iteratorAtPlace(Deviant, Place place) const {
    return std::make_unique<Iterator>(this, place);
}

// --- the other operations --------------------------------------------------------------------------------------------

IteratorPtr ContaineeSequence::generic_begin(Deviant deviant) const {
    return isFor(deviant) ? generic_iteratorAtPlace(deviant, generic_beginPlace(deviant))
                          : ForwardingSequence::generic_begin(deviant);
}

IteratorPtr ContaineeSequence::generic_end(Deviant deviant) const {
    return isFor(deviant) ? generic_iteratorAtPlace(deviant, generic_endPlace(deviant))
                          : ForwardingSequence::generic_end(deviant);
}

int ContaineeSequence::generic_size(Deviant deviant) const {
    if (!isFor(deviant)) {
        return ForwardingSequence::generic_size(deviant);
    }
    StateCore const & present = state();
    int size = 0;
    for (FieldDescriptor const * const each : *fParts) {
        size += sizeOf(*each, present);
    }
    return size;
}

int ContaineeSequence::generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies, int count) const {
    if (!isFor(deviant)) {
        return ForwardingSequence::generic_fetch(deviant, index, bodies, count);
    }
    StateCore const & present = state();
    int fetched = 0;
    for (int number = 0; number < partCount() && fetched < count; ++number) {
        int const size = sizeOf(part(number), present);
        for (; index < size && fetched < count; ++index) {
            bodies[fetched++] = elementAt(present, {number, index});
        }
        index = index < size ? 0 : index - size;
    }
    return fetched;
}

IteratorPtr ContaineeSequence::generic_erase(Deviant deviant, Generic::IteratorIntf const * where) {
    auto const * const own = dynamic_cast<Iterator const *>(where);
    if (own == nullptr || own->fSequence != this) {
        return ForwardingSequence::generic_erase(deviant, where);
    }
    Generic::SequenceIntf & target = wrapped();
    Combined::Iterator const place(fCombined, own->fPlace.part, own->fPlace.index);
    static_cast<void>(target.generic_erase(deviant, &place));
    // The next element has moved here, unless the last of the part went.
    StateCore const & present = state();
    bool const isThere = own->fPlace.index < sizeOf(part(own->fPlace.part), present);
    return generic_iteratorAtPlace(deviant, isThere ? own->fPlace : firstFrom(present, own->fPlace.part + 1));
}

} // namespace ZEL::internal
