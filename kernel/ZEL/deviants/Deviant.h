#pragma once

#include <ZEL/Export.h>

#include <cstdint>
#include <string>
#include <vector>

namespace ZEL {

class DeviantManager;
class ListenerBase;
class Model;
class StateMap;

namespace NSInterface {
class ObjectIntf;
class ClassObjectIntf;
class ModelIntf;
} // namespace NSInterface

namespace internal {
using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;

class DeviantImpl;
class ListenerHolderBase;

/// What a `Deviant` value points at. It is never freed, so that a value kept beyond its deviant, or beyond its model,
/// can still say that it is no longer valid. The body goes with the manager.
struct DeviantIdentity {
    enum class Kind : std::uint8_t { LiveRoot, LiveNamed, LiveView, Removed };

    std::int32_t id = 0;
    Kind kind = Kind::Removed;
    bool modelDestroyed = false;
    /// Whether `getSavedOldStateOfObject` can find anything: within a transaction, an undo or a redo.
    bool savedStatesVisible = false;
    /// Number of the running transaction, unique in the process; 0 outside transactions. A body whose mark equals it
    /// has saved its old state already.
    std::uint64_t openTransaction = 0;
    DeviantImpl * impl = nullptr;           ///< null once the manager has gone
    DeviantIdentity const * root = nullptr; ///< of the root deviant of the same manager
    std::string name;
};
} // namespace internal

/// A named variant of the state of every object of one model.
///
/// A value of one pointer: copied freely, not counted, owns nothing. The null deviant stands for the root on reads. The
/// root deviant (id 0) holds the authoritative state and the undo stack; a named deviant holds the state of those
/// objects only that it has written, or that the root has changed under it, and reads through to the root for all
/// others. A view deviant (negative id) lives for the length of one operation and shows the state before it.
///
/// All operations throw through `raiseInternalError`, with a text made of the operation's name and "on null deviant"
/// when called on the null deviant, unless said otherwise. Not thread-safe, like all of the kernel.
class ZEL_API Deviant {
public:
    /// Sentinels for places that hold a state pointer; each holds its own address.
    static void * const InvalidObject;  ///< the object does not exist in this deviant
    static void * const FallbackToRoot; ///< the object follows the root
    static void * const ModelDestroyed; ///< the object's model has gone; in an object's root slot only

    Deviant() noexcept = default;
    explicit Deviant(internal::DeviantIdentity * identity) noexcept : fIdentity(identity) {}

    /// Whether `state` is neither null nor one of the sentinels.
    [[nodiscard]] static bool isRealState(void const * state) noexcept {
        return state != nullptr && state != InvalidObject && state != FallbackToRoot && state != ModelDestroyed;
    }

    // --- identity; none of these fails on the null deviant -------------------------------------------------------
    [[nodiscard]] bool isNotNull() const noexcept { return fIdentity != nullptr; }
    /// True for the null deviant; false once removed or once the model has gone.
    [[nodiscard]] bool isValid() const noexcept {
        return fIdentity == nullptr || fIdentity->kind != internal::DeviantIdentity::Kind::Removed;
    }
    [[nodiscard]] bool isRootDeviant() const noexcept { return getDeviantId() == 0; }
    [[nodiscard]] int getDeviantId() const noexcept { return fIdentity == nullptr ? 0 : fIdentity->id; }
    /// "default unnamed root deviant" for the null deviant.
    [[nodiscard]] std::string getName() const;
    [[nodiscard]] DeviantManager * getDeviantManager() const noexcept;
    [[nodiscard]] Deviant getRootDeviant() const noexcept;
    /// All deviants of the manager in name order, null ones included; empty for the null deviant.
    [[nodiscard]] std::vector<Deviant> getAllDeviants() const;
    /// The deviant's own states; null for the null deviant.
    [[nodiscard]] StateMap const * getObjectsDeviatingFromRoot() const noexcept;
    /// Fails on the null deviant: "getModel on null deviant".
    template <class M = Model> [[nodiscard]] M getModel() const { return M(internal_model(), *this); }
    /// Whether the model has gone. False for the null deviant.
    [[nodiscard]] bool hasModelBeenDestroyed() const noexcept {
        return fIdentity != nullptr && fIdentity->modelDestroyed;
    }

    // --- states ---------------------------------------------------------------------------------------------------
    /// The state stored for `object` here, a sentinel, or null. Does not read through to the root.
    [[nodiscard]] NSInterface::ObjectIntf * getStateOfObject(NSInterface::ClassObjectIntf const * object) const;
    /// Stores `state` and returns what stood there, which now belongs to the caller. Nothing on the null deviant.
    [[nodiscard]] NSInterface::ObjectIntf * setStateOfObject(NSInterface::ClassObjectIntf const * object,
                                                             NSInterface::ObjectIntf * state) const;
    /// The saved old state of `object` in the running transaction, undo or redo; null if there is none.
    [[nodiscard]] NSInterface::ObjectIntf * getSavedOldStateOfObject(NSInterface::ClassObjectIntf const * object) const;
    /// Stores `state` (null as `FallbackToRoot`) as the old state of `object`, whatever stood there, and returns the
    /// former value, which belongs to the caller. Null and no effect outside a transaction and on the null deviant.
    [[nodiscard]] NSInterface::ObjectIntf * saveOldStateOfObject(NSInterface::ClassObjectIntf const * object,
                                                                 NSInterface::ObjectIntf * state) const;
    /// Checks that no other deviant knows the object, records that it did not exist before, and hides it from them.
    void markObjectCreated(NSInterface::ClassObjectIntf * object) const;
    /// Whether `b` is `a` or an ancestor of `a` through the containers in this deviant. Null arguments throw.
    [[nodiscard]] bool willCauseCompositionCycles(NSInterface::ClassObjectIntf const * a,
                                                  NSInterface::ClassObjectIntf const * b) const;
    /// For clients that keep object state outside the generated classes; root deviant only.
    void notifyObjectIsAboutToChange(NSInterface::ClassObjectIntf const * object) const;
    void notifyObjectIsAboutToBeDeleted(NSInterface::ClassObjectIntf const * object) const;
    void notifyObjectHasBeenAdded(NSInterface::ClassObjectIntf const * object) const;

    // --- transactions ---------------------------------------------------------------------------------------------
    /// Begins nest; only the outermost commit acts, and the name of an inner transaction is dropped.
    void beginTransaction(std::string const & name = std::string()) const;
    /// Ends the innermost begin; the outermost end commits: modifiers, validators, observers, then the undo stack.
    /// An empty change set calls no listener and leaves no entry. A refusing validator cancels and returns normally:
    /// `getRefusingListener` returns it.
    /// An exception of a listener passes through; the depth stays 1 (modifier, validator) or is 0 already (observer).
    /// Fails with "transaction not started" at depth 0.
    void commitTransaction() const;
    /// Puts all old states back and ends every nesting level. Nothing at depth 0. Fails without undo stack.
    void cancelTransaction() const;
    /// Who made the last commit keep nothing: the validator that refused it, or the listener that cancelled while it
    /// was called. Null if it went through, and again from the next outermost `beginTransaction` on; null for the null
    /// deviant. The listener is the client's: it may have ended since.
    [[nodiscard]] ListenerBase * getRefusingListener() const noexcept;
    [[nodiscard]] bool isWithinTransaction() const noexcept {
        return fIdentity != nullptr && fIdentity->openTransaction != 0;
    }
    /// Also stays true after an empty or cancelled transaction, until the next commit, undo or redo.
    [[nodiscard]] bool isWithinTransactionUndoOrRedo() const noexcept;

    // --- undo and redo (root deviant) -----------------------------------------------------------------------------
    /// Nothing when there is nothing to undo, or redo. Fail within a transaction and on a non-root deviant.
    void undo() const;
    void redo() const;
    /// Steps until `level` is current; nothing if it is. A level that is on no entry fails and changes nothing.
    void undoToChangeLevel(int level) const;
    void redoToChangeLevel(int level) const;
    [[nodiscard]] int getCurrentChangeLevel() const;
    [[nodiscard]] static int getDefaultMaximumUndoStackLength() noexcept { return 50; }
    /// 0 on the null deviant.
    [[nodiscard]] int getMaximumUndoStackLength() const noexcept;
    [[nodiscard]] bool hasUndoStack() const noexcept;
    [[nodiscard]] int getUndoStackLength() const;
    [[nodiscard]] int getRedoStackLength() const;
    /// Entry `index` counted from the divider, 0 is the next to undo or redo; empty, or -1, outside the stack.
    [[nodiscard]] std::string getUndoNameAt(int index) const;
    [[nodiscard]] int getUndoChangeLevelAt(int index) const;
    [[nodiscard]] std::string getRedoNameAt(int index) const;
    [[nodiscard]] int getRedoChangeLevelAt(int index) const;
    /// Negative counts as 0. Trims from the oldest end; the divider is only cut to the size, never shifted.
    void setMaximumUndoStackLength(int length) const;
    void clearUndoStack() const;
    void clearRedoStack() const;
    /// Clears the stack and sets its maximum to 0: writes save nothing, commits call no listener, cancel fails.
    void disableUndo() const;

    // --- root and named deviants ----------------------------------------------------------------------------------
    /// Drops this deviant's own states within its transaction, so that all objects follow the root again.
    void syncFromRoot() const;
    /// Makes the root equal to this deviant's committed state, within the root's transaction.
    void assignToRoot() const;
    /// Ends the deviant: listeners are told and dropped, states destroyed. Its body lives on in the manager. Fails
    /// within a transaction, and on the root and on a view with "An Internal Error has occurred".
    void remove() const;

    // --- listeners --------------------------------------------------------------------------------------------------
    /// Takes ownership of the holder, also when it throws "listener already registered with deviant".
    void registerModifierOnCommit(internal::ListenerHolderBase * holder) const;
    void registerValidatorOnCommit(internal::ListenerHolderBase * holder) const;
    void registerObservingListener(internal::ListenerHolderBase * holder) const;
    void unregisterModifierOnCommit(ListenerBase * listener) const;
    void unregisterValidatorOnCommit(ListenerBase * listener) const;
    void unregisterObservingListener(ListenerBase * listener) const;

    friend bool operator==(Deviant a, Deviant b) noexcept { return a.fIdentity == b.fIdentity; }
    friend bool operator<(Deviant a, Deviant b) noexcept { return a.fIdentity < b.fIdentity; }

    /// For the kernel's own use.
    [[nodiscard]] internal::DeviantIdentity * getIdentity() const noexcept { return fIdentity; }
    [[nodiscard]] internal::DeviantImpl * getImpl() const noexcept {
        return fIdentity == nullptr ? nullptr : fIdentity->impl;
    }
    [[nodiscard]] NSInterface::ModelIntf * internal_model() const;

private:
    internal::DeviantIdentity * fIdentity = nullptr;
};

} // namespace ZEL
