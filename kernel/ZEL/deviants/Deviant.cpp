#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>

#include <string>

namespace ZEL {

using internal::DeviantImpl;
using internal::ListenerHolderBase;
using Direction = internal::History::Direction;
using Role = internal::Listeners::Role;
using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

// Static initialisers of other files already build models.
constinit void * const Deviant::InvalidObject = const_cast<void **>(&Deviant::InvalidObject);
constinit void * const Deviant::FallbackToRoot = const_cast<void **>(&Deviant::FallbackToRoot);
constinit void * const Deviant::ModelDestroyed = const_cast<void **>(&Deviant::ModelDestroyed);

namespace {

ObjectIntf * sentinel(void * value) noexcept { return static_cast<ObjectIntf *>(value); }

/// The body of the deviant. Throws "`operation` on null deviant", and the text of a dead model once the manager has
/// gone.
DeviantImpl & require(Deviant deviant, char const * operation) {
    if (!deviant.isNotNull()) {
        raiseInternalError(std::string(operation) + " on null deviant");
    }
    if (deviant.getImpl() == nullptr) {
        raiseInternalError("object accessed after its model has been destroyed");
    }
    return *deviant.getImpl();
}

} // namespace

// --- identity --------------------------------------------------------------------------------------------------------

std::string Deviant::getName() const { return fIdentity == nullptr ? "default unnamed root deviant" : fIdentity->name; }

DeviantManager * Deviant::getDeviantManager() const noexcept {
    return getImpl() == nullptr ? nullptr : &getImpl()->manager();
}

Deviant Deviant::getRootDeviant() const noexcept {
    return getImpl() == nullptr ? Deviant() : getImpl()->manager().getRootDeviant();
}

std::vector<Deviant> Deviant::getAllDeviants() const {
    return getImpl() == nullptr ? std::vector<Deviant>() : getImpl()->manager().getDeviants();
}

StateMap const * Deviant::getObjectsDeviatingFromRoot() const noexcept {
    return getImpl() == nullptr ? nullptr : &getImpl()->states();
}

NSInterface::ModelIntf * Deviant::internal_model() const { return require(*this, "getModel").manager().getModelIntf(); }

// --- states ----------------------------------------------------------------------------------------------------------

ObjectIntf * Deviant::getStateOfObject(ClassObjectIntf const * object) const {
    return getImpl() == nullptr ? nullptr : getImpl()->stateOf(object);
}

ObjectIntf * Deviant::setStateOfObject(ClassObjectIntf const * object, ObjectIntf * state) const {
    return getImpl() == nullptr ? nullptr : getImpl()->states().set(object, state);
}

ObjectIntf * Deviant::getSavedOldStateOfObject(ClassObjectIntf const * object) const {
    bool const isVisible = fIdentity != nullptr && fIdentity->savedStatesVisible;
    return isVisible ? fIdentity->impl->transaction().savedStates().get(object) : nullptr;
}

ObjectIntf * Deviant::saveOldStateOfObject(ClassObjectIntf const * object, ObjectIntf * state) const {
    return isWithinTransaction() ? getImpl()->transaction().save(object, state) : nullptr;
}

namespace {

void requireObject(ClassObjectIntf const * object) {
    if (object == nullptr) {
        raiseNullReference();
    }
}

} // namespace

void Deviant::markObjectCreated(ClassObjectIntf * object) const {
    DeviantImpl & self = require(*this, "markObjectCreated");
    requireObject(object);
    DeviantManager & manager = self.manager();
    auto const check = [&](DeviantImpl const & other) {
        if (&other != &self && other.stateOf(object) != nullptr) {
            DeviantAssertions(&self).assertObjectAlreadyCreated(object);
        }
    };
    check(manager.internal_root());
    for (Deviant const other : manager.internal_namedDeviants()) {
        check(*other.getImpl());
    }
    if (self.transaction().isOpen()) {
        self.transaction().saveOver(object, sentinel(InvalidObject));
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
    DeviantImpl & self = require(deviant, operation);
    DeviantAssertions(&self).assertWritable(object);
    if (!self.isRoot()) {
        raiseInternalError(std::string(operation) + " on non root deviant");
    }
    requireObject(object);
    return self;
}

void saveByHand(DeviantImpl & self, ClassObjectIntf const * object) {
    if (self.transaction().isOpen()) {
        self.transaction().savedStates().makeRoom(1); // before the copy, which nobody else owns
        self.transaction().saveOver(object, object->deviant_getCopyOfDeviation(self.deviant()));
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

// --- transactions ----------------------------------------------------------------------------------------------------

void Deviant::beginTransaction(std::string const & name) const {
    DeviantImpl & self = require(*this, "beginTransaction");
    if (self.isView()) {
        // A view has no place to write to; it is refused in the words of a write.
        DeviantAssertions(&self).internal_assertWritable(nullptr);
    }
    self.begin(name);
}

void Deviant::commitTransaction() const {
    DeviantImpl & self = require(*this, "commitTransaction");
    if (!self.transaction().isOpen()) {
        raiseInternalError("transaction not started");
    }
    self.commit();
}

void Deviant::cancelTransaction() const {
    DeviantImpl & self = require(*this, "cancelTransaction");
    if (self.transaction().isOpen()) {
        self.cancel();
    }
}

ListenerBase * Deviant::getRefusingListener() const noexcept {
    return getImpl() == nullptr ? nullptr : getImpl()->transaction().refusedBy();
}

bool Deviant::isWithinTransactionUndoOrRedo() const noexcept {
    return getImpl() != nullptr && getImpl()->transaction().isWithin();
}

// --- undo and redo ---------------------------------------------------------------------------------------------------

namespace {

/// The checks of all operations that work on the history of the root.
DeviantImpl & requireIdleRoot(Deviant deviant, char const * operation) {
    DeviantImpl & self = require(deviant, operation);
    if (self.transaction().isOpen()) {
        raiseInternalError(std::string("cannot ") + operation + " within a transaction");
    }
    if (!self.isRoot()) {
        raiseInternalError(std::string(operation) + " on non-root deviant");
    }
    return self;
}

std::string nameOf(ChangeSet const * entry) { return entry == nullptr ? std::string() : entry->name; }

int levelOf(ChangeSet const * entry) { return entry == nullptr ? -1 : entry->changeLevel; }

/// Steps until `level` is current. Observers may change the history between two steps: a step is made only while the
/// level is still ahead, and must bring it nearer.
void stepToLevel(Deviant deviant, int level, Direction direction, char const * operation) {
    DeviantImpl & self = requireIdleRoot(deviant, operation);
    internal::PhaseScope const phase(self.phases()); // an observer of a step may let the last handle of the model go
    internal::History const & history = self.settledHistory();
    int remaining = -1;
    while (history.level() != level) {
        // Mostly the last step has brought it nearer by one; otherwise it is searched for anew.
        int distance = remaining > 0 && levelOf(history.entry(direction, remaining - 1)) == level ? remaining - 1 : 0;
        ChangeSet const * entry = history.entry(direction, distance);
        while (entry != nullptr && entry->changeLevel != level) {
            entry = history.entry(direction, ++distance);
        }
        if (entry == nullptr || (remaining >= 0 && distance >= remaining)) {
            raiseInternalError(std::string("invalid change level for ") + operation);
        }
        remaining = distance;
        direction == Direction::Undo ? deviant.undo() : deviant.redo();
    }
}

} // namespace

void Deviant::undo() const { requireIdleRoot(*this, "undo").step(Direction::Undo); }

void Deviant::redo() const { requireIdleRoot(*this, "redo").step(Direction::Redo); }

void Deviant::undoToChangeLevel(int level) const { stepToLevel(*this, level, Direction::Undo, "undoToChangeLevel"); }

void Deviant::redoToChangeLevel(int level) const { stepToLevel(*this, level, Direction::Redo, "redoToChangeLevel"); }

int Deviant::getCurrentChangeLevel() const { return require(*this, "getCurrentChangeLevel").history().level(); }

int Deviant::getMaximumUndoStackLength() const noexcept {
    return getImpl() == nullptr ? 0 : getImpl()->history().maximum();
}

bool Deviant::hasUndoStack() const noexcept { return getMaximumUndoStackLength() > 0; }

int Deviant::getUndoStackLength() const { return require(*this, "getUndoStackLength").history().undoLength(); }

int Deviant::getRedoStackLength() const { return require(*this, "getRedoStackLength").history().redoLength(); }

std::string Deviant::getUndoNameAt(int index) const {
    return nameOf(require(*this, "getUndoNameAt").history().entry(Direction::Undo, index));
}

int Deviant::getUndoChangeLevelAt(int index) const {
    return levelOf(require(*this, "getUndoChangeLevelAt").history().entry(Direction::Undo, index));
}

std::string Deviant::getRedoNameAt(int index) const {
    return nameOf(require(*this, "getNameOfRedo").history().entry(Direction::Redo, index));
}

int Deviant::getRedoChangeLevelAt(int index) const {
    return levelOf(require(*this, "getRedoChangeLevelAt").history().entry(Direction::Redo, index));
}

void Deviant::setMaximumUndoStackLength(int length) const {
    requireIdleRoot(*this, "setMaximumUndoStackLength").settledHistory().setMaximum(length);
}

void Deviant::clearUndoStack() const { require(*this, "clearUndoStack").settledHistory().clear(); }

void Deviant::clearRedoStack() const { require(*this, "clearRedoStack").settledHistory().clearRedo(); }

void Deviant::disableUndo() const { require(*this, "disableUndo").settledHistory().disable(); }

// --- root and named deviants -----------------------------------------------------------------------------------------

namespace {

/// The checks of the operations between a named deviant and the root.
DeviantImpl & requireNamed(Deviant deviant, char const * operation) {
    DeviantImpl & self = require(deviant, operation);
    if (self.isRoot()) {
        raiseInternalError(std::string(operation) + " on root deviant");
    }
    return self;
}

} // namespace

void Deviant::syncFromRoot() const {
    DeviantImpl & self = requireNamed(*this, "syncFromRoot");
    if (!self.transaction().isOpen()) {
        raiseInternalError("syncFromRoot outside a transaction");
    }
    self.syncFromRoot();
}

void Deviant::assignToRoot() const {
    DeviantImpl & self = requireNamed(*this, "assignToRoot");
    DeviantImpl & root = self.manager().internal_root();
    if (!root.transaction().isOpen()) {
        raiseInternalError("assignToRoot outside a transaction");
    }
    DeviantAssertions(&root).assertWritable(nullptr);
    self.assignToRoot();
}

void Deviant::remove() const {
    DeviantImpl & self = require(*this, "Deviant::remove");
    if (self.transaction().isOpen()) {
        raiseInternalError("cannot remove deviant when it is within a transaction");
    }
    if (self.isRoot() || self.isView()) {
        raiseAnInternalError(); // a model cannot be without its root, and a view ends by itself
    }
    self.remove();
}

// --- listeners -------------------------------------------------------------------------------------------------------

namespace {

void enlist(Deviant deviant, Role role, ListenerHolderBase * holder) {
    require(deviant, "registerListener").listeners().enlist(role, holder);
}

void dismiss(Deviant deviant, Role role, ListenerBase const * listener) {
    DeviantImpl & self = require(deviant, "unregisterListener");
    if (listener == nullptr) {
        raiseInternalError("cannot unregister null listener with deviant");
    }
    self.listeners().dismiss(role, listener);
}

} // namespace

void Deviant::registerModifierOnCommit(ListenerHolderBase * holder) const { enlist(*this, Role::Modifier, holder); }

void Deviant::registerValidatorOnCommit(ListenerHolderBase * holder) const { enlist(*this, Role::Validator, holder); }

void Deviant::registerObservingListener(ListenerHolderBase * holder) const { enlist(*this, Role::Observer, holder); }

void Deviant::unregisterModifierOnCommit(ListenerBase * listener) const { dismiss(*this, Role::Modifier, listener); }

void Deviant::unregisterValidatorOnCommit(ListenerBase * listener) const { dismiss(*this, Role::Validator, listener); }

void Deviant::unregisterObservingListener(ListenerBase * listener) const { dismiss(*this, Role::Observer, listener); }

} // namespace ZEL
