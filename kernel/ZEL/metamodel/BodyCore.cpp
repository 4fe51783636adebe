#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/base/Exception.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/ModelCore.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/values/ValueObject.h>

#include <cstdlib>
#include <memory>
#include <string>

namespace ZEL::internal {

namespace {

/// Whether the deviant says something of the object: a state of its own, or that it does not exist.
bool isStated(ObjectIntf const * state) noexcept { return state != nullptr && state != Deviant::FallbackToRoot; }

bool isAbsent(ObjectIntf const * state) noexcept { return state == nullptr || state == Deviant::InvalidObject; }

ObjectIntf * sentinel(void * value) noexcept { return static_cast<ObjectIntf *>(value); }

DeviantAssertions assertionsOf(Deviant deviant) { return DeviantAssertions(deviant.getImpl()); }

} // namespace

void BodyCore::dropRootState() noexcept {
    if (fHasRealRootState) {
        delete fRootState;
    }
}

void BodyCore::internal_end(BodyCore & body, std::size_t size) noexcept {
    body.dropRootState();
    body.ReferenceCountingIntf::~ReferenceCountingIntf();
    giveToPool(&body, size);
}

void BodyCore::internal_neverDestroyed() noexcept { std::abort(); }

// --- counting --------------------------------------------------------------------------------------------------------

void BodyCore::decRef() {
    if (fRefCount < 1) {
        raiseInternalError("Decrementing the ref count of a ref with count already 0");
    }
    if (--fRefCount == 0) {
        internal_released();
    }
}

void BodyCore::internal_released() {
    // The numbered bodies of a living model go with it, and so does the factory that it holds.
    if (fModel != nullptr) {
        if (fId >= 0 || fModel->holds(*this)) {
            return;
        }
        fModel->disown(*this);
    }
    delete this;
}

// --- state protocol --------------------------------------------------------------------------------------------------

ObjectIntf * BodyCore::internal_getDeviation(Deviant deviant) const {
    if (deviant.getDeviantId() != 0) {
        return deviant.getStateOfObject(this);
    }
    if (fHasRealRootState) {
        return fRootState;
    }
    return sentinel(static_cast<void *>(fRootState));
}

void BodyCore::forgetViews() const noexcept {
    if (fModel != nullptr && fModel->isViewed()) [[unlikely]] {
        MetaClassView::forget();
    }
}

void BodyCore::setRootState(ObjectIntf * state) const noexcept {
    forgetViews();
    if (Deviant::isRealState(state)) {
        fRootState = state->internal_state();
        fHasRealRootState = true;
    } else {
        // A sentinel is an address and no object: it passes through without a conversion.
        fRootState = static_cast<StateCore *>(static_cast<void *>(state));
        fHasRealRootState = false;
    }
}

ObjectIntf * BodyCore::internal_exchangeRootState(ObjectIntf * state) noexcept {
    ObjectIntf * const former = internal_getDeviation(Deviant());
    setRootState(state);
    return former;
}

ObjectIntf * BodyCore::readStateFromRoot(Deviant deviant) const {
    Deviant const root = deviant.getRootDeviant();
    ObjectIntf * const saved = root.getSavedOldStateOfObject(this);
    return saved != nullptr ? saved : internal_getDeviation(Deviant());
}

void BodyCore::checkAccess(Deviant deviant) const {
    if (static_cast<void *>(fRootState) == Deviant::ModelDestroyed || deviant.hasModelBeenDestroyed()) {
        raiseInternalError("object accessed after its model has been destroyed");
    }
    if (!deviant.isValid()) {
        raiseInternalError("object accessed after its deviant has been removed");
    }
}

bool BodyCore::isValidSlowly(Deviant deviant) const {
    if (static_cast<void *>(fRootState) == Deviant::ModelDestroyed || !deviant.isValid()) {
        return false;
    }
    ObjectIntf * state = internal_getDeviation(deviant);
    if (!isStated(state)) {
        state = readStateFromRoot(deviant);
    }
    return !isAbsent(state);
}

StateCore * BodyCore::readStateSlowly(Deviant deviant) const {
    checkAccess(deviant);
    ObjectIntf * state = nullptr;
    if (deviant.getDeviantId() <= 0 || fHasDeviantEntries) {
        state = internal_getDeviation(deviant);
    }
    if (!isStated(state)) {
        state = readStateFromRoot(deviant);
    }
    if (isAbsent(state) || state == Deviant::FallbackToRoot) {
        assertionsOf(deviant).assertObjectNotPresentInDeviant(this);
    }
    return state->internal_state();
}

StateCore * BodyCore::writeStateSlowly(Deviant deviant) const {
    checkAccess(deviant);
    if (deviant.getDeviantId() < 0) {
        // A view shows what was; it has no place of its own for a state, and is never open.
        assertionsOf(deviant).internal_assertWritable(this);
    }
    assertionsOf(deviant).assertWritable(this);
    ObjectIntf * const present = internal_getDeviation(deviant);
    if (present == Deviant::InvalidObject) {
        assertionsOf(deviant).assertObjectNotPresentInDeviant(this);
    }
    if (isStated(present)) {
        saveOldState(deviant, present);
        forgetViews();
        return present->internal_state();
    }
    ObjectIntf * const seen = readStateFromRoot(deviant);
    if (isAbsent(seen) || !Deviant::isRealState(seen)) {
        assertionsOf(deviant).assertObjectNotPresentInDeviant(this);
    }
    std::unique_ptr<ObjectIntf> own(copyState(seen));
    saveOldState(deviant, present);
    if (deviant.getDeviantId() == 0) {
        setRootState(own.get());
    } else {
        fHasDeviantEntries = true;
        static_cast<void>(deviant.setStateOfObject(this, own.get()));
    }
    return own.release()->internal_state();
}

void BodyCore::saveOldState(Deviant deviant, ObjectIntf * present) const {
    DeviantImpl * const impl = deviant.getImpl();
    if (impl == nullptr || !impl->savesOldStates()) {
        return;
    }
    if (!hasSavedState(*impl)) {
        save(*impl, copyState(present));
    }
    noteSaved(*impl);
}

bool BodyCore::hasSavedState(DeviantImpl & deviant) const {
    OpenTransaction & transaction = deviant.transaction();
    // Most writes are the first to their object, and need not search among all that the transaction has saved.
    bool const isKnownNot = deviant.isRoot() && transaction.isKnownToBodies() && fSavedIn != transaction.number();
    if (!isKnownNot && transaction.savedStates().get(this) != nullptr) {
        return true;
    }
    transaction.savedStates().makeRoom(1);
    return false;
}

void BodyCore::save(DeviantImpl & deviant, ObjectIntf * state) const {
    deviant.transaction().saveKnown(this, state);
    noteSaved(deviant);
}

void BodyCore::noteSaved(DeviantImpl const & deviant) const noexcept {
    if (deviant.isRoot()) {
        fSavedIn = deviant.transaction().number() & kGreatestTransaction;
    }
}

ObjectIntf * BodyCore::copyState(ObjectIntf * state) const {
    if (!Deviant::isRealState(state)) {
        return state;
    }
    ClassDescriptor const & descriptor = internal_descriptor();
    std::unique_ptr<StateCore> copy(descriptor.createState());
    descriptor.assignState(*copy, *state->internal_state());
    return copy.release();
}

void BodyCore::deviant_destroyState(ObjectIntf * state) {
    if (Deviant::isRealState(state)) {
        delete state;
    }
}

void BodyCore::deviant_markModelDestroyed() {
    if (fHasRealRootState) {
        delete fRootState;
    }
    setRootState(sentinel(Deviant::ModelDestroyed));
}

void BodyCore::deviant_commitTransientState(Deviant deviant) {
    if (deviant.getDeviantId() != 0) {
        return;
    }
    ObjectIntf * const old = readStateFromRoot(deviant);
    if (old == nullptr || deviant.getDeviantManager() == nullptr) {
        return;
    }
    for (Deviant const other : deviant.getDeviantManager()->internal_namedDeviants()) {
        ObjectIntf * const saved = other.isWithinTransaction() ? other.getSavedOldStateOfObject(this) : nullptr;
        if (saved == Deviant::FallbackToRoot) {
            // The first deviant that has begun to write the object takes the old state into its own history, and is
            // the last that is served.
            static_cast<void>(other.saveOldStateOfObject(this, copyState(old)));
            return;
        }
        if (!isStated(other.getStateOfObject(this))) {
            fHasDeviantEntries = true;
            other.getImpl()->states().makeRoom(1); // before the copy, which nobody else owns
            static_cast<void>(other.setStateOfObject(this, copyState(old)));
        }
    }
}

ObjectIntf * BodyCore::deviant_getCopyOfDeviation(Deviant deviant) const {
    return copyState(internal_getDeviation(deviant));
}

void BodyCore::internal_setDeviation(Deviant deviant, ObjectIntf * state) {
    ObjectIntf * const present = internal_getDeviation(deviant);
    if (present == state) {
        return;
    }
    if (deviant.getDeviantId() == 0) {
        setRootState(state);
    } else {
        fHasDeviantEntries = true;
        static_cast<void>(deviant.setStateOfObject(this, state));
    }
    deviant_destroyState(present);
}

ObjectIntf * BodyCore::internal_createDeviation(Deviant deviant) {
    if (Deviant::isRealState(internal_getDeviation(deviant))) {
        return nullptr;
    }
    std::unique_ptr<StateCore> state(deviant.getDeviantId() == 0 ? createRootDeviation(deviant)
                                                                 : createDeviation(deviant));
    internal_setDeviation(deviant, state.get());
    return state.release();
}

void BodyCore::internal_destroyDeviation(Deviant deviant) {
    internal_setDeviation(deviant, sentinel(Deviant::InvalidObject));
}

StateCore * BodyCore::createRootDeviation(Deviant deviant) const {
    if (deviant.getDeviantId() != 0) {
        raiseInternalError("no root deviant passed to " + std::string(internal_descriptor().name) +
                           "Impl::createRootDeviation");
    }
    return internal_descriptor().createState();
}

StateCore * BodyCore::createDeviation(Deviant) const { return internal_descriptor().createState(); }

ClassObjectIntf const * BodyCore::internal_container(Deviant deviant) const { return readState(deviant)->container(); }

void BodyCore::internal_noteElement(ObjectIntf * element) const {
    BodyCore * const held = element == nullptr ? nullptr : element->internal_body();
    if (held != nullptr && fModel != nullptr && held->fModel != fModel) {
        fModel->noteForeign(*held);
    }
}

// --- naming ----------------------------------------------------------------------------------------------------------

ImmutableClass BodyCore::getMetaClass(Deviant) const {
    ClassRuntime const & runtime = *internal_descriptor().runtime;
    return ImmutableClass(runtime.metaClass(), runtime.deviant());
}

NSInterface::SeenObject BodyCore::internal_metaType(Deviant) const {
    ClassRuntime const & runtime = *internal_descriptor().runtime;
    return {runtime.metaClass(), runtime.deviant()};
}

Object BodyCore::fromString(Deviant, String const &) { return Object(ValueObject(String())); }

// --- identity and what all objects have ------------------------------------------------------------------------------

void BodyCore::setId(Deviant, Integer const & id) {
    // A body without a number lives by its count alone, so a number is never taken back.
    if (id < 0) {
        raiseInternalError("Internal id value overflow!");
    }
    fId = id;
}

Integer BodyCore::getId(Deviant) const { return Integer(fId); }

Boolean BodyCore::hasModelZEL(Deviant deviant) const { return Boolean(readState(deviant)->hasModel()); }

Model BodyCore::getModelZEL(Deviant deviant) const {
    return Model(readState(deviant)->hasModel() ? fModel : nullptr, deviant);
}

Boolean BodyCore::hasContainerZEL(Deviant deviant) const { return Boolean(readState(deviant)->container() != nullptr); }

ClassObject BodyCore::getContainerZEL(Deviant deviant) const {
    return ClassObject(readState(deviant)->container(), deviant);
}

} // namespace ZEL::internal
