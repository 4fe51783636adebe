#pragma once

#include <array>
#include <cstddef>

namespace ZEL::Compare {

/// The rules that follow from any metamodel, in the order in which their diagnostics come.
enum class StandardRule : std::size_t {
    Multiplicity,
    UnresolvedLink,
    OppositeEnds,
    UniqueNames,
    GeneralizationCycle,
    Containment,
};

inline constexpr std::array<char const *, 6> standardRuleNames{"multiplicity", "unresolvedLink",      "oppositeEnds",
                                                               "uniqueNames",  "generalizationCycle", "containment"};

} // namespace ZEL::Compare
