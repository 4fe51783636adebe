#pragma once

#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/History.h>
#include <ZEL/deviants/Listeners.h>
#include <ZEL/deviants/OpenTransaction.h>
#include <ZEL/deviants/Phases.h>
#include <ZEL/deviants/StateMap.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace ZEL {

class DeviantManager;

namespace internal {

class PendingStep;

/// What `address` points at, if that is what a `Deviant` holds, of a living model or not; null for all else, which is
/// not looked at. Linear in the number of deviants that the process has had.
[[nodiscard]] DeviantIdentity * knownIdentity(void const * address) noexcept;

/// The body of a deviant. It belongs to the manager, also after the deviant was removed.
///
/// It owns the deviant's states, its transaction, its history and its listeners, and carries out what takes more than
/// one of them. The operations of `Deviant` check what they are called on and leave the work to it.
class DeviantImpl {
public:
    DeviantImpl(DeviantManager & owner, std::string name, std::int32_t id, DeviantIdentity::Kind kind);
    ~DeviantImpl();
    DeviantImpl(DeviantImpl const &) = delete;
    DeviantImpl & operator=(DeviantImpl const &) = delete;

    [[nodiscard]] Deviant deviant() const noexcept { return Deviant(&fIdentity); }
    [[nodiscard]] DeviantManager & manager() const noexcept { return fManager; }
    [[nodiscard]] std::string const & name() const noexcept { return fIdentity.name; }
    [[nodiscard]] bool isRoot() const noexcept { return fIdentity.id == 0; }
    [[nodiscard]] bool isView() const noexcept { return fIdentity.id < 0; }

    /// The deviant's own states. Empty in the root, whose states are in the bodies.
    [[nodiscard]] StateMap & states() noexcept { return fStates; }
    /// The state stored for the object here, or null; a view looks in its two maps.
    [[nodiscard]] StateMap::State stateOf(StateMap::Key object) const noexcept {
        StateMap::State const state = fReadMap->get(object);
        return state != nullptr || fFallbackReadMap == nullptr ? state : fFallbackReadMap->get(object);
    }
    [[nodiscard]] OpenTransaction & transaction() noexcept { return fTransaction; }
    [[nodiscard]] OpenTransaction const & transaction() const noexcept { return fTransaction; }
    [[nodiscard]] Listeners & listeners() noexcept { return fListeners; }
    [[nodiscard]] Phases & phases() noexcept { return fPhases; }
    /// As observers see it: without the commit, undo or redo whose observers are running.
    [[nodiscard]] History const & history() const noexcept { return fHistory; }
    /// For changes: that step is finished first.
    [[nodiscard]] History & settledHistory() noexcept;
    /// Whether a write must save the state before it.
    [[nodiscard]] bool savesOldStates() const noexcept { return fHistory.isOn() && fTransaction.isOpen(); }

    void begin(std::string const & name);
    void commit();
    /// Ends all levels, whatever listeners do.
    void commitAll() noexcept;
    /// Ends all levels. Throws without undo stack.
    void cancel();
    /// One undo or redo; nothing if there is none.
    void step(History::Direction direction);
    void syncFromRoot();
    void assignToRoot();
    /// What a listener throws is kept until all is done.
    void remove();

private:
    friend class PendingStep;
    friend class ViewScope;

    void commitWithListeners();
    /// What to do after a phase of listeners: false if the commit is over.
    [[nodiscard]] bool isStillCommitting() noexcept;
    /// The record of the transaction, which is over then. Other deviants keep what they have seen so far, if `isolate`.
    [[nodiscard]] std::unique_ptr<ChangeSet> endTransaction(bool isolate);
    void finishCommit(std::unique_ptr<ChangeSet> record) noexcept;
    void isolateOtherDeviants();
    /// Drops the markers of those objects of `touched` that follow the root, so that they take no room.
    void dropFollowers(StateMap const & touched) noexcept;
    /// Gives the objects of the entry its states; the states that they leave go among the saved ones.
    void changePlaces(ChangeSet & entry, History::Direction direction, Deviant view);
    /// Reverses `changePlaces`, however far it has come.
    void changePlacesBack(ChangeSet & entry) noexcept;

    DeviantIdentity & fIdentity; ///< never freed; carries id and name
    DeviantManager & fManager;
    StateMap fStates;
    StateMap * fReadMap = &fStates;
    StateMap * fFallbackReadMap = nullptr;
    Phases fPhases;
    OpenTransaction fTransaction;
    History fHistory;
    Listeners fListeners;
    PendingStep * fPending = nullptr;                 ///< the step whose observers are running
    std::vector<std::unique_ptr<DeviantImpl>> fViews; ///< one per nesting level, used again and again
    std::size_t fViewsInUse = 0;
};

/// A view deviant for the length of one operation. It shows what `readMap` says, then what the deviant itself says.
/// Views of one deviant end in the reverse order of their beginning.
class ViewScope {
public:
    ViewScope(DeviantImpl & deviant, char const * name, StateMap & readMap);
    ~ViewScope();
    ViewScope(ViewScope const &) = delete;
    ViewScope & operator=(ViewScope const &) = delete;

    [[nodiscard]] Deviant deviant() const noexcept { return fView.deviant(); }
    void read(StateMap & map) noexcept { fView.fReadMap = &map; }

private:
    static DeviantImpl & take(DeviantImpl & deviant, char const * name);

    DeviantImpl & fDeviant;
    DeviantImpl & fView;
};

} // namespace internal
} // namespace ZEL
