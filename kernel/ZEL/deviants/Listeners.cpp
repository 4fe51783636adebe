#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/ListenerBase.h>
#include <ZEL/deviants/Listeners.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace ZEL::internal {

bool Listeners::List::contains(ListenerHolderBase const * holder) const noexcept {
    return std::any_of(holders.begin(), holders.end(), [&](auto const & each) { return each.get() == holder; });
}

std::vector<ListenerHolderBase *> Listeners::List::copy() const {
    std::vector<ListenerHolderBase *> result;
    result.reserve(holders.size());
    for (auto const & holder : holders) {
        result.push_back(holder.get());
    }
    return result;
}

// --- who listens -----------------------------------------------------------------------------------------------------

bool Listeners::empty() const noexcept {
    return std::all_of(fLists.begin(), fLists.end(), [](List const & each) { return each.holders.empty(); });
}

void Listeners::enlist(Role role, ListenerHolderBase * holder) {
    std::unique_ptr<ListenerHolderBase> owned(holder);
    if (owned == nullptr) {
        raiseAnInternalError();
    }
    ListenerBase const * const listener = owned->getListener();
    for (ListenerHolderBase * const other : list(role).copy()) {
        if (other->getListener() == listener) {
            raiseInternalError("listener already registered with deviant");
        }
    }
    // Room for the day when it is dismissed, which may be one without memory.
    std::size_t all = 1;
    for (List const & each : fLists) {
        all += each.holders.size();
    }
    fPhases.makeRoom(all);
    list(role).holders.push_back(std::move(owned));
    ++list(role).generation;
}

void Listeners::dismiss(Role role, ListenerBase const * listener) {
    List & list = this->list(role);
    for (std::size_t i = 0; i < list.holders.size(); ++i) {
        if (list.holders[i]->getListener() == listener) {
            erase(list, i);
            return;
        }
    }
    raiseInternalError("listener not registered with deviant");
}

void Listeners::erase(List & list, std::size_t index) noexcept {
    // Out of the list first: the destructor of a client's holder may come back to it.
    std::unique_ptr<ListenerHolderBase> holder = std::move(list.holders[index]);
    list.holders.erase(list.holders.begin() + static_cast<std::ptrdiff_t>(index));
    ++list.generation;
    list.untold -= index < list.untold ? 1 : 0;
    fPhases.keep(std::move(holder));
}

std::exception_ptr Listeners::dismissAll() noexcept {
    std::exception_ptr failure;
    for (List & list : fLists) {
        // Not those that a listener registers meanwhile.
        list.untold = list.holders.size();
        while (list.untold > 0) {
            ListenerHolderBase * const holder = list.holders.front().get();
            try {
                holder->getListener()->onDeviantDestroyed();
            } catch (...) {
                failure = std::current_exception();
            }
            // The listener may have unregistered itself by now.
            if (!list.holders.empty() && list.holders.front().get() == holder) {
                erase(list, 0);
            }
        }
        while (!list.holders.empty()) {
            erase(list, list.holders.size() - 1);
        }
    }
    return failure;
}

// --- phases ----------------------------------------------------------------------------------------------------------

namespace {

/// The bodies of a change set, counted, so that a listener may change the set during a walk.
class HeldBodies : public StateMap {
public:
    explicit HeldBodies(StateMap const & states) {
        makeRoom(states.size());
        for (Entry const & entry : states) {
            static_cast<void>(set(entry.key, nullptr));
        }
    }
};

void show(ListenerHolderBase & holder, StateMap::Key body, Deviant deviant) {
    auto const found = body->getVisitMethod(holder.getDispatchTable().table());
    if (found.method != nullptr) {
        found.method(&holder, found.object, deviant);
    }
}

/// Objects that have gone back to following the root lose their markers when a commit is recorded. Without them they
/// would look as if they had been deleted, so they are set again for the length of a report.
class FollowerMarks {
public:
    FollowerMarks(StateMap & ownStates, StateMap const & reported) : fOwnStates(ownStates) {
        fMarked.reserve(reported.size());
        ownStates.makeRoom(reported.size());
        for (StateMap::Entry const & entry : reported) {
            if (ownStates.get(entry.key) == nullptr) {
                static_cast<void>(ownStates.set(entry.key, static_cast<StateMap::State>(Deviant::FallbackToRoot)));
                fMarked.push_back(entry.key);
            }
        }
    }
    ~FollowerMarks() {
        for (StateMap::Key const key : fMarked) {
            static_cast<void>(fOwnStates.erase(key));
        }
    }
    FollowerMarks(FollowerMarks const &) = delete;
    FollowerMarks & operator=(FollowerMarks const &) = delete;

private:
    StateMap & fOwnStates;
    std::vector<StateMap::Key> fMarked;
};

} // namespace

/// Client code runs on behalf of a holder: if it cancels, the holder's listener is who refused the commit.
class Listeners::CallScope {
public:
    explicit CallScope(Listeners & listeners) noexcept : fSlot(listeners.fCalled), fBefore(listeners.fCalled) {}
    ~CallScope() { fSlot = fBefore; }
    CallScope(CallScope const &) = delete;
    CallScope & operator=(CallScope const &) = delete;

    [[nodiscard]] ListenerHolderBase & call(ListenerHolderBase * holder) noexcept { return *(fSlot = holder); }

private:
    ListenerHolderBase *& fSlot;
    ListenerHolderBase * const fBefore;
};

void Listeners::prepare(Role role, Deviant view, StateMap const & states) {
    List const & list = this->list(role);
    if (list.holders.empty()) {
        return;
    }
    ++fPreparations;
    CallScope scope(*this);
    std::vector<ListenerHolderBase *> holders = list.copy();
    std::uint64_t generation = list.generation;
    for (ListenerHolderBase * const holder : holders) {
        scope.call(holder).reset(fDeviant, view);
    }
    HeldBodies const bodies(states);
    for (StateMap::Entry const & body : bodies) {
        if (generation != list.generation) {
            holders = list.copy();
            generation = list.generation;
        }
        for (ListenerHolderBase * const holder : holders) {
            show(scope.call(holder), body.key, fDeviant);
        }
    }
}

void Listeners::runModifiers(Deviant view, StateMap const & states) {
    prepare(Role::Modifier, view, states);
    List const & modifiers = list(Role::Modifier);
    CallScope scope(*this);
    for (ListenerHolderBase * const holder : modifiers.copy()) {
        if (modifiers.contains(holder)) {
            scope.call(holder).callModifier();
            if (modifiers.contains(holder)) {
                holder->reset(fDeviant, view);
            }
        }
    }
}

ListenerBase * Listeners::runValidators(Deviant view, StateMap const & states) {
    prepare(Role::Validator, view, states);
    List const & validators = list(Role::Validator);
    CallScope scope(*this);
    ListenerBase * refusing = nullptr;
    for (ListenerHolderBase * const holder : validators.copy()) {
        if (validators.contains(holder) && !scope.call(holder).callValidator()) {
            refusing = holder->getListener();
            break;
        }
    }
    for (ListenerHolderBase * const holder : validators.copy()) {
        holder->reset(fDeviant, view);
    }
    return refusing;
}

void Listeners::prepareObservers(Deviant view, StateMap const & states) { prepare(Role::Observer, view, states); }

void Listeners::runObservers(Deviant view, StateMap const & states, StateMap & ownStates) {
    List const & observers = list(Role::Observer);
    std::uint64_t const preparations = fPreparations;
    for (ListenerHolderBase * const holder : observers.copy()) {
        if (!observers.contains(holder)) {
            continue;
        }
        if (preparations != fPreparations) {
            // An observer has committed or replayed in this deviant, for which the holders were reset. The root has no
            // markers: the states of its objects are in the bodies.
            std::optional<FollowerMarks> marks;
            if (!fDeviant.isRootDeviant()) {
                marks.emplace(ownStates, states);
            }
            holder->reset(fDeviant, view);
            HeldBodies const bodies(states);
            for (StateMap::Entry const & body : bodies) {
                show(*holder, body.key, fDeviant);
            }
        }
        holder->callObserver();
        if (observers.contains(holder)) {
            holder->reset(fDeviant, view);
        }
    }
}

} // namespace ZEL::internal
