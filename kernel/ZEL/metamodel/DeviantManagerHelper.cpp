#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/DeviantManagerHelper.h>
#include <ZEL/metamodel/ReportBuilder.h>

#include <typeinfo>
#include <vector>

namespace ZEL {

using Report = ReportOfChanges<ClassObject, FALSE_TYPE>;

namespace {

std::vector<NSInterface::ClassObjectIntf *> bodiesOf(Sequence<ClassObject> const & objects) {
    std::vector<NSInterface::ClassObjectIntf *> bodies;
    for (ClassObject const & object : objects) {
        bodies.push_back(object.getImplementation());
    }
    return bodies;
}

} // namespace

DeviantManagerHelper::~DeviantManagerHelper() = default;

void DeviantManagerHelper::cancelTransaction(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::undo(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::redo(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::assignToRoot(Report const & report) { doTheJob(report); }

void DeviantManagerHelper::doTheJob(Report const & report) {
    internal::carryOut({bodiesOf(report.created), bodiesOf(report.deleted), bodiesOf(report.modified)},
                       report.getTargetDeviant(), report.sourceDeviant);
}

void DeviantManagerHelper::replay(internal::ReplayKind kind, internal::ChangedBodies const & bodies, Deviant target,
                                  Deviant source) {
    Report const report = internal::makeWritableReport(bodies, target, source);
    switch (kind) {
    case internal::ReplayKind::CancelTransaction:
        return cancelTransaction(report);
    case internal::ReplayKind::Undo:
        return undo(report);
    case internal::ReplayKind::Redo:
        return redo(report);
    case internal::ReplayKind::AssignToRoot:
        return assignToRoot(report);
    }
}

bool DeviantManagerHelper::isPlain() const noexcept { return typeid(*this) == typeid(DeviantManagerHelper); }

} // namespace ZEL
