#include <ZEL/ChangeReport.h>
#include <ZEL/Deviant.h>
#include <ZEL/DeviantAssertions.h>
#include <ZEL/DeviantChecks.h>
#include <ZEL/metamodel/ClassObjectIntf.h>

namespace ZEL {

using internal::ChangedBodies;
using internal::DeviantImpl;
using internal::requireDeviant;
using NSInterface::ClassObjectIntf;

void Deviant::syncFromRoot() const {
    DeviantImpl & self = requireDeviant(*this, "syncFromRoot on null deviant");
    if (self.isRoot()) {
        raiseInternalError("syncFromRoot on root deviant");
    }
    if (self.transactionDepth < 1) {
        raiseInternalError("syncFromRoot outside a transaction");
    }
    for (StateMap::Key const object : self.objects.keys()) {
        self.saveCopyOnce(object);
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
    for (auto const * const objects : {&bodies.created, &bodies.deleted, &bodies.modified}) {
        for (ClassObjectIntf const * const object : *objects) {
            root.saveCopyOnce(object);
        }
    }
    internal::replay(internal::ReplayKind::AssignToRoot, bodies, root.deviant(), view.deviant());
}

} // namespace ZEL
