#include <ZEL/ChangeReport.h>
#include <ZEL/Deviant.h>
#include <ZEL/DeviantChecks.h>
#include <ZEL/DeviantManager.h>
#include <ZEL/metamodel/ClassObjectIntf.h>

#include <exception>
#include <string>
#include <utility>

namespace ZEL {

using internal::DeviantImpl;
using internal::requireDeviant;

namespace {

/// The checks of all operations that work on the history of the root.
DeviantImpl & requireIdleRoot(Deviant deviant, std::string const & operation) {
    DeviantImpl & self = requireDeviant(deviant, (operation + " on null deviant").c_str());
    if (self.transactionDepth != 0) {
        raiseInternalError("cannot " + operation + " within a transaction");
    }
    if (!self.isRoot()) {
        raiseInternalError(operation + " on non-root deviant");
    }
    return self;
}

std::string nameOf(ChangeSet const * entry) { return entry == nullptr ? std::string() : entry->name; }

int levelOf(ChangeSet const * entry) { return entry == nullptr ? -1 : entry->changeLevel; }

} // namespace

void Deviant::undo() const { requireIdleRoot(*this, "undo").undo(); }

void Deviant::redo() const { requireIdleRoot(*this, "redo").redo(); }

namespace {

/// Steps until `level` is current. Observers may change the stack between two steps: a step is made only while the
/// level is still ahead, and must bring it nearer.
template <class EntryAt, class Step>
void stepToLevel(DeviantImpl & self, int level, std::string const & operation, EntryAt entryAt, Step step) {
    int remaining = -1;
    while (self.currentChangeLevel != level) {
        // Mostly the last step has brought it nearer by one; otherwise it is searched for anew.
        int distance = remaining > 0 && levelOf(entryAt(remaining - 1)) == level ? remaining - 1 : 0;
        while (entryAt(distance) != nullptr && entryAt(distance)->changeLevel != level) {
            ++distance;
        }
        if (entryAt(distance) == nullptr || (remaining >= 0 && distance >= remaining)) {
            raiseInternalError("invalid change level for " + operation);
        }
        remaining = distance;
        step();
    }
}

} // namespace

void Deviant::undoToChangeLevel(int level) const {
    DeviantImpl & self = requireIdleRoot(*this, "undoToChangeLevel");
    self.finishPending();
    stepToLevel(
        self, level, "undoToChangeLevel", [&](int i) { return self.undoEntryAt(i); }, [&] { undo(); });
}

void Deviant::redoToChangeLevel(int level) const {
    DeviantImpl & self = requireIdleRoot(*this, "redoToChangeLevel");
    self.finishPending();
    stepToLevel(
        self, level, "redoToChangeLevel", [&](int i) { return self.redoEntryAt(i); }, [&] { redo(); });
}

int Deviant::getCurrentChangeLevel() const {
    return requireDeviant(*this, "getCurrentChangeLevel on null deviant").currentChangeLevel;
}

int Deviant::getMaximumUndoStackLength() const noexcept {
    return getImpl() == nullptr ? 0 : getImpl()->maximumUndoStackLength;
}

bool Deviant::hasUndoStack() const noexcept { return getMaximumUndoStackLength() > 0; }

int Deviant::getUndoStackLength() const {
    return requireDeviant(*this, "getUndoStackLength on null deviant").undoPosition;
}

int Deviant::getRedoStackLength() const {
    DeviantImpl const & self = requireDeviant(*this, "getRedoStackLength on null deviant");
    return static_cast<int>(self.undoStack.size()) - self.undoPosition;
}

std::string Deviant::getUndoNameAt(int index) const {
    return nameOf(requireDeviant(*this, "getUndoNameAt on null deviant").undoEntryAt(index));
}

int Deviant::getUndoChangeLevelAt(int index) const {
    return levelOf(requireDeviant(*this, "getUndoChangeLevelAt on null deviant").undoEntryAt(index));
}

std::string Deviant::getRedoNameAt(int index) const {
    return nameOf(requireDeviant(*this, "getNameOfRedo on null deviant").redoEntryAt(index));
}

int Deviant::getRedoChangeLevelAt(int index) const {
    return levelOf(requireDeviant(*this, "getRedoChangeLevelAt on null deviant").redoEntryAt(index));
}

void Deviant::setMaximumUndoStackLength(int length) const {
    requireIdleRoot(*this, "setMaximumUndoStackLength").setMaximum(length);
}

void Deviant::clearUndoStack() const { requireDeviant(*this, "clearUndoStack on null deviant").clearUndo(); }

void Deviant::clearRedoStack() const { requireDeviant(*this, "clearRedoStack on null deviant").clearRedo(); }

void Deviant::disableUndo() const {
    DeviantImpl & self = requireDeviant(*this, "disableUndo on null deviant");
    self.clearUndo();
    self.maximumUndoStackLength = 0;
}

namespace internal {

// --- stack -----------------------------------------------------------------------------------------------------------

ChangeSet const * DeviantImpl::undoEntryAt(int index) const noexcept {
    return index < 0 || index >= undoPosition ? nullptr
                                              : undoStack[static_cast<std::size_t>(undoPosition - 1 - index)].get();
}

ChangeSet const * DeviantImpl::redoEntryAt(int index) const noexcept {
    return index < 0 || index >= static_cast<int>(undoStack.size()) - undoPosition
               ? nullptr
               : undoStack[static_cast<std::size_t>(undoPosition + index)].get();
}

void DeviantImpl::clearRedo() {
    finishPending();
    while (static_cast<int>(undoStack.size()) > undoPosition) {
        std::unique_ptr<ChangeSet> entry = std::move(undoStack.back());
        undoStack.pop_back();
        retire(std::move(entry));
    }
}

void DeviantImpl::clearUndo() {
    clearRedo();
    undoPosition = 0;
    while (!undoStack.empty()) {
        std::unique_ptr<ChangeSet> entry = std::move(undoStack.front());
        undoStack.pop_front();
        retire(std::move(entry));
    }
}

void DeviantImpl::setMaximum(std::int32_t length) {
    finishPending();
    maximumUndoStackLength = length < 0 ? 0 : length;
    trim();
}

void DeviantImpl::trim() {
    while (static_cast<int>(undoStack.size()) > maximumUndoStackLength) {
        std::unique_ptr<ChangeSet> entry = std::move(undoStack.front());
        undoStack.pop_front();
        retire(std::move(entry));
    }
    // Entries gone from the old end do not shift the divider.
    if (undoPosition > static_cast<int>(undoStack.size())) {
        undoPosition = static_cast<std::int32_t>(undoStack.size());
    }
}

// --- replay ----------------------------------------------------------------------------------------------------------

void DeviantImpl::undo() {
    finishPending();
    if (undoPosition != 0) {
        runEntry(PendingStep::Kind::Undo);
    }
}

void DeviantImpl::redo() {
    finishPending();
    if (undoPosition != static_cast<int>(undoStack.size())) {
        runEntry(PendingStep::Kind::Redo);
    }
}

void DeviantImpl::runEntry(PendingStep::Kind kind) {
    if (!currentChangeSet.states.empty()) {
        raiseInternalError("executeChangeSetOnTop: current changeset is not empty");
    }
    PhaseScope const phase(*this);
    if (kind == PendingStep::Kind::Undo) {
        --undoPosition;
    }
    ChangeSet & entry = *undoStack[static_cast<std::size_t>(undoPosition)];
    ViewScope view(*this, "<internal: undo/redo>", entry.states);
    try {
        takeSnapshot(entry.states);
        setWithin(true);
        replay(kind == PendingStep::Kind::Undo ? ReplayKind::Undo : ReplayKind::Redo,
               collectChanges(entry.states, deviant(), view.deviant()), deviant(), view.deviant());
    } catch (...) {
        // The entry has not been run to its end and stays where it was, and so do the objects.
        restoreSnapshot();
        setWithin(false);
        if (kind == PendingStep::Kind::Undo && isAtDivider(entry)) {
            ++undoPosition;
        }
        throw;
    }
    PendingStep step{kind, nullptr, &entry};
    std::exception_ptr const failure = prepareObserversOfReplay(view);
    // From here on the entry holds the states that have just been left, and the view shows them.
    entry.states.swap(currentChangeSet.states);
    currentChangeSet.states.destroyAndClear();
    view.read(entry.states);
    setWithin(false);
    if (failure != nullptr) {
        finishReplay(entry, kind);
        std::rethrow_exception(failure);
    }
    observe(step, view.deviant(), entry.states);
}

void DeviantImpl::takeSnapshot(StateMap const & states) {
    for (StateMap::Entry const & entry : states) {
        static_cast<void>(saveOldState(entry.key, entry.key->deviant_getCopyOfDeviation(deviant())));
    }
}

void DeviantImpl::restoreSnapshot() {
    for (StateMap::Entry const & entry : currentChangeSet.states) {
        const_cast<NSInterface::ClassObjectIntf *>(entry.key)->internal_setDeviation(deviant(), entry.state);
    }
    currentChangeSet.states.clear();
}

std::exception_ptr DeviantImpl::prepareObserversOfReplay(ViewScope & view) {
    view.read(currentChangeSet.states);
    std::exception_ptr failure;
    try {
        prepareListeners(observers, view.deviant(), currentChangeSet.states);
    } catch (...) {
        failure = std::current_exception();
    }
    // The state has changed already, so the other deviants are served whatever a listener has thrown.
    isolateOtherDeviants(currentChangeSet.states);
    return failure;
}

bool DeviantImpl::isAtDivider(ChangeSet const & entry) const noexcept {
    return undoPosition < static_cast<int>(undoStack.size()) &&
           undoStack[static_cast<std::size_t>(undoPosition)].get() == &entry;
}

void DeviantImpl::finishReplay(ChangeSet & entry, PendingStep::Kind kind) {
    if (!isAtDivider(entry)) {
        return;
    }
    std::swap(entry.changeLevel, currentChangeLevel);
    if (kind == PendingStep::Kind::Redo) {
        ++undoPosition;
    }
}

} // namespace internal
} // namespace ZEL
