#include <ZEL/ChangeReport.h>
#include <ZEL/DeviantImpl.h>
#include <ZEL/DeviantManager.h>
#include <ZEL/DeviantManagerHelper.h>
#include <ZEL/ReportBuilder.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectIntf.h>

#include <utility>
#include <vector>

namespace ZEL {

using NSInterface::ClassObjectIntf;
using NSInterface::ObjectIntf;
using Report = ReportOfChanges<ClassObject, FALSE_TYPE>;

namespace {

/// What an object is to become, made before it is put in place.
class NewState {
public:
    NewState(ClassObject const & object, Deviant source)
        : fObject(object.getImplementation()), fState(fObject->deviant_getCopyOfDeviation(source)) {
        if (!Deviant::isRealState(fState)) {
            fState = static_cast<ObjectIntf *>(Deviant::FallbackToRoot); // it follows the root from now on
        }
    }
    NewState(NewState && other) noexcept : fObject(other.fObject), fState(std::exchange(other.fState, nullptr)) {}
    NewState & operator=(NewState &&) = delete;
    ~NewState() { fObject->deviant_destroyState(fState); }

    void putInto(Deviant target) { fObject->internal_setDeviation(target, std::exchange(fState, nullptr)); }

private:
    ClassObjectIntf * fObject;
    ObjectIntf * fState;
};

void endState(ClassObjectIntf & object, Deviant target) {
    ObjectIntf * const state = object.internal_getDeviation(target);
    if (Deviant::isRealState(state)) {
        state->destroy(target);
    }
    object.internal_destroyDeviation(target);
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
    // All that can fail comes first: what is made here, and room for it.
    std::vector<NewState> states;
    std::vector<ClassObjectIntf *> deleted;
    auto const number = [](auto const & sequence) { return static_cast<std::size_t>(sequence.size()); };
    states.reserve(number(report.created) + number(report.modified));
    deleted.reserve(number(report.deleted));
    for (auto const * const objects : {&report.created, &report.modified}) {
        for (ClassObject const & object : *objects) {
            states.emplace_back(object, source);
        }
    }
    for (ClassObject const & object : report.deleted) {
        deleted.push_back(object.getImplementation());
    }
    if (internal::DeviantImpl * const named = target.isRootDeviant() ? nullptr : target.getImpl()) {
        named->objects.makeRoom(states.size() + deleted.size());
    }
    // An object refers to others and not to their states, so the order among them does not matter.
    for (NewState & state : states) {
        state.putInto(target);
    }
    for (ClassObjectIntf * const object : deleted) {
        endState(*object, target);
    }
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
