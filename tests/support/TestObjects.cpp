#include "support/TestObjects.h"

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/DeviantAssertions.h>

#include <utility>

namespace ZEL::testsupport {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

// --- state -----------------------------------------------------------------------------------------------------------

namespace {

ThingState & asThingState(ObjectIntf * state) {
    return *static_cast<ThingState *>(state->cast(ThingState::classInfo()));
}

ObjectIntf * copyState(Deviant target, ObjectIntf * state, Deviant source) {
    if (!Deviant::isRealState(state)) {
        return state;
    }
    auto * const copy = new ThingState;
    copy->internal_deviationAssign(target, state, source);
    return copy;
}

bool followsRoot(ObjectIntf const * state) { return state == nullptr || state == Deviant::FallbackToRoot; }

bool isAbsent(ObjectIntf const * state) { return state == nullptr || state == Deviant::InvalidObject; }

} // namespace

void ThingState::internal_deviationAssign(Deviant, ObjectIntf * source, Deviant) {
    value = asThingState(source).value;
    container = asThingState(source).container;
}

// --- body ------------------------------------------------------------------------------------------------------------

Thing::~Thing() { Thing::deviant_destroyState(fRootState); }

int Thing::valueIn(Deviant deviant) const { return asThingState(getReadDeviant(deviant)).value; }

void Thing::set(Deviant deviant, int value) { asThingState(getWriteDeviant(deviant)).value = value; }

void Thing::setContainer(Deviant deviant, Thing const * container) {
    asThingState(getWriteDeviant(deviant)).container = container;
}

void Thing::end(Deviant deviant) {
    saveOldState(deviant, internal_getDeviation(deviant));
    internal_destroyDeviation(deviant);
}

void Thing::decRef() {
    if (--fCount == 0) {
        delete this;
    }
}

bool Thing::deviant_isValid(Deviant deviant) const {
    if (!deviant.isValid()) {
        return false;
    }
    return !isAbsent(observedState(deviant));
}

void Thing::deviant_destroyState(ObjectIntf * state) {
    if (Deviant::isRealState(state)) {
        delete state;
    }
}

void Thing::deviant_commitTransientState(Deviant deviant) {
    if (!deviant.isRootDeviant()) {
        return;
    }
    ObjectIntf * const old = readStateFromRoot(deviant);
    if (old == nullptr) {
        return;
    }
    for (Deviant const other : deviant.getAllDeviants()) {
        if (other == deviant) {
            continue;
        }
        if (other.isWithinTransaction() && other.getSavedOldStateOfObject(this) == Deviant::FallbackToRoot) {
            static_cast<void>(other.saveOldStateOfObject(this, copyState(other, old, deviant)));
            return;
        }
        if (followsRoot(internal_getDeviation(other))) {
            store(other, copyState(other, old, deviant));
        }
    }
}

ObjectIntf * Thing::deviant_getCopyOfDeviation(Deviant deviant) const {
    return copyState(deviant, internal_getDeviation(deviant), deviant);
}

ObjectIntf * Thing::internal_getDeviation(Deviant deviant) const {
    return deviant.isRootDeviant() ? fRootState : deviant.getStateOfObject(this);
}

void Thing::internal_setDeviation(Deviant deviant, ObjectIntf * state) {
    ObjectIntf * const present = internal_getDeviation(deviant);
    if (present != state) {
        store(deviant, state);
        deviant_destroyState(present);
    }
}

ObjectIntf * Thing::internal_createDeviation(Deviant deviant) {
    if (Deviant::isRealState(internal_getDeviation(deviant))) {
        return nullptr;
    }
    auto * const state = new ThingState;
    store(deviant, state);
    return state;
}

void Thing::internal_destroyDeviation(Deviant deviant) {
    internal_setDeviation(deviant, asState(Deviant::InvalidObject));
}

ObjectIntf * Thing::getReadDeviant(Deviant deviant) const {
    if (!deviant.isValid()) {
        raiseInternalError("object accessed after its deviant has been removed");
    }
    ObjectIntf * const state = observedState(deviant);
    if (isAbsent(state)) {
        DeviantAssertions(deviant.getImpl()).assertObjectNotPresentInDeviant(nullptr);
    }
    return state;
}

ObjectIntf * Thing::getWriteDeviant(Deviant deviant) const {
    if (deviant.isValid()) {
        DeviantAssertions(deviant.getImpl()).assertWritable(nullptr);
    }
    ObjectIntf * state = getReadDeviant(deviant);
    ObjectIntf * const before = internal_getDeviation(deviant);
    if (followsRoot(before)) {
        state = copyState(deviant, state, deviant);
        store(deviant, state);
    }
    saveOldState(deviant, before);
    return state;
}

ClassObjectIntf const * Thing::internal_container(Deviant deviant) const {
    return asThingState(getReadDeviant(deviant)).container;
}

ObjectIntf * Thing::observedState(Deviant deviant) const {
    ObjectIntf * const state = internal_getDeviation(deviant);
    return followsRoot(state) ? readStateFromRoot(deviant) : state;
}

ObjectIntf * Thing::readStateFromRoot(Deviant deviant) const {
    ObjectIntf * const saved = deviant.getRootDeviant().getSavedOldStateOfObject(this);
    return saved != nullptr ? saved : fRootState;
}

void Thing::store(Deviant deviant, ObjectIntf * state) const {
    if (deviant.isRootDeviant()) {
        fRootState = state;
    } else {
        static_cast<void>(deviant.setStateOfObject(this, state));
    }
}

void Thing::saveOldState(Deviant deviant, ObjectIntf * state) const {
    if (deviant.hasUndoStack() && deviant.isWithinTransaction() && deviant.getSavedOldStateOfObject(this) == nullptr) {
        static_cast<void>(deviant.saveOldStateOfObject(this, copyState(deviant, state, deviant)));
    }
}

// --- fixture ---------------------------------------------------------------------------------------------------------

DeviantFixture::DeviantFixture() : fStatesBefore(ThingState::numberAlive), fThingsBefore(Thing::numberAlive) {}

DeviantFixture::~DeviantFixture() {
    endAll();
    EXPECT_EQ(fStatesBefore, ThingState::numberAlive) << "states that nobody has given back";
    EXPECT_EQ(fThingsBefore, Thing::numberAlive) << "counts that nobody has given back";
}

void DeviantFixture::enter(Thing & thing, Deviant deviant, int value) {
    deviant.beginTransaction("make");
    deviant.markObjectCreated(&thing);
    thing.internal_createDeviation(deviant);
    thing.set(deviant, value);
    deviant.commitTransaction();
}

void DeviantFixture::commitValue(Deviant deviant, Thing & thing, int value, std::string const & name) {
    deviant.beginTransaction(name);
    thing.set(deviant, value);
    deviant.commitTransaction();
}

void DeviantFixture::endAll() {
    manager.reset();
    for (Thing * const thing : std::exchange(fThings, {})) {
        thing->decRef();
    }
}

} // namespace ZEL::testsupport
