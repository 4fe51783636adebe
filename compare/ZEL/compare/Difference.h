#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/values/Object.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEL::Compare {

/// One thing that is different on the right of a match. A value; its handles hold the objects of both sides.
struct Difference {
    enum class Kind : std::uint8_t {
        Added,            ///< the object, with all in it that is new
        Removed,          ///< the object, with all in it that has not moved elsewhere
        Moved,            ///< into another container, or another property
        ValueChanged,     ///< of a property of a data type: all its values
        LinkChanged,      ///< of a single-valued property
        LinkAdded,        ///< to a multi-valued property
        LinkRemoved,      ///< from a multi-valued property
        OrderChanged,     ///< of what a multi-valued property holds on both sides
        RemainderChanged, ///< what is kept of a file without being understood, see `Remainder`
    };

    Kind kind = Kind::ValueChanged;
    ImmutableClassObject left;  ///< null for `Added`
    ImmutableClassObject right; ///< null for `Removed`
    /// That changed, or that contains the object: on the right, of a removed object on the left. Invalid for
    /// `RemainderChanged`.
    ImmutableProperty property;
    /// Values or targets of links. Of a link that was added or removed the one; of a moved object the containers; of an
    /// order all elements that both sides have. Links that follow from their other end are not among them.
    std::vector<ImmutableObject> before;
    std::vector<ImmutableObject> after; ///< objects of the right
    ImmutableProperty propertyBefore;   ///< of a moved object: that contained it
    /// How many objects come with an added one, or go with a removed one. Those that move are not among them.
    std::size_t content = 0;
};

} // namespace ZEL::Compare
