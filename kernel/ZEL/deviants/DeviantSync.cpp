#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/DeviantAssertions.h>
#include <ZEL/deviants/DeviantChecks.h>
#include <ZEL/deviants/Replay.h>

#include <vector>

namespace ZEL {

using internal::ChangedBodies;
using internal::DeviantImpl;
using internal::requireDeviant;
using NSInterface::ClassObjectIntf;

namespace {

/// Old states that are saved for a change which may still fail; given up again unless the change is made.
class SavedForChange {
public:
    SavedForChange(DeviantImpl & deviant, std::size_t atMost) : fDeviant(deviant) { fObjects.reserve(atMost); }
    ~SavedForChange() {
        for (StateMap::Key const object : fObjects) {
            fDeviant.forgetOldState(object);
        }
    }
    SavedForChange(SavedForChange const &) = delete;
    SavedForChange & operator=(SavedForChange const &) = delete;

    void save(StateMap::Key object) {
        if (fDeviant.saveCopyOnce(object)) {
            fObjects.push_back(object);
        }
    }
    void keep() noexcept { fObjects.clear(); }

private:
    DeviantImpl & fDeviant;
    std::vector<StateMap::Key> fObjects;
};

} // namespace

void Deviant::syncFromRoot() const {
    DeviantImpl & self = requireDeviant(*this, "syncFromRoot on null deviant");
    if (self.isRoot()) {
        raiseInternalError("syncFromRoot on root deviant");
    }
    if (self.transactionDepth < 1) {
        raiseInternalError("syncFromRoot outside a transaction");
    }
    std::vector<StateMap::Key> const objects = self.objects.keys();
    SavedForChange saved(self, objects.size());
    for (StateMap::Key const object : objects) {
        saved.save(object);
    }
    saved.keep();
    for (StateMap::Key const object : objects) {
        const_cast<ClassObjectIntf *>(object)->internal_setDeviation(*this, internal::sentinel(FallbackToRoot));
    }
}

void Deviant::assignToRoot() const {
    DeviantImpl & self = requireDeviant(*this, "assignToRoot on null deviant");
    if (self.isRoot()) {
        raiseInternalError("assignToRoot on root deviant");
    }
    DeviantImpl & root = self.root();
    if (root.transactionDepth < 1) {
        raiseInternalError("assignToRoot outside a transaction");
    }
    DeviantAssertions(&root).assertWritable(nullptr);
    internal::PhaseScope const phase(self);
    internal::ViewScope const view(self, "<internal: assignToRoot>", self.currentChangeSet.states);
    ChangedBodies const bodies = internal::collectAssignment(self.objects, root.deviant(), view.deviant());
    SavedForChange saved(root, bodies.created.size() + bodies.deleted.size() + bodies.modified.size());
    for (auto const * const objects : {&bodies.created, &bodies.deleted, &bodies.modified}) {
        for (ClassObjectIntf const * const object : *objects) {
            saved.save(object);
        }
    }
    if (!root.hasPlainHelper()) {
        saved.keep(); // a client's helper may fail when some objects have changed
    }
    internal::replay(internal::ReplayKind::AssignToRoot, bodies, root.deviant(), view.deviant());
    saved.keep();
}

} // namespace ZEL
