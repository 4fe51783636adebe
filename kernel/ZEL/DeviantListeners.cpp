#include <ZEL/Deviant.h>
#include <ZEL/DeviantChecks.h>
#include <ZEL/ListenerBase.h>
#include <ZEL/metamodel/ClassObjectIntf.h>

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

void DeviantImpl::eraseHolder(HolderList & list, std::size_t index) {
    // Out of the list first: the destructor of a client's holder may come back to it.
    std::unique_ptr<ListenerHolderBase> holder = std::move(list.holders[index]);
    list.holders.erase(list.holders.begin() + static_cast<std::ptrdiff_t>(index));
    ++list.generation;
    if (fPhases > 0) {
        fDismissed.push_back(std::move(holder));
    }
}

void DeviantImpl::dropHolders(HolderList & list) {
    std::exception_ptr failure;
    for (ListenerHolderBase * const holder : list.copy()) {
        if (!list.contains(holder)) {
            continue;
        }
        try {
            holder->getListener()->onDeviantDestroyed();
        } catch (...) {
            failure = std::current_exception();
        }
        // The listener may have unregistered itself by now, or others before it.
        for (std::size_t i = 0; i < list.holders.size(); ++i) {
            if (list.holders[i].get() == holder) {
                eraseHolder(list, i);
                break;
            }
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
            bodyOf(key).decRef();
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

void DeviantImpl::prepareListeners(HolderList & list, Deviant view, StateMap const & states) {
    if (list.empty()) {
        return;
    }
    ++fPreparations;
    std::vector<ListenerHolderBase *> holders = list.copy();
    std::uint64_t generation = list.generation;
    for (ListenerHolderBase * const holder : holders) {
        holder->reset(deviant(), view);
    }
    HeldBodies const bodies(states);
    for (StateMap::Key const body : bodies.keys()) {
        if (generation != list.generation) {
            holders = list.copy();
            generation = list.generation;
        }
        for (ListenerHolderBase * const holder : holders) {
            show(*holder, body, deviant());
        }
    }
}

void DeviantImpl::runModifiers(Deviant view) {
    prepareListeners(modifiers, view, currentChangeSet.states);
    for (ListenerHolderBase * const holder : modifiers.copy()) {
        if (modifiers.contains(holder)) {
            holder->callModifier();
            if (modifiers.contains(holder)) {
                holder->reset(deviant(), view);
            }
        }
    }
}

bool DeviantImpl::runValidators(Deviant view) {
    prepareListeners(validators, view, currentChangeSet.states);
    bool agreed = true;
    for (ListenerHolderBase * const holder : validators.copy()) {
        if (validators.contains(holder) && !holder->callValidator()) {
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
