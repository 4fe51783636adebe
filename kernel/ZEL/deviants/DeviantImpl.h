#pragma once

#include <ZEL/deviants/ChangeSet.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ListenerHolderBase.h>
#include <ZEL/deviants/UndoStack.h>

#include <cstdint>
#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace ZEL {

class DeviantManager;

namespace internal {

class ViewScope;
class CallScope;

/// What `address` points at, if that is what a `Deviant` holds, of a living model or not; null for all else, which is not
/// looked at. Linear in the number of deviants that the process has had.
[[nodiscard]] DeviantIdentity * knownIdentity(void const * address) noexcept;

/// The holders of one role, in registration order.
struct HolderList {
    std::vector<std::unique_ptr<ListenerHolderBase>> holders;
    std::uint64_t generation = 0; ///< moves with every change
    std::size_t untold = 0;       ///< while the deviant ends: so many from the front have not been told yet

    [[nodiscard]] bool empty() const noexcept { return holders.empty(); }
    [[nodiscard]] bool contains(ListenerHolderBase const * holder) const noexcept;
    [[nodiscard]] std::vector<ListenerHolderBase *> copy() const;
};

/// What is left to do of a commit, an undo or a redo while its observers run. It needs no memory.
struct PendingStep {
    enum class Kind { Commit, Undo, Redo };

    Kind kind;
    std::unique_ptr<ChangeSet> record; ///< of a commit, until it is on the stack, which has room for it
    ChangeSet * entry = nullptr;       ///< of an undo or redo; it stands on the stack
};

/// The body of a deviant. It belongs to the manager, also after the deviant was removed.
///
/// The operations of `Deviant` check what they are called on and leave the work to the members of this class, which are
/// defined in files by subject: states, transactions, undo, synchronisation, listeners.
class DeviantImpl {
public:
    DeviantImpl(DeviantManager & owner, std::string name, std::int32_t id, DeviantIdentity::Kind kind);
    ~DeviantImpl();
    DeviantImpl(DeviantImpl const &) = delete;
    DeviantImpl & operator=(DeviantImpl const &) = delete;

    [[nodiscard]] Deviant deviant() const noexcept { return Deviant(identity); }
    [[nodiscard]] bool isRoot() const noexcept { return id == 0; }
    [[nodiscard]] bool isView() const noexcept { return id < 0; }
    [[nodiscard]] DeviantImpl & root() const noexcept;

    // --- states ---------------------------------------------------------------------------------------------------
    /// `state` as the old state of `object`, null as `FallbackToRoot`; gives the former one.
    [[nodiscard]] NSInterface::ObjectIntf * saveOldState(NSInterface::ClassObjectIntf const * object,
                                                         NSInterface::ObjectIntf * state);
    /// Saves over whatever stood there, and destroys that.
    void replaceOldState(NSInterface::ClassObjectIntf const * object, NSInterface::ObjectIntf * state);
    /// Saves a copy of the present state of the object, unless one is saved already; says whether it has.
    bool saveCopyOnce(NSInterface::ClassObjectIntf const * object);
    /// Gives up what has just been saved for the object, which has not changed since.
    void forgetOldState(NSInterface::ClassObjectIntf const * object) noexcept;
    /// Drops the markers of those objects of `touched` that follow the root, so that they take no room.
    void dropFallbackEntries(StateMap const & touched) noexcept;
    /// `Deviant::remove` beyond its checks; what a listener throws is kept until all is done.
    void remove();

    // --- transactions ---------------------------------------------------------------------------------------------
    void begin(std::string const & name);
    void commit();
    void cancel();
    /// Whether the client has no helper of its own.
    [[nodiscard]] bool hasPlainHelper() const noexcept;
    /// Ends the transaction at all levels and forgets what it saved, without a listener and without undoing anything.
    void closeByForce() noexcept;
    void setDepth(std::int32_t depth) noexcept;
    void setWithin(bool within) noexcept;
    /// Does what is left of the commit, undo or redo whose observers are running.
    void finishPending() noexcept;

    // --- undo -----------------------------------------------------------------------------------------------------
    void undo();
    void redo();
    void clearRedo() noexcept;
    void clearUndo() noexcept;
    void setMaximum(std::int32_t length) noexcept;
    /// Cuts the stack at its oldest end.
    void trim() noexcept;
    /// The entry counted from the divider, towards the old or the new end; null outside the stack.
    [[nodiscard]] ChangeSet const * undoEntryAt(int index) const noexcept;
    [[nodiscard]] ChangeSet const * redoEntryAt(int index) const noexcept;

    // --- listeners ------------------------------------------------------------------------------------------------
    [[nodiscard]] bool hasListeners() const noexcept {
        return !modifiers.empty() || !validators.empty() || !observers.empty();
    }
    void enlist(HolderList & list, ListenerHolderBase * holder);
    void dismiss(HolderList & list, ListenerBase * listener);
    void prepareListeners(HolderList & list, Deviant view, StateMap const & states);
    void runModifiers(Deviant view);
    /// False if one refused; the transaction is cancelled then.
    [[nodiscard]] bool runValidators(Deviant view);
    /// The observers have been prepared for `states`.
    void runObservers(Deviant view, StateMap const & states);

    DeviantIdentity * const identity; ///< never freed; carries the name
    DeviantManager * const manager;
    std::int32_t const id;
    StateMap objects; ///< owned states; empty in the root, whose state lives in the bodies
    ChangeSet currentChangeSet;
    StateMap * readMap = &objects;
    StateMap * fallbackReadMap = nullptr;
    std::int32_t transactionDepth = 0;
    std::int32_t currentChangeLevel = 1;
    std::int32_t highestChangeLevel = 1;
    UndoStack undoStack;
    std::int32_t undoPosition = 0; ///< entries below it can be undone, those from it on redone
    std::int32_t maximumUndoStackLength;
    bool withinTransactionUndoOrRedo = false;
    HolderList modifiers;
    HolderList validators;
    HolderList observers;
    ListenerBase * refusedBy = nullptr; ///< the listener that ended the transaction which was committed last

private:
    friend class CallScope;
    friend class PhaseScope;
    friend class ViewScope;

    /// An empty record, with room for it on the stack.
    [[nodiscard]] std::unique_ptr<ChangeSet> takeRecord();
    void retire(std::unique_ptr<ChangeSet> record) noexcept;
    void commitWithoutListeners();
    void commitWithListeners();
    /// What to do after a phase of listeners: false if the commit is over.
    [[nodiscard]] bool isStillCommitting();
    void isolateOtherDeviants(StateMap const & states);
    /// The change set of the transaction, which is over, in `record`.
    void endTransaction(ChangeSet & record) noexcept;
    void pushRecord(std::unique_ptr<ChangeSet> record) noexcept;
    void observe(PendingStep & step, Deviant view, StateMap const & states);
    void prepareAgain(ListenerHolderBase & holder, Deviant view, StateMap const & states) const;
    /// Gives the objects their saved states again, which then are saved no more.
    void putBackSavedStates() noexcept;
    /// Runs the entry at the divider.
    void runEntry(PendingStep::Kind kind);
    /// Makes the objects of the entry what it says, with the states that they leave in the current change set.
    void changePlaces(ChangeSet & entry, PendingStep::Kind kind, Deviant view);
    /// Makes objects and entry what they were, however far `changePlaces` has come.
    void changePlacesBack(ChangeSet & entry) noexcept;
    /// Returns what a listener has thrown.
    [[nodiscard]] std::exception_ptr prepareObserversOfReplay(Deviant view);
    [[nodiscard]] bool isAtDivider(ChangeSet const & entry) const noexcept;
    void finishReplay(ChangeSet & entry, PendingStep::Kind kind) noexcept;
    void eraseHolder(HolderList & list, std::size_t index) noexcept;
    void dropHolders(HolderList & list);
    /// Raises while objects are on their way from one state to another, in an undo or redo.
    void requireEmptyChangeSet() const;

    std::vector<std::unique_ptr<DeviantImpl>> fViews; ///< one per nesting level, used again and again
    std::size_t fViewsInUse = 0;
    ChangeSetList fPool;      ///< records for use again
    std::int32_t fPhases = 0; ///< running commits with listeners, undos and redos; nested ones count too
    std::uint64_t fPreparations = 0;
    PendingStep * fPending = nullptr;
    ListenerHolderBase * fCalled = nullptr; ///< on whose behalf a modifier's or validator's phase runs client code
    // What a phase may still point at goes when the outermost one has ended.
    std::vector<std::unique_ptr<ListenerHolderBase>> fDismissed; ///< has room for all holders
    ChangeSetList fRetired;
};

/// Keeps what listeners and views of a deviant may point at alive: dismissed holders, retired change sets, and the
/// model. May destroy the deviant at its end, so it must be the first local of its function.
class PhaseScope {
public:
    explicit PhaseScope(DeviantImpl & deviant);
    ~PhaseScope();
    PhaseScope(PhaseScope const &) = delete;
    PhaseScope & operator=(PhaseScope const &) = delete;

private:
    DeviantImpl & fDeviant;
    NSInterface::ClassObjectIntf * fModel = nullptr;
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
    void read(StateMap & map) noexcept { fView.readMap = &map; }

private:
    static DeviantImpl & take(DeviantImpl & deviant, char const * name);

    DeviantImpl & fDeviant;
    DeviantImpl & fView;
};

} // namespace internal
} // namespace ZEL
