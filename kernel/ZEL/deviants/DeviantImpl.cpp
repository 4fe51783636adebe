#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>
#include <ZEL/deviants/Replay.h>

#include <algorithm>
#include <deque>
#include <exception>
#include <utility>

namespace ZEL::internal {

using Direction = History::Direction;
using Kind = DeviantIdentity::Kind;

namespace {

/// Identities are never freed: a `Deviant` value may outlive everything else.
std::deque<DeviantIdentity> & identities() {
    static auto & all = *new std::deque<DeviantIdentity>;
    return all;
}

} // namespace

DeviantIdentity * knownIdentity(void const * address) noexcept {
    for (DeviantIdentity & identity : identities()) {
        if (&identity == address) {
            return &identity;
        }
    }
    return nullptr;
}

DeviantImpl::DeviantImpl(DeviantManager & owner, std::string name, std::int32_t id, Kind kind)
    : fIdentity(identities().emplace_back()),
      fManager(owner),
      fStates(owner.internal_body()),
      fPhases(owner),
      fTransaction(fIdentity, owner.internal_body()),
      fHistory(fPhases, owner.internal_body(), id == 0),
      fListeners(deviant(), fPhases) {
    fIdentity.id = id;
    fIdentity.kind = kind;
    fIdentity.impl = this;
    fIdentity.root = kind == Kind::LiveRoot ? &fIdentity : owner.getRootDeviant().getIdentity();
    fIdentity.name = std::move(name);
}

DeviantImpl::~DeviantImpl() {
    // What no operation has given back by now has no other owner.
    fStates.destroyAndClear();
    fTransaction.close();
    fHistory.clear();
    fIdentity.kind = Kind::Removed;
    fIdentity.modelDestroyed = true;
    fIdentity.savedStatesVisible = false;
    fIdentity.impl = nullptr;
}

void DeviantImpl::remove() {
    PhaseScope const phase(fPhases);
    std::exception_ptr const failure = fListeners.dismissAll();
    settledHistory().clear();
    fStates.destroyAndClear();
    fIdentity.kind = Kind::Removed;
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

// --- steps -----------------------------------------------------------------------------------------------------------

/// A commit, undo or redo whose observers are running, and what is left to do of it. That is done at the end of the
/// scope, or earlier: when an observer begins work of its own in the deviant. It needs no memory.
class PendingStep {
public:
    /// Of a commit, with its record; or of an undo or redo, with an entry of the history.
    explicit PendingStep(DeviantImpl & deviant, std::unique_ptr<ChangeSet> record, ChangeSet * entry = nullptr,
                         Direction direction = Direction::Undo) noexcept
        : fDeviant(deviant), fRecord(std::move(record)), fEntry(entry), fDirection(direction) {
        fDeviant.fPending = this;
    }
    ~PendingStep() {
        if (fDeviant.fPending == this) {
            finish();
        }
    }
    PendingStep(PendingStep const &) = delete;
    PendingStep & operator=(PendingStep const &) = delete;

    void finish() noexcept {
        fDeviant.fPending = nullptr;
        if (fRecord != nullptr) {
            fDeviant.finishCommit(std::move(fRecord));
        } else {
            fDeviant.fHistory.finishReplay(*fEntry, fDirection);
        }
    }

private:
    DeviantImpl & fDeviant;
    std::unique_ptr<ChangeSet> fRecord;
    ChangeSet * const fEntry;
    Direction const fDirection;
};

History & DeviantImpl::settledHistory() noexcept {
    if (fPending != nullptr) {
        fPending->finish();
    }
    return fHistory;
}

void DeviantImpl::isolateOtherDeviants() {
    if (!isRoot() || fManager.internal_namedDeviants().empty()) {
        return;
    }
    for (StateMap::Entry const & entry : fTransaction.savedStates()) {
        const_cast<ClassObjectIntf *>(entry.key)->deviant_commitTransientState(deviant());
    }
}

void DeviantImpl::dropFollowers(StateMap const & touched) noexcept {
    if (fStates.empty()) {
        return;
    }
    for (StateMap::Entry const & entry : touched) {
        if (fStates.get(entry.key) == Deviant::FallbackToRoot) {
            static_cast<void>(fStates.erase(entry.key));
        }
    }
}

// --- transactions ----------------------------------------------------------------------------------------------------

void DeviantImpl::begin(std::string const & name) { fTransaction.begin(name, settledHistory().level()); }

void DeviantImpl::commit() {
    bool const isOn = fHistory.isOn();
    if (fTransaction.depth() > 1 || fTransaction.savedStates().empty()) {
        fTransaction.endLevel();
    } else if (isOn && !fListeners.empty()) {
        commitWithListeners();
    } else {
        finishCommit(endTransaction(isOn));
    }
}

void DeviantImpl::commitWithListeners() {
    StateMap const & saved = fTransaction.savedStates();
    PhaseScope const phase(fPhases);
    ViewScope view(*this, "<internal: transaction>", fTransaction.savedStates());
    fListeners.runModifiers(view.deviant(), saved);
    if (!isStillCommitting()) {
        return;
    }
    if (ListenerBase * const refusing = fListeners.runValidators(view.deviant(), saved)) {
        if (fTransaction.isOpen()) {
            cancel();
            fTransaction.setRefusedBy(refusing);
        }
        return;
    }
    if (!isStillCommitting()) {
        return;
    }
    fListeners.prepareObservers(view.deviant(), saved);
    if (!isStillCommitting()) {
        return; // a holder has ended the transaction while it was shown the changes
    }
    std::unique_ptr<ChangeSet> record = endTransaction(true);
    StateMap & states = record->states;
    view.read(states);
    PendingStep const pending(*this, std::move(record));
    fListeners.runObservers(view.deviant(), states, fStates);
}

bool DeviantImpl::isStillCommitting() noexcept {
    if (fTransaction.depth() == 1 && !fTransaction.savedStates().empty()) {
        return true;
    }
    // A listener has cancelled or committed, which ends this commit, or has left a transaction open, whose end will be
    // the outermost commit.
    if (fTransaction.isOpen()) {
        fTransaction.endLevel();
    }
    return false;
}

std::unique_ptr<ChangeSet> DeviantImpl::endTransaction(bool isolate) {
    std::unique_ptr<ChangeSet> record = fHistory.takeRecord();
    if (isolate) {
        isolateOtherDeviants();
    }
    fTransaction.endInto(*record);
    return record;
}

void DeviantImpl::finishCommit(std::unique_ptr<ChangeSet> record) noexcept {
    if (!isRoot()) {
        dropFollowers(record->states);
    }
    fHistory.push(std::move(record));
}

void DeviantImpl::commitAll() noexcept {
    while (fTransaction.isOpen()) {
        std::int32_t const depth = fTransaction.depth();
        try {
            commit();
        } catch (...) {
            fTransaction.close();
        }
        if (fTransaction.depth() >= depth) {
            // A listener leaves transactions open time and again.
            fTransaction.close();
        }
    }
}

void DeviantImpl::cancel() {
    if (!fHistory.isOn()) {
        raiseInternalError("cancelTransaction on deviant without undo stack");
    }
    PhaseScope const phase(fPhases);
    StateMap & saved = fTransaction.savedStates();
    if (fManager.internal_replaysPlainly()) {
        // The saved states themselves, so that a cancel needs no memory: often it is the want of it that leads here.
        fTransaction.putBackSavedStates();
    } else {
        ViewScope const view(*this, "<internal: cancelTransaction>", saved);
        replay(ReplayKind::CancelTransaction, collectChanges(saved, deviant(), view.deviant()), deviant(),
               view.deviant());
    }
    if (!isRoot()) {
        dropFollowers(saved);
    }
    if (ListenerBase * const listener = fListeners.called()) {
        fTransaction.setRefusedBy(listener);
    }
    fTransaction.close();
}

// --- undo and redo ---------------------------------------------------------------------------------------------------

void DeviantImpl::step(Direction direction) {
    ChangeSet * const entry = settledHistory().entry(direction, 0);
    if (entry == nullptr) {
        return;
    }
    fTransaction.requireNothingSaved();
    StateMap & left = fTransaction.savedStates();
    PhaseScope const phase(fPhases);
    ViewScope view(*this, "<internal: undo/redo>", entry->states);
    fHistory.beginReplay(direction);
    fTransaction.setWithin(true);
    std::exception_ptr failure;
    try {
        changePlaces(*entry, direction, view.deviant());
        view.read(left);
        try {
            fListeners.prepareObservers(view.deviant(), left);
        } catch (...) {
            // The objects have changed already: the step goes on, whatever a listener has thrown.
            failure = std::current_exception();
        }
        isolateOtherDeviants();
    } catch (...) {
        changePlacesBack(*entry);
        fTransaction.setWithin(false);
        fHistory.abandonReplay(*entry, direction);
        throw;
    }
    // From here on the entry holds the states that have just been left, and the view shows them. Nothing fails but
    // listeners.
    entry->states.swap(left);
    left.destroyAndClear();
    view.read(entry->states);
    fTransaction.setWithin(false);
    PendingStep const pending(*this, nullptr, entry, direction);
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
    fListeners.runObservers(view.deviant(), entry->states, fStates);
}

namespace {

/// In a map of bodies alone: the states of the map go to the root deviant, and those of the root into the map.
void exchangeRootStates(StateMap & states) noexcept {
    states.replaceStates([](StateMap::Key key, StateMap::State state) {
        return const_cast<ClassObjectIntf *>(key)->internal_exchangeRootState(state);
    });
}

bool hasBodiesAlone(StateMap const & states) noexcept {
    return std::all_of(states.begin(), states.end(),
                       [](StateMap::Entry const & entry) { return entry.key->internal_body() != nullptr; });
}

} // namespace

void DeviantImpl::changePlaces(ChangeSet & entry, Direction direction, Deviant view) {
    StateMap & left = fTransaction.savedStates();
    if (fManager.internal_replaysPlainly() && hasBodiesAlone(entry.states)) {
        entry.states.swap(left);
        exchangeRootStates(left);
        return;
    }
    // By way of the client's helper, or of what objects of its own do: with a copy of all that may change.
    left.makeRoom(entry.states.size());
    for (StateMap::Entry const & each : entry.states) {
        static_cast<void>(fTransaction.save(each.key, each.key->deviant_getCopyOfDeviation(deviant())));
    }
    replay(direction == Direction::Undo ? ReplayKind::Undo : ReplayKind::Redo,
           collectChanges(entry.states, deviant(), view), deviant(), view);
}

void DeviantImpl::changePlacesBack(ChangeSet & entry) noexcept {
    StateMap & left = fTransaction.savedStates();
    if (entry.states.empty()) {
        exchangeRootStates(left);
        entry.states.swap(left);
        return;
    }
    fTransaction.putBackSavedStates();
    left.destroyAndClear();
}

// --- views -----------------------------------------------------------------------------------------------------------

ViewScope::ViewScope(DeviantImpl & deviant, char const * name, StateMap & readMap)
    : fDeviant(deviant), fView(take(deviant, name)) {
    fView.fIdentity.kind = Kind::LiveView;
    fView.fReadMap = &readMap;
    fView.fFallbackReadMap = &deviant.fStates;
}

ViewScope::~ViewScope() {
    // A handle that was kept beyond this must find neither map.
    fView.fIdentity.kind = Kind::Removed;
    fView.fReadMap = &fView.fStates;
    fView.fFallbackReadMap = nullptr;
    fView.fStates.destroyAndClear();
    --fDeviant.fViewsInUse;
}

DeviantImpl & ViewScope::take(DeviantImpl & deviant, char const * name) {
    if (deviant.fViewsInUse == deviant.fViews.size()) {
        deviant.fViews.push_back(
            std::make_unique<DeviantImpl>(deviant.fManager, std::string(), -1 - deviant.fIdentity.id, Kind::Removed));
    }
    DeviantImpl & view = *deviant.fViews[deviant.fViewsInUse];
    view.fIdentity.name = name;
    ++deviant.fViewsInUse;
    return view;
}

} // namespace ZEL::internal
