#include <ZEL/base/GiveBackCount.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>

#include <deque>
#include <utility>

namespace ZEL::internal {

namespace {

using Kind = DeviantIdentity::Kind;

/// Identities are never freed: a `Deviant` value may outlive everything else.
std::deque<DeviantIdentity> & identities() {
    static auto & all = *new std::deque<DeviantIdentity>;
    return all;
}

StateMap::Key modelOf(DeviantManager const & manager) noexcept { return manager.internal_body(); }

} // namespace

DeviantIdentity * knownIdentity(void const * address) noexcept {
    for (DeviantIdentity & identity : identities()) {
        if (&identity == address) {
            return &identity;
        }
    }
    return nullptr;
}

DeviantImpl::DeviantImpl(DeviantManager & owner, std::string name, std::int32_t deviantId, Kind kind)
    : identity(&identities().emplace_back()),
      manager(&owner),
      id(deviantId),
      objects(modelOf(owner)),
      currentChangeSet(modelOf(owner)),
      maximumUndoStackLength(deviantId == 0 ? Deviant::getDefaultMaximumUndoStackLength() : 1) {
    identity->id = deviantId;
    identity->kind = kind;
    identity->impl = this;
    identity->root = kind == Kind::LiveRoot ? identity : owner.getRootDeviant().getIdentity();
    identity->name = std::move(name);
}

DeviantImpl::~DeviantImpl() {
    // What no operation has given back by now has no other owner.
    objects.destroyAndClear();
    currentChangeSet.states.destroyAndClear();
    undoStack = UndoStack();
    identity->kind = Kind::Removed;
    identity->modelDestroyed = true;
    identity->savedStatesVisible = false;
    identity->openTransaction = 0;
    identity->impl = nullptr;
}

DeviantImpl & DeviantImpl::root() const noexcept { return manager->internal_root(); }

// --- records ---------------------------------------------------------------------------------------------------------

std::unique_ptr<ChangeSet> DeviantImpl::takeRecord() {
    undoStack.makeRoom();
    return fPool.empty() ? std::make_unique<ChangeSet>(modelOf(*manager)) : fPool.pop();
}

void DeviantImpl::retire(std::unique_ptr<ChangeSet> record) noexcept {
    if (fPhases > 0) {
        fRetired.push(std::move(record));
        return;
    }
    record->states.destroyAndClear();
    record->name.clear();
    constexpr std::size_t enough = 4;
    if (fPool.size() < enough) {
        fPool.push(std::move(record));
    }
}

// --- phases ----------------------------------------------------------------------------------------------------------

PhaseScope::PhaseScope(DeviantImpl & deviant) : fDeviant(deviant) {
    NSInterface::ClassObjectIntf * const model = deviant.manager->internal_body();
    // A model that nobody holds yet is still being built, and must not end with this count.
    if (model != nullptr && model->numRef() > 0) {
        model->incRef();
        fModel = model;
    }
    ++fDeviant.fPhases;
}

PhaseScope::~PhaseScope() {
    if (--fDeviant.fPhases == 0) {
        // What ends here may bring in more: a listener's destructor can dismiss another one.
        while (!fDeviant.fDismissed.empty() || !fDeviant.fRetired.empty()) {
            if (!fDeviant.fDismissed.empty()) {
                // Its room stays, for those that go next.
                auto const holder = std::move(fDeviant.fDismissed.front());
                fDeviant.fDismissed.erase(fDeviant.fDismissed.begin());
            } else {
                static_cast<void>(fDeviant.fRetired.pop());
            }
        }
    }
    if (fModel != nullptr) {
        giveBackCount(*fModel);
    }
}

// --- views -----------------------------------------------------------------------------------------------------------

ViewScope::ViewScope(DeviantImpl & deviant, char const * name, StateMap & readMap)
    : fDeviant(deviant), fView(take(deviant, name)) {
    fView.identity->kind = Kind::LiveView;
    fView.readMap = &readMap;
    fView.fallbackReadMap = &deviant.objects;
}

ViewScope::~ViewScope() {
    // A handle that was kept beyond this must find neither map.
    fView.identity->kind = Kind::Removed;
    fView.readMap = &fView.objects;
    fView.fallbackReadMap = nullptr;
    fView.objects.destroyAndClear();
    --fDeviant.fViewsInUse;
}

DeviantImpl & ViewScope::take(DeviantImpl & deviant, char const * name) {
    if (deviant.fViewsInUse == deviant.fViews.size()) {
        deviant.fViews.push_back(
            std::make_unique<DeviantImpl>(*deviant.manager, std::string(), -1 - deviant.id, Kind::Removed));
    }
    DeviantImpl & view = *deviant.fViews[deviant.fViewsInUse];
    view.identity->name = name;
    ++deviant.fViewsInUse;
    return view;
}

} // namespace ZEL::internal
