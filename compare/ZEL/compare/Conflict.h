#pragma once

#include <ZEL/Export.h>
#include <ZEL/compare/Difference.h>

#include <cstdint>
#include <vector>

namespace ZEL::Compare {

enum class Resolution : std::uint8_t {
    Ours,   ///< as our side has it: what theirs wants is left out
    Theirs, ///< as their side has it: what ours has done is taken back as far as it stands in the way
    Both,   ///< one after the other in a list
};

/// Two changes of one thing that cannot both be.
struct Conflict {
    enum class Kind : std::uint8_t {
        Values,    ///< different values of a property, or different remainders of a file
        Links,     ///< links of a single-valued property to different objects
        Places,    ///< moves to two places, or into each other
        Orders,    ///< different orders of one list
        Ends,      ///< links of two objects to one that can be linked to one of them only
        Removal,   ///< one side has changed, moved or linked to what the other has removed
        Additions, ///< different new objects of one name, or for the place of one
    };

    Kind kind = Kind::Values;
    std::vector<Difference> ours;   ///< what our side has done, from base to ours
    std::vector<Difference> theirs; ///< what is left out as long as the conflict stands
    /// Whether `Resolution::Both` can be.
    bool allowsBoth = false;
};

} // namespace ZEL::Compare
