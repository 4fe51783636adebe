#include <ZEL/ChangeReport.h>
#include <ZEL/DeviantManager.h>
#include <ZEL/DeviantManagerHelper.h>
#include <ZEL/ReportBuilder.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectIntf.h>

namespace ZEL {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;
using Report = ReportOfChanges<ClassObject, FALSE_TYPE>;

namespace {

ObjectIntf * followsRoot() noexcept { return static_cast<ObjectIntf *>(Deviant::FallbackToRoot); }

/// Gives each new object an empty state, so that references among new objects meet objects that exist.
void createStates(Report const & report, Deviant target, Deviant source) {
    for (ClassObject const & handle : report.created) {
        ClassObjectIntf * const object = handle.getImplementation();
        if (Deviant::isRealState(object->internal_getDeviation(source))) {
            object->internal_createDeviation(target);
        } else {
            // It comes back as an object that follows the root.
            object->internal_setDeviation(target, followsRoot());
        }
    }
}

void endStates(Report const & report, Deviant target) {
    for (ClassObject const & handle : report.deleted) {
        ClassObjectIntf * const object = handle.getImplementation();
        ObjectIntf * const state = object->internal_getDeviation(target);
        if (Deviant::isRealState(state)) {
            state->destroy(target);
        }
        object->internal_destroyDeviation(target);
    }
}

void fillCreated(Report const & report, Deviant target, Deviant source) {
    for (ClassObject const & handle : report.created) {
        ClassObjectIntf * const object = handle.getImplementation();
        ObjectIntf * const from = object->internal_getDeviation(source);
        ObjectIntf * const to = object->internal_getDeviation(target);
        if (Deviant::isRealState(from) && Deviant::isRealState(to)) {
            to->internal_deviationAssign(target, from, source);
        }
    }
}

void fillModified(Report const & report, Deviant target, Deviant source) {
    for (ClassObject const & handle : report.modified) {
        ClassObjectIntf * const object = handle.getImplementation();
        ObjectIntf * const from = object->internal_getDeviation(source);
        if (!Deviant::isRealState(from)) {
            object->internal_setDeviation(target, followsRoot());
            continue;
        }
        ObjectIntf * to = object->internal_getDeviation(target);
        if (!Deviant::isRealState(to)) {
            to = object->internal_createDeviation(target);
        }
        to->internal_deviationAssign(target, from, source);
    }
}

} // namespace

DeviantManagerHelper::~DeviantManagerHelper() = default;

void DeviantManagerHelper::cancelTransaction(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::undo(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::redo(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::assignToRoot(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::doTheJob(Report const & report) {
    Deviant const target = report.getTargetDeviant();
    Deviant const source = report.sourceDeviant;
    createStates(report, target, source);
    endStates(report, target);
    fillCreated(report, target, source);
    fillModified(report, target, source);
}

namespace internal {

void replay(ReplayKind kind, ChangedBodies const & bodies, Deviant target, Deviant source) {
    Report const report = makeWritableReport(bodies, target, source);
    DeviantManagerHelper & helper = target.getDeviantManager()->internal_helper();
    switch (kind) {
    case ReplayKind::CancelTransaction:
        return helper.cancelTransaction(report);
    case ReplayKind::Undo:
        return helper.undo(report);
    case ReplayKind::Redo:
        return helper.redo(report);
    case ReplayKind::AssignToRoot:
        return helper.assignToRoot(report);
    }
}

} // namespace internal
} // namespace ZEL
