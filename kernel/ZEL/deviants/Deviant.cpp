#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantChecks.h>
#include <ZEL/deviants/DeviantManager.h>

#include <exception>

namespace ZEL {

using internal::DeviantImpl;
using internal::requireDeviant;
using internal::sentinel;
using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

// Static initialisers of other files already build models.
constinit void * const Deviant::InvalidObject = const_cast<void **>(&Deviant::InvalidObject);
constinit void * const Deviant::FallbackToRoot = const_cast<void **>(&Deviant::FallbackToRoot);
constinit void * const Deviant::ModelDestroyed = const_cast<void **>(&Deviant::ModelDestroyed);

// --- identity --------------------------------------------------------------------------------------------------------

std::string Deviant::getName() const { return fIdentity == nullptr ? "default unnamed root deviant" : fIdentity->name; }

DeviantManager * Deviant::getDeviantManager() const noexcept {
    return getImpl() == nullptr ? nullptr : getImpl()->manager;
}

Deviant Deviant::getRootDeviant() const noexcept {
    return getImpl() == nullptr ? Deviant() : getImpl()->manager->getRootDeviant();
}

std::vector<Deviant> Deviant::getAllDeviants() const {
    return getImpl() == nullptr ? std::vector<Deviant>() : getImpl()->manager->getDeviants();
}

StateMap const * Deviant::getObjectsDeviatingFromRoot() const noexcept {
    return getImpl() == nullptr ? nullptr : &getImpl()->objects;
}

NSInterface::ModelIntf * Deviant::internal_model() const {
    return requireDeviant(*this, "getModel on null deviant").manager->getModelIntf();
}

// --- states ----------------------------------------------------------------------------------------------------------

ObjectIntf * Deviant::getStateOfObject(ClassObjectIntf const * object) const {
    DeviantImpl const * const impl = getImpl();
    if (impl == nullptr) {
        return nullptr;
    }
    ObjectIntf * const state = impl->readMap->get(object);
    if (state != nullptr || impl->fallbackReadMap == nullptr) {
        return state;
    }
    return impl->fallbackReadMap->get(object);
}

ObjectIntf * Deviant::setStateOfObject(ClassObjectIntf const * object, ObjectIntf * state) const {
    return getImpl() == nullptr ? nullptr : getImpl()->objects.set(object, state);
}

ObjectIntf * Deviant::getSavedOldStateOfObject(ClassObjectIntf const * object) const {
    if (fIdentity == nullptr || !fIdentity->savedStatesVisible) {
        return nullptr;
    }
    return fIdentity->impl->currentChangeSet.states.get(object);
}

ObjectIntf * Deviant::saveOldStateOfObject(ClassObjectIntf const * object, ObjectIntf * state) const {
    return isWithinTransaction() ? getImpl()->saveOldState(object, state) : nullptr;
}

namespace {

void requireObject(ClassObjectIntf const * object) {
    if (object == nullptr) {
        raiseNullReference();
    }
}

/// Whether the deviant has ever said anything of the object.
bool knows(DeviantImpl const & deviant, ClassObjectIntf const * object) {
    return deviant.readMap->get(object) != nullptr ||
           (deviant.fallbackReadMap != nullptr && deviant.fallbackReadMap->get(object) != nullptr);
}

} // namespace

void Deviant::markObjectCreated(ClassObjectIntf * object) const {
    DeviantImpl & self = requireDeviant(*this, "markObjectCreated on null deviant");
    requireObject(object);
    DeviantManager & manager = *self.manager;
    auto const check = [&](DeviantImpl const & other) {
        if (&other != &self && knows(other, object)) {
            DeviantAssertions(&self).assertObjectAlreadyCreated(object);
        }
    };
    check(manager.internal_root());
    for (Deviant const other : manager.internal_namedDeviants()) {
        check(*other.getImpl());
    }
    if (self.transactionDepth > 0) {
        self.replaceOldState(object, sentinel(InvalidObject));
    }
    if (!self.isRoot() || manager.internal_hasNullEntries()) {
        // A name without a deviant counts as the root here.
        object->internal_setDeviation(self.isRoot() ? Deviant() : manager.getRootDeviant(), sentinel(InvalidObject));
    }
    for (Deviant const other : manager.internal_namedDeviants()) {
        if (other != *this) {
            object->internal_setDeviation(other, sentinel(InvalidObject));
        }
    }
}

bool Deviant::willCauseCompositionCycles(ClassObjectIntf const * a, ClassObjectIntf const * b) const {
    if (a == nullptr || b == nullptr) {
        raiseInternalError("null objects passed to Deviant::willCauseCompositionCycles");
    }
    // Containments of a deviant and of the root can have combined to a ring that `b` is not in; `mark` follows in jumps
    // of doubling length and finds it.
    ClassObjectIntf const * mark = nullptr;
    std::size_t steps = 0;
    std::size_t nextMark = 1;
    for (ClassObjectIntf const * object = a; object != nullptr; object = object->internal_container(*this)) {
        if (object == b || object == mark) {
            return true;
        }
        if (++steps == nextMark) {
            mark = object;
            nextMark *= 2;
        }
    }
    return false;
}

namespace {

/// The checks of the notify operations; `operation` is the name of the one.
DeviantImpl & requireRootForNotify(Deviant deviant, char const * operation, ClassObjectIntf const * object) {
    DeviantImpl & self = requireDeviant(deviant, (std::string(operation) + " on null deviant").c_str());
    DeviantAssertions(&self).assertWritable(object);
    if (!self.isRoot()) {
        raiseInternalError(std::string(operation) + " on non root deviant");
    }
    requireObject(object);
    return self;
}

void saveByHand(DeviantImpl & self, ClassObjectIntf const * object) {
    if (self.transactionDepth > 0) {
        self.currentChangeSet.states.makeRoom(1); // before the copy, which nobody else owns
        self.replaceOldState(object, object->deviant_getCopyOfDeviation(self.deviant()));
    }
}

} // namespace

void Deviant::notifyObjectIsAboutToChange(ClassObjectIntf const * object) const {
    saveByHand(requireRootForNotify(*this, "notifyObjectIsAboutToChange", object), object);
}

void Deviant::notifyObjectIsAboutToBeDeleted(ClassObjectIntf const * object) const {
    saveByHand(requireRootForNotify(*this, "notifyObjectIsAboutToBeDeleted", object), object);
}

void Deviant::notifyObjectHasBeenAdded(ClassObjectIntf const * object) const {
    requireRootForNotify(*this, "notifyObjectHasBeenAdded", object);
    markObjectCreated(const_cast<ClassObjectIntf *>(object));
}

void Deviant::remove() const {
    DeviantImpl & self = requireDeviant(*this, "Deviant::remove on null deviant");
    if (self.transactionDepth != 0) {
        raiseInternalError("cannot remove deviant when it is within a transaction");
    }
    if (self.isRoot() || self.isView()) {
        raiseAnInternalError(); // a model cannot be without its root, and a view ends by itself
    }
    self.remove();
}

namespace internal {

ObjectIntf * DeviantImpl::saveOldState(ClassObjectIntf const * object, ObjectIntf * state) {
    return currentChangeSet.states.set(object, state != nullptr ? state : sentinel(Deviant::FallbackToRoot));
}

void DeviantImpl::replaceOldState(ClassObjectIntf const * object, ObjectIntf * state) {
    ObjectIntf * const former = saveOldState(object, state);
    if (former != state) {
        const_cast<ClassObjectIntf *>(object)->deviant_destroyState(former);
    }
}

bool DeviantImpl::saveCopyOnce(ClassObjectIntf const * object) {
    if (currentChangeSet.states.get(object) != nullptr) {
        return false;
    }
    currentChangeSet.states.makeRoom(1); // before the copy, which nobody else owns
    static_cast<void>(saveOldState(object, object->deviant_getCopyOfDeviation(deviant())));
    return true;
}

void DeviantImpl::forgetOldState(ClassObjectIntf const * object) noexcept {
    auto * const body = const_cast<ClassObjectIntf *>(object);
    body->deviant_destroyState(currentChangeSet.states.get(object));
    static_cast<void>(currentChangeSet.states.erase(object));
}

void DeviantImpl::dropFallbackEntries(StateMap const & touched) noexcept {
    if (objects.empty()) {
        return;
    }
    for (StateMap::Entry const & entry : touched) {
        if (objects.get(entry.key) == Deviant::FallbackToRoot) {
            static_cast<void>(objects.erase(entry.key));
        }
    }
}

void DeviantImpl::remove() {
    PhaseScope const phase(*this);
    std::exception_ptr failure;
    for (HolderList * const list : {&modifiers, &validators, &observers}) {
        try {
            dropHolders(*list);
        } catch (...) {
            failure = std::current_exception();
        }
    }
    clearRedo();
    clearUndo();
    objects.destroyAndClear();
    identity->kind = DeviantIdentity::Kind::Removed;
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

} // namespace internal
} // namespace ZEL
