#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantChecks.h>
#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/deviants/Replay.h>

#include <utility>

namespace ZEL {

using internal::DeviantImpl;
using internal::requireDeviant;

void Deviant::beginTransaction(std::string const & name) const {
    DeviantImpl & self = requireDeviant(*this, "beginTransaction on null deviant");
    if (self.isView()) {
        // A view has no place to write to; it is refused in the words of a write.
        DeviantAssertions(&self).internal_assertWritable(nullptr);
    }
    self.begin(name);
}

void Deviant::commitTransaction() const {
    DeviantImpl & self = requireDeviant(*this, "commitTransaction on null deviant");
    if (self.transactionDepth < 1) {
        raiseInternalError("transaction not started");
    }
    self.commit();
}

void Deviant::cancelTransaction() const {
    DeviantImpl & self = requireDeviant(*this, "cancelTransaction on null deviant");
    if (self.transactionDepth == 0) {
        return;
    }
    if (self.maximumUndoStackLength <= 0) {
        raiseInternalError("cancelTransaction on deviant without undo stack");
    }
    self.cancel();
}

ListenerBase * Deviant::getRefusingListener() const noexcept {
    return getImpl() == nullptr ? nullptr : getImpl()->refusedBy;
}

bool Deviant::isWithinTransaction() const noexcept { return getImpl() != nullptr && getImpl()->transactionDepth > 0; }

bool Deviant::isWithinTransactionUndoOrRedo() const noexcept {
    return getImpl() != nullptr && getImpl()->withinTransactionUndoOrRedo;
}

namespace internal {

void DeviantImpl::setDepth(std::int32_t depth) noexcept {
    static std::uint64_t lastTransaction = 0;
    if (depth == 0) {
        identity->openTransaction = 0;
    } else if (transactionDepth == 0) {
        identity->openTransaction = ++lastTransaction;
    }
    transactionDepth = depth;
    identity->savedStatesVisible = depth > 0 || withinTransactionUndoOrRedo;
}

void DeviantImpl::setWithin(bool within) noexcept {
    withinTransactionUndoOrRedo = within;
    identity->savedStatesVisible = within || transactionDepth > 0;
}

void DeviantImpl::begin(std::string const & name) {
    finishPending();
    if (transactionDepth == 0) {
        requireEmptyChangeSet(); // an undo or redo may be under way
        currentChangeSet.name = name;
        currentChangeSet.changeLevel = currentChangeLevel;
        refusedBy = nullptr;
        setWithin(true);
    }
    setDepth(transactionDepth + 1);
}

// --- commit ----------------------------------------------------------------------------------------------------------

void DeviantImpl::commit() {
    if (transactionDepth > 1 || currentChangeSet.states.empty()) {
        setDepth(transactionDepth - 1);
    } else if (maximumUndoStackLength > 0 && hasListeners()) {
        commitWithListeners();
    } else {
        commitWithoutListeners();
    }
}

void DeviantImpl::commitWithoutListeners() {
    std::unique_ptr<ChangeSet> record = takeRecord();
    if (maximumUndoStackLength > 0) {
        isolateOtherDeviants(currentChangeSet.states);
    }
    // Nothing fails from here on.
    endTransaction(*record);
    pushRecord(std::move(record));
}

void DeviantImpl::commitWithListeners() {
    PhaseScope const phase(*this);
    ViewScope view(*this, "<internal: transaction>", currentChangeSet.states);
    runModifiers(view.deviant());
    if (!isStillCommitting() || !runValidators(view.deviant()) || !isStillCommitting()) {
        return;
    }
    prepareListeners(observers, view.deviant(), currentChangeSet.states);
    if (!isStillCommitting()) {
        return; // a holder has ended the transaction while it was shown the changes
    }
    PendingStep step{PendingStep::Kind::Commit, takeRecord(), nullptr};
    isolateOtherDeviants(currentChangeSet.states);
    // The observers may start work of their own in this deviant, so the change set is theirs no more.
    endTransaction(*step.record);
    StateMap & states = step.record->states;
    view.read(states);
    observe(step, view.deviant(), states);
}

bool DeviantImpl::isStillCommitting() {
    if (transactionDepth == 1 && !currentChangeSet.states.empty()) {
        return true;
    }
    // A listener has cancelled or committed, which ends this commit, or has left a transaction open, whose end will be
    // the outermost commit.
    if (transactionDepth > 0) {
        setDepth(transactionDepth - 1);
    }
    return false;
}

void DeviantImpl::isolateOtherDeviants(StateMap const & states) {
    if (!isRoot() || manager->internal_namedDeviants().empty()) {
        return;
    }
    for (StateMap::Entry const & entry : states) {
        const_cast<NSInterface::ClassObjectIntf *>(entry.key)->deviant_commitTransientState(deviant());
    }
}

void DeviantImpl::endTransaction(ChangeSet & record) noexcept {
    record.swap(currentChangeSet);
    setWithin(false);
    setDepth(0);
}

void DeviantImpl::observe(PendingStep & step, Deviant view, StateMap const & states) {
    fPending = &step;
    try {
        runObservers(view, states);
    } catch (...) {
        finishPending();
        throw;
    }
    finishPending();
}

void DeviantImpl::finishPending() noexcept {
    PendingStep * const step = std::exchange(fPending, nullptr);
    if (step == nullptr) {
        return;
    }
    if (step->kind == PendingStep::Kind::Commit) {
        pushRecord(std::move(step->record));
    } else {
        finishReplay(*step->entry, step->kind);
    }
}

void DeviantImpl::pushRecord(std::unique_ptr<ChangeSet> record) noexcept {
    if (!isRoot()) {
        dropFallbackEntries(record->states);
    }
    clearRedo();
    undoStack.push_back(std::move(record));
    if (isRoot()) {
        trim();
    }
    undoPosition = static_cast<std::int32_t>(undoStack.size());
    currentChangeLevel = ++highestChangeLevel;
    if (!isRoot()) {
        clearUndo();
    }
}

// --- cancel ----------------------------------------------------------------------------------------------------------

void DeviantImpl::cancel() {
    PhaseScope const phase(*this);
    if (hasPlainHelper()) {
        // The saved states themselves, so that a cancel needs no memory: often it is the want of it that leads here.
        putBackSavedStates();
    } else {
        ViewScope const view(*this, "<internal: cancelTransaction>", currentChangeSet.states);
        replay(ReplayKind::CancelTransaction, collectChanges(currentChangeSet.states, deviant(), view.deviant()),
               deviant(), view.deviant());
    }
    if (!isRoot()) {
        dropFallbackEntries(currentChangeSet.states);
    }
    if (fCalled != nullptr) {
        refusedBy = fCalled->getListener();
    }
    closeByForce();
}

void DeviantImpl::putBackSavedStates() noexcept {
    currentChangeSet.states.replaceStates([this](StateMap::Key key, StateMap::State saved) -> StateMap::State {
        StateMap::State const present = key->internal_getDeviation(deviant());
        if (present == nullptr && !Deviant::isRealState(saved)) {
            return saved; // nothing has come about that must go
        }
        const_cast<NSInterface::ClassObjectIntf *>(key)->internal_setDeviation(deviant(), saved);
        return nullptr;
    });
}

bool DeviantImpl::hasPlainHelper() const noexcept {
    Replayer const * const replayer = manager->internal_replayer();
    return replayer == nullptr || replayer->isPlain();
}

void DeviantImpl::requireEmptyChangeSet() const {
    if (!currentChangeSet.states.empty()) {
        raiseInternalError("executeChangeSetOnTop: current changeset is not empty");
    }
}

void DeviantImpl::closeByForce() noexcept {
    currentChangeSet.states.destroyAndClear();
    currentChangeSet.name.clear();
    setDepth(0);
}

} // namespace internal
} // namespace ZEL
