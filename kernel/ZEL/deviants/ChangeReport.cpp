#include <ZEL/deviants/ChangeReport.h>
#include <ZEL/deviants/ClassObjectIntf.h>

namespace ZEL::internal {

namespace {

bool exists(ObjectIntf const * state) noexcept { return state != nullptr && state != Deviant::InvalidObject; }

} // namespace

Change classifyChange(ObjectIntf const * present, ObjectIntf const * wanted) noexcept {
    if (exists(wanted)) {
        return exists(present) ? Change::Modified : Change::Created;
    }
    if (wanted == nullptr && present == Deviant::FallbackToRoot) {
        return Change::Modified;
    }
    return exists(present) ? Change::Deleted : Change::None;
}

Change classifyAssignment(ObjectIntf const * inRoot, ObjectIntf const * wanted) noexcept {
    if (wanted == nullptr || wanted == Deviant::FallbackToRoot) {
        return Change::None;
    }
    if (wanted == Deviant::InvalidObject) {
        return exists(inRoot) ? Change::Deleted : Change::None;
    }
    return inRoot == Deviant::InvalidObject ? Change::Created : Change::Modified;
}

void ChangedBodies::add(Change change, ClassObjectIntf * body) {
    if (change != Change::None) {
        auto & bodies = change == Change::Created ? created : change == Change::Deleted ? deleted : modified;
        bodies.push_back(body);
    }
}

ChangedBodies collectChanges(StateMap const & map, Deviant target, Deviant source, Classify classify) {
    ChangedBodies result;
    for (StateMap::Entry const & entry : map) {
        Change const change =
            classify(entry.key->internal_getDeviation(target), entry.key->internal_getDeviation(source));
        result.add(change, const_cast<ClassObjectIntf *>(entry.key));
    }
    return result;
}

} // namespace ZEL::internal
