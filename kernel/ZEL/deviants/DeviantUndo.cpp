#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantChecks.h>
#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/deviants/Replay.h>

#include <algorithm>
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
    internal::PhaseScope const phase(self); // an observer of a step may let the last handle of the model go
    self.finishPending();
    stepToLevel(
        self, level, "undoToChangeLevel", [&](int i) { return self.undoEntryAt(i); }, [&] { undo(); });
}

void Deviant::redoToChangeLevel(int level) const {
    DeviantImpl & self = requireIdleRoot(*this, "redoToChangeLevel");
    internal::PhaseScope const phase(self); // an observer of a step may let the last handle of the model go
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
                                              : &undoStack[static_cast<std::size_t>(undoPosition - 1 - index)];
}

ChangeSet const * DeviantImpl::redoEntryAt(int index) const noexcept {
    return index < 0 || index >= static_cast<int>(undoStack.size()) - undoPosition
               ? nullptr
               : &undoStack[static_cast<std::size_t>(undoPosition + index)];
}

void DeviantImpl::clearRedo() noexcept {
    finishPending();
    while (static_cast<int>(undoStack.size()) > undoPosition) {
        retire(undoStack.pop_back());
    }
}

void DeviantImpl::clearUndo() noexcept {
    clearRedo();
    undoPosition = 0;
    while (!undoStack.empty()) {
        retire(undoStack.pop_front());
    }
}

void DeviantImpl::setMaximum(std::int32_t length) noexcept {
    finishPending();
    maximumUndoStackLength = length < 0 ? 0 : length;
    trim();
}

void DeviantImpl::trim() noexcept {
    while (static_cast<int>(undoStack.size()) > maximumUndoStackLength) {
        retire(undoStack.pop_front());
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
    requireEmptyChangeSet();
    PhaseScope const phase(*this);
    bool const isUndo = kind == PendingStep::Kind::Undo;
    ChangeSet & entry = undoStack[static_cast<std::size_t>(isUndo ? undoPosition - 1 : undoPosition)];
    ViewScope view(*this, "<internal: undo/redo>", entry.states);
    undoPosition -= isUndo ? 1 : 0;
    setWithin(true);
    std::exception_ptr failure;
    try {
        changePlaces(entry, kind, view.deviant());
        view.read(currentChangeSet.states);
        failure = prepareObserversOfReplay(view.deviant());
        isolateOtherDeviants(currentChangeSet.states);
    } catch (...) {
        changePlacesBack(entry);
        setWithin(false);
        undoPosition += isUndo && isAtDivider(entry) ? 1 : 0;
        throw;
    }
    // From here on the entry holds the states that have just been left, and the view shows them. Nothing fails but
    // listeners.
    entry.states.swap(currentChangeSet.states);
    currentChangeSet.states.destroyAndClear();
    view.read(entry.states);
    setWithin(false);
    if (failure != nullptr) {
        finishReplay(entry, kind);
        std::rethrow_exception(failure);
    }
    PendingStep step{kind, nullptr, &entry};
    observe(step, view.deviant(), entry.states);
}

namespace {

/// In a map of bodies alone: the states of the map go to the root deviant, and those of the root into the map.
void exchangeRootStates(StateMap & states) noexcept {
    states.replaceStates([](StateMap::Key key, StateMap::State state) {
        return const_cast<NSInterface::ClassObjectIntf *>(key)->internal_exchangeRootState(state);
    });
}

bool hasBodiesAlone(StateMap const & states) noexcept {
    return std::all_of(states.begin(), states.end(),
                       [](StateMap::Entry const & entry) { return entry.key->internal_body() != nullptr; });
}

} // namespace

void DeviantImpl::changePlaces(ChangeSet & entry, PendingStep::Kind kind, Deviant view) {
    if (hasPlainHelper() && hasBodiesAlone(entry.states)) {
        entry.states.swap(currentChangeSet.states);
        exchangeRootStates(currentChangeSet.states);
        return;
    }
    // By way of the client's helper, or of what objects of its own do: with a copy of all that may change.
    currentChangeSet.states.makeRoom(entry.states.size());
    for (StateMap::Entry const & each : entry.states) {
        static_cast<void>(saveOldState(each.key, each.key->deviant_getCopyOfDeviation(deviant())));
    }
    replay(kind == PendingStep::Kind::Undo ? ReplayKind::Undo : ReplayKind::Redo,
           collectChanges(entry.states, deviant(), view), deviant(), view);
}

void DeviantImpl::changePlacesBack(ChangeSet & entry) noexcept {
    if (entry.states.empty()) {
        exchangeRootStates(currentChangeSet.states);
        entry.states.swap(currentChangeSet.states);
        return;
    }
    putBackSavedStates();
    currentChangeSet.states.destroyAndClear();
}

std::exception_ptr DeviantImpl::prepareObserversOfReplay(Deviant view) {
    try {
        prepareListeners(observers, view, currentChangeSet.states);
    } catch (...) {
        // The objects have changed already: the step goes on, whatever a listener has thrown.
        return std::current_exception();
    }
    return nullptr;
}

bool DeviantImpl::isAtDivider(ChangeSet const & entry) const noexcept {
    return undoPosition < static_cast<int>(undoStack.size()) &&
           &undoStack[static_cast<std::size_t>(undoPosition)] == &entry;
}

void DeviantImpl::finishReplay(ChangeSet & entry, PendingStep::Kind kind) noexcept {
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
