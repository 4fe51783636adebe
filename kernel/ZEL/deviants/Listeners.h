#pragma once

#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/ListenerHolderBase.h>
#include <ZEL/deviants/Phases.h>
#include <ZEL/deviants/StateMap.h>

#include <array>
#include <cstdint>
#include <exception>
#include <memory>
#include <vector>

namespace ZEL::internal {

/// The holders of a deviant's listeners by role, in registration order, and the calls of each role's phase. Holders may
/// come and go while a phase runs, which must stand in a `PhaseScope`.
class Listeners {
public:
    enum class Role : std::uint8_t { Modifier, Validator, Observer };

    Listeners(Deviant deviant, Phases & phases) noexcept : fDeviant(deviant), fPhases(phases) {}

    [[nodiscard]] bool empty() const noexcept;
    /// Takes ownership of the holder, also when it throws.
    void enlist(Role role, ListenerHolderBase * holder);
    void dismiss(Role role, ListenerBase const * listener);
    /// The deviant ends: tells each listener once for each of its roles, and ends all holders. Returns what one of them
    /// has thrown.
    [[nodiscard]] std::exception_ptr dismissAll() noexcept;

    // Each phase begins with a report of `states`, in which `view` shows the state before.
    void runModifiers(Deviant view, StateMap const & states);
    /// The listener that refuses, null if none does.
    [[nodiscard]] ListenerBase * runValidators(Deviant view, StateMap const & states);
    void prepareObservers(Deviant view, StateMap const & states);
    /// The observers have been prepared for `states`. `ownStates` are those of the deviant.
    void runObservers(Deviant view, StateMap const & states, StateMap & ownStates);
    /// On whose behalf client code runs, except for calls of observers; null if none does.
    [[nodiscard]] ListenerBase * called() const { return fCalled == nullptr ? nullptr : fCalled->getListener(); }

private:
    class CallScope;
    struct List {
        std::vector<std::unique_ptr<ListenerHolderBase>> holders;
        std::uint64_t generation = 0; ///< moves with every change
        std::size_t untold = 0;       ///< while the deviant ends: so many from the front have not been told yet

        [[nodiscard]] bool contains(ListenerHolderBase const * holder) const noexcept;
        [[nodiscard]] std::vector<ListenerHolderBase *> copy() const;
    };

    [[nodiscard]] List & list(Role role) noexcept { return fLists[static_cast<std::size_t>(role)]; }
    void erase(List & list, std::size_t index) noexcept;
    void prepare(Role role, Deviant view, StateMap const & states);

    Deviant fDeviant;
    Phases & fPhases;
    std::array<List, 3> fLists;
    std::uint64_t fPreparations = 0;
    ListenerHolderBase * fCalled = nullptr;
};

} // namespace ZEL::internal
