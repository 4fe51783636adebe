#pragma once

#include <ZEL/Export.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/StateMap.h>

#include <vector>

namespace ZEL::internal {

/// How an object must change in one deviant to become what it is in another.
enum class Change { None, Created, Deleted, Modified };

/// From `present` to `wanted`. An object exists unless its state is null or `InvalidObject`; `FallbackToRoot` exists.
[[nodiscard]] ZEL_API Change classifyChange(ObjectIntf const * present, ObjectIntf const * wanted) noexcept;
/// From the root's state to that of a deviant. Where the deviant has no state of its own the root stays as it is.
[[nodiscard]] ZEL_API Change classifyAssignment(ObjectIntf const * inRoot, ObjectIntf const * wanted) noexcept;

/// The content of a report of changes, before handles are made of it; in the order of the map that was walked.
struct ZEL_API ChangedBodies {
    std::vector<ClassObjectIntf *> created;
    std::vector<ClassObjectIntf *> deleted;
    std::vector<ClassObjectIntf *> modified;

    void add(Change change, ClassObjectIntf * body);
};

using Classify = Change (*)(ObjectIntf const * present, ObjectIntf const * wanted) noexcept;

/// How `target` must change to become `source`, for the objects of `map`. In an assignment `target` is the root.
[[nodiscard]] ChangedBodies collectChanges(StateMap const & map, Deviant target, Deviant source,
                                           Classify classify = &classifyChange);

} // namespace ZEL::internal
