#pragma once

#include <ZEL/deviants/ChangeSet.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>

#include <cstdint>
#include <string>

namespace ZEL::internal {

/// The transaction of a deviant, open or not: its depth, its change set, and what the deviant's identity shows of it to
/// the bodies. An undo or redo borrows the change set, which is empty between the two.
class OpenTransaction {
public:
    OpenTransaction(DeviantIdentity & identity, StateMap::Key model) noexcept : fIdentity(identity), fChanges(model) {}
    OpenTransaction(OpenTransaction const &) = delete;
    OpenTransaction & operator=(OpenTransaction const &) = delete;

    [[nodiscard]] std::int32_t depth() const noexcept { return fDepth; }
    [[nodiscard]] bool isOpen() const noexcept { return fDepth > 0; }
    /// Within a transaction, an undo or a redo; still true after a transaction that was cancelled or empty.
    [[nodiscard]] bool isWithin() const noexcept { return fIsWithin; }
    void setWithin(bool within) noexcept {
        fIsWithin = within;
        showSavedStates();
    }
    /// The listener that ended the transaction which was committed last; null if it went through.
    [[nodiscard]] ListenerBase * refusedBy() const noexcept { return fRefusedBy; }
    void setRefusedBy(ListenerBase * listener) noexcept { fRefusedBy = listener; }

    /// Throws at depth 0 while objects are on their way from one state to another, in an undo or redo.
    void begin(std::string const & name, std::int32_t level);
    void requireNothingSaved() const;
    void endLevel() noexcept { setDepth(fDepth - 1); }
    /// Ends all levels with the changes in `record`, which must be empty.
    void endInto(ChangeSet & record) noexcept;
    /// Ends all levels and forgets what has been saved, without undoing anything.
    void close() noexcept;

    // --- saved states -----------------------------------------------------------------------------------------------
    [[nodiscard]] StateMap & savedStates() noexcept { return fChanges.states; }
    [[nodiscard]] StateMap const & savedStates() const noexcept { return fChanges.states; }
    /// Saves `state`, null as `FallbackToRoot`, and returns what was saved before, which then belongs to the caller.
    [[nodiscard]] StateMap::State save(StateMap::Key object, StateMap::State state) {
        fIsKnownToBodies = false;
        return fChanges.states.set(object, orFallback(state));
    }
    /// Saves over what was saved before, and destroys that.
    void saveOver(StateMap::Key object, StateMap::State state);
    /// Saves the first state of an object, whose body keeps the number of the transaction then.
    void saveKnown(StateMap::Key object, StateMap::State state) { fChanges.states.add(object, orFallback(state)); }
    /// Whether all was saved by `saveKnown`: in the root, what is saved then are the states of those bodies alone that
    /// have the number of the transaction.
    [[nodiscard]] bool isKnownToBodies() const noexcept { return fIsKnownToBodies; }
    [[nodiscard]] std::uint64_t number() const noexcept { return fIdentity.openTransaction; }
    /// Gives the objects their saved states again, which then are saved no more. Needs no memory.
    void putBackSavedStates() noexcept;

private:
    static StateMap::State orFallback(StateMap::State state) noexcept {
        return state != nullptr ? state : static_cast<StateMap::State>(Deviant::FallbackToRoot);
    }
    void setDepth(std::int32_t depth) noexcept;
    void showSavedStates() noexcept { fIdentity.savedStatesVisible = fIsWithin || fDepth > 0; }

    DeviantIdentity & fIdentity;
    std::int32_t fDepth = 0;
    bool fIsWithin = false;
    bool fIsKnownToBodies = true;
    ChangeSet fChanges;
    ListenerBase * fRefusedBy = nullptr;
};

} // namespace ZEL::internal
