#pragma once

#include <ZEL/compare/Conflict.h>
#include <ZEL/compare/Differences.h>

#include <cstddef>
#include <unordered_map>
#include <vector>

namespace ZEL::Compare {

using NSInterface::ObjectIntf;

/// What the two sides of a merge have done, sorted by what can be done together.
class MergePlan {
public:
    /// Places of differences of both sides in the lists of all.
    struct Places {
        std::vector<std::size_t> ours;
        std::vector<std::size_t> theirs;
    };

    MergePlan(Differences ours, Differences theirs);

    Differences ours;
    Differences theirs;
    std::vector<std::size_t> taken; ///< of theirs
    std::vector<Conflict> conflicts;
    std::vector<Places> places; ///< of each conflict
    /// New objects of theirs, and the same of ours.
    std::unordered_map<ObjectIntf const *, ObjectIntf *> sameAdditions;
};

} // namespace ZEL::Compare
