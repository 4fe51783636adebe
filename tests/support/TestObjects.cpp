#include "support/TestObjects.h"

#include <ZEL/String.h>
#include <ZEL/base/Cleanup.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/PackageIntf.h>
#include <ZEL/metamodel/ProfileIntf.h>

#include <utility>

namespace ZEL::tests {

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

int numberAlive() {
    ThingState const last; // the one constructed last is not counted
    return Cleanup::numberOfActiveObjects();
}

// --- body ------------------------------------------------------------------------------------------------------------

Thing::~Thing() { Thing::deviant_destroyState(fRootState); }

void Thing::internal_destroyContents(Deviant deviant) {
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

// --- what a test works on --------------------------------------------------------------------------------------------

NSInterface::PackageIntf * Subject::package() const {
    return static_cast<NSInterface::PackageIntf *>(fBody->cast(NSInterface::PackageIntf::classInfo()));
}

int Subject::valueIn(Deviant deviant) const {
    return package() != nullptr ? std::stoi(package()->getName(deviant).str())
                                : asThingState(fBody->getReadDeviant(deviant)).value;
}

void Subject::set(Deviant deviant, int value) const {
    if (package() != nullptr) {
        package()->setName(deviant, String(std::to_string(value)));
    } else {
        asThingState(fBody->getWriteDeviant(deviant)).value = value;
    }
}

void Subject::setContainer(Deviant deviant, Subject container) const {
    ObjectIntf * const state = fBody->getWriteDeviant(deviant);
    if (package() != nullptr) {
        state->internal_state()->setContainer(container);
    } else {
        asThingState(state).container = container;
    }
}

namespace {

internal::ModelCore & coreOf(MetaModel const & model) {
    return *model.getImplementation()->internal_body()->internal_model();
}

} // namespace

DeviantFixture::DeviantFixture(Kind kind)
    : fAliveBefore(numberAlive()),
      fModel(kind == Kind::Packages ? Factory::createNewModel() : MetaModel()),
      fManager(kind == Kind::Things ? std::make_unique<DeviantManager>() : nullptr),
      manager(fManager != nullptr ? fManager.get() : &coreOf(fModel).internal_deviantManager()) {}

DeviantFixture::~DeviantFixture() {
    endAll();
    EXPECT_EQ(fAliveBefore, numberAlive()) << "states or counts that nobody has released";
}

Subject DeviantFixture::makeBody(bool isSpecial) {
    if (fModel.isValid()) {
        auto const & descriptor = isSpecial ? internal::descriptorOf<NSInterface::ProfileIntf>()
                                            : internal::descriptorOf<NSInterface::PackageIntf>();
        internal::BodyCore & body = *descriptor.createBody();
        coreOf(fModel).adopt(body);
        fBodies.push_back(&body);
    } else {
        fBodies.push_back(isSpecial ? new SpecialThing : new Thing);
    }
    fBodies.back()->incRef();
    return Subject(*fBodies.back());
}

Subject DeviantFixture::make(Deviant deviant, int value, bool isSpecial) {
    Subject const object = makeBody(isSpecial);
    deviant.beginTransaction("make");
    deviant.markObjectCreated(object);
    object->internal_createDeviation(deviant);
    object.set(deviant, value);
    deviant.commitTransaction();
    return object;
}

void DeviantFixture::commitValue(Deviant deviant, Subject object, int value, std::string const & name) {
    deviant.beginTransaction(name);
    object.set(deviant, value);
    deviant.commitTransaction();
}

void DeviantFixture::endAll() {
    fManager.reset();
    fModel = MetaModel();
    for (ClassObjectIntf * const body : std::exchange(fBodies, {})) {
        body->decRef();
    }
}

} // namespace ZEL::tests
