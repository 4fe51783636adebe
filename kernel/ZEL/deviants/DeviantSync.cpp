#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/DeviantImpl.h>
#include <ZEL/deviants/DeviantManager.h>

#include <vector>

namespace ZEL::internal {

namespace {

/// A copy of the present state of `object`, unless its transaction has saved one already.
void addCopy(ChangeSet & copies, DeviantImpl const & of, StateMap::Key object) {
    if (of.transaction().savedStates().get(object) == nullptr) {
        copies.states.makeRoom(1); // before the copy, which nobody else owns
        static_cast<void>(copies.states.set(object, object->deviant_getCopyOfDeviation(of.deviant())));
    }
}

/// Saves the copies, for which there must be room.
void save(OpenTransaction & transaction, ChangeSet & copies) {
    for (StateMap::Entry const & copy : copies.states) {
        static_cast<void>(transaction.save(copy.key, copy.state));
    }
    copies.states.clear();
}

} // namespace

void DeviantImpl::syncFromRoot() {
    std::vector<StateMap::Key> const objects = fStates.keys();
    ChangeSet copies(fManager.internal_body());
    for (StateMap::Key const object : objects) {
        addCopy(copies, *this, object);
    }
    fTransaction.savedStates().makeRoom(objects.size());
    save(fTransaction, copies);
    for (StateMap::Key const object : objects) {
        const_cast<ClassObjectIntf *>(object)->internal_setDeviation(
            deviant(), static_cast<StateMap::State>(Deviant::FallbackToRoot));
    }
}

void DeviantImpl::assignToRoot() {
    DeviantImpl & root = fManager.internal_root();
    PhaseScope const phase(fPhases);
    ViewScope const view(*this, "<internal: assignToRoot>", fTransaction.savedStates());
    ChangedBodies const bodies = collectChanges(fStates, root.deviant(), view.deviant(), &classifyAssignment);
    ChangeSet copies(fManager.internal_body());
    for (auto const * const objects : {&bodies.created, &bodies.deleted, &bodies.modified}) {
        for (ClassObjectIntf const * const object : *objects) {
            addCopy(copies, root, object);
        }
    }
    root.fTransaction.savedStates().makeRoom(copies.states.size());
    if (!fManager.internal_replaysPlainly()) {
        save(root.fTransaction, copies); // a client's helper may fail when some objects have changed
    }
    replay(ReplayKind::AssignToRoot, bodies, root.deviant(), view.deviant());
    save(root.fTransaction, copies);
}

} // namespace ZEL::internal
