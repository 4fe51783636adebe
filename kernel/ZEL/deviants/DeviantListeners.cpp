#include <ZEL/base/GiveBackCount.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantChecks.h>
#include <ZEL/deviants/ListenerBase.h>

#include <algorithm>
#include <exception>
#include <utility>

namespace ZEL {

using internal::DeviantImpl;
using internal::HolderList;
using internal::ListenerHolderBase;
using internal::requireDeviant;

namespace {

DeviantImpl & requireForRegistration(Deviant deviant) {
    return requireDeviant(deviant, "registerListener on null deviant");
}

DeviantImpl & requireForUnregistration(Deviant deviant, ListenerBase const * listener) {
    DeviantImpl & self = requireDeviant(deviant, "unregisterListener on null deviant");
    if (listener == nullptr) {
        raiseInternalError("cannot unregister null listener with deviant");
    }
    return self;
}

} // namespace

void Deviant::registerModifierOnCommit(ListenerHolderBase * holder) const {
    DeviantImpl & self = requireForRegistration(*this);
    self.enlist(self.modifiers, holder);
}

void Deviant::registerValidatorOnCommit(ListenerHolderBase * holder) const {
    DeviantImpl & self = requireForRegistration(*this);
    self.enlist(self.validators, holder);
}

void Deviant::registerObservingListener(ListenerHolderBase * holder) const {
    DeviantImpl & self = requireForRegistration(*this);
    self.enlist(self.observers, holder);
}

void Deviant::unregisterModifierOnCommit(ListenerBase * listener) const {
    DeviantImpl & self = requireForUnregistration(*this, listener);
    self.dismiss(self.modifiers, listener);
}

void Deviant::unregisterValidatorOnCommit(ListenerBase * listener) const {
    DeviantImpl & self = requireForUnregistration(*this, listener);
    self.dismiss(self.validators, listener);
}

void Deviant::unregisterObservingListener(ListenerBase * listener) const {
    DeviantImpl & self = requireForUnregistration(*this, listener);
    self.dismiss(self.observers, listener);
}

namespace internal {

bool HolderList::contains(ListenerHolderBase const * holder) const noexcept {
    return std::any_of(holders.begin(), holders.end(), [&](auto const & each) { return each.get() == holder; });
}

std::vector<ListenerHolderBase *> HolderList::copy() const {
    std::vector<ListenerHolderBase *> result;
    result.reserve(holders.size());
    for (auto const & holder : holders) {
        result.push_back(holder.get());
    }
    return result;
}

void DeviantImpl::enlist(HolderList & list, ListenerHolderBase * holder) {
    std::unique_ptr<ListenerHolderBase> owned(holder);
    if (owned == nullptr) {
        raiseAnInternalError();
    }
    ListenerBase const * const listener = owned->getListener();
    for (ListenerHolderBase * const other : list.copy()) {
        if (other->getListener() == listener) {
            raiseInternalError("listener already registered with deviant");
        }
    }
    // Room for the day when it is dismissed, which may be one without memory.
    std::size_t const all = modifiers.holders.size() + validators.holders.size() + observers.holders.size() + 1;
    if (fDismissed.capacity() < fDismissed.size() + all) {
        fDismissed.reserve(fDismissed.size() + 2 * all);
    }
    list.holders.push_back(std::move(owned));
    ++list.generation;
}

void DeviantImpl::dismiss(HolderList & list, ListenerBase * listener) {
    for (std::size_t i = 0; i < list.holders.size(); ++i) {
        if (list.holders[i]->getListener() == listener) {
            eraseHolder(list, i);
            return;
        }
    }
    raiseInternalError("listener not registered with deviant");
}

void DeviantImpl::eraseHolder(HolderList & list, std::size_t index) noexcept {
    // Out of the list first: the destructor of a client's holder may come back to it.
    std::unique_ptr<ListenerHolderBase> holder = std::move(list.holders[index]);
    list.holders.erase(list.holders.begin() + static_cast<std::ptrdiff_t>(index));
    ++list.generation;
    list.untold -= index < list.untold ? 1 : 0;
    if (fPhases > 0) {
        fDismissed.push_back(std::move(holder));
    }
}

void DeviantImpl::dropHolders(HolderList & list) {
    std::exception_ptr failure;
    // Not those that a listener registers meanwhile.
    list.untold = list.holders.size();
    while (list.untold > 0) {
        ListenerHolderBase const * const holder = list.holders.front().get();
        try {
            list.holders.front()->getListener()->onDeviantDestroyed();
        } catch (...) {
            failure = std::current_exception();
        }
        // The listener may have unregistered itself by now.
        if (!list.empty() && list.holders.front().get() == holder) {
            eraseHolder(list, 0);
        }
    }
    while (!list.empty()) {
        eraseHolder(list, list.holders.size() - 1);
    }
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

// --- phases ----------------------------------------------------------------------------------------------------------

namespace {

/// The bodies of a change set, counted, so that a listener may change the set during a walk.
class HeldBodies {
public:
    explicit HeldBodies(StateMap const & states) : fKeys(states.keys()) {
        for (StateMap::Key const key : fKeys) {
            bodyOf(key).incRef();
        }
    }
    ~HeldBodies() {
        for (StateMap::Key const key : fKeys) {
            giveBackCount(bodyOf(key));
        }
    }
    HeldBodies(HeldBodies const &) = delete;
    HeldBodies & operator=(HeldBodies const &) = delete;

    [[nodiscard]] std::vector<StateMap::Key> const & keys() const noexcept { return fKeys; }

private:
    static NSInterface::ClassObjectIntf & bodyOf(StateMap::Key key) noexcept {
        return *const_cast<NSInterface::ClassObjectIntf *>(key);
    }

    std::vector<StateMap::Key> fKeys;
};

void show(ListenerHolderBase & holder, StateMap::Key body, Deviant deviant) {
    auto const found = body->getVisitMethod(holder.getDispatchTable().table());
    if (found.method != nullptr) {
        found.method(&holder, found.object, deviant);
    }
}

} // namespace

/// Client code runs on behalf of a holder: if it cancels, the holder's listener is who refused the commit.
class CallScope {
public:
    explicit CallScope(DeviantImpl & deviant) noexcept : fSlot(deviant.fCalled), fBefore(deviant.fCalled) {}
    ~CallScope() { fSlot = fBefore; }
    CallScope(CallScope const &) = delete;
    CallScope & operator=(CallScope const &) = delete;

    [[nodiscard]] ListenerHolderBase & call(ListenerHolderBase * holder) noexcept { return *(fSlot = holder); }

private:
    ListenerHolderBase *& fSlot;
    ListenerHolderBase * const fBefore;
};

void DeviantImpl::prepareListeners(HolderList & list, Deviant view, StateMap const & states) {
    if (list.empty()) {
        return;
    }
    ++fPreparations;
    CallScope scope(*this);
    std::vector<ListenerHolderBase *> holders = list.copy();
    std::uint64_t generation = list.generation;
    for (ListenerHolderBase * const holder : holders) {
        scope.call(holder).reset(deviant(), view);
    }
    HeldBodies const bodies(states);
    for (StateMap::Key const body : bodies.keys()) {
        if (generation != list.generation) {
            holders = list.copy();
            generation = list.generation;
        }
        for (ListenerHolderBase * const holder : holders) {
            show(scope.call(holder), body, deviant());
        }
    }
}

void DeviantImpl::runModifiers(Deviant view) {
    prepareListeners(modifiers, view, currentChangeSet.states);
    CallScope scope(*this);
    for (ListenerHolderBase * const holder : modifiers.copy()) {
        if (modifiers.contains(holder)) {
            scope.call(holder).callModifier();
            if (modifiers.contains(holder)) {
                holder->reset(deviant(), view);
            }
        }
    }
}

bool DeviantImpl::runValidators(Deviant view) {
    prepareListeners(validators, view, currentChangeSet.states);
    CallScope scope(*this);
    bool agreed = true;
    for (ListenerHolderBase * const holder : validators.copy()) {
        if (validators.contains(holder) && !scope.call(holder).callValidator()) {
            agreed = false;
            break;
        }
    }
    for (ListenerHolderBase * const holder : validators.copy()) {
        holder->reset(deviant(), view);
    }
    if (!agreed) {
        deviant().cancelTransaction();
    }
    return agreed;
}

namespace {

/// Objects that have gone back to following the root lose their markers when a commit is recorded. Without them they would
/// look as if they had been deleted, so they are set again for the length of a report.
class FollowerMarks {
public:
    FollowerMarks(DeviantImpl & deviant, StateMap const & states) : fDeviant(deviant) {
        if (deviant.isRoot()) {
            return;
        }
        fMarked.reserve(states.size());
        deviant.objects.makeRoom(states.size());
        for (StateMap::Entry const & entry : states) {
            if (deviant.objects.get(entry.key) == nullptr) {
                static_cast<void>(deviant.objects.set(entry.key, sentinel(Deviant::FallbackToRoot)));
                fMarked.push_back(entry.key);
            }
        }
    }
    ~FollowerMarks() {
        for (StateMap::Key const key : fMarked) {
            static_cast<void>(fDeviant.objects.erase(key));
        }
    }
    FollowerMarks(FollowerMarks const &) = delete;
    FollowerMarks & operator=(FollowerMarks const &) = delete;

private:
    DeviantImpl & fDeviant;
    std::vector<StateMap::Key> fMarked;
};

} // namespace

void DeviantImpl::prepareAgain(ListenerHolderBase & holder, Deviant view, StateMap const & states) const {
    holder.reset(deviant(), view);
    HeldBodies const bodies(states);
    for (StateMap::Key const body : bodies.keys()) {
        show(holder, body, deviant());
    }
}

void DeviantImpl::runObservers(Deviant view, StateMap const & states) {
    std::uint64_t const preparations = fPreparations;
    for (ListenerHolderBase * const holder : observers.copy()) {
        if (!observers.contains(holder)) {
            continue;
        }
        if (preparations != fPreparations) {
            // An observer has committed or replayed in this deviant, for which the holders were reset.
            FollowerMarks const marks(*this, states);
            prepareAgain(*holder, view, states);
        }
        holder->callObserver();
        if (observers.contains(holder)) {
            holder->reset(deviant(), view);
        }
    }
}

} // namespace internal
} // namespace ZEL
