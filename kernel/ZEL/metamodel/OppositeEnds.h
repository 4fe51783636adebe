#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/metamodel/Descriptors.h>

/// One end of a two-ended association changed without a call back, by the property's tables.
namespace ZEL::internal {

/// Adds `value` to the end, or sets it. What it displaces from a composite single-valued end becomes unparented.
ZEL_API void addOppositeOnly(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end,
                             ClassObjectIntf & value);
/// Takes `value` off the end; nothing if it does not stand there.
ZEL_API void eraseOppositeOnly(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end,
                               ClassObjectIntf const & value);
/// The value of a single-valued end; an invalid handle if there is none.
[[nodiscard]] ZEL_API ClassObject singleValue(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end);

} // namespace ZEL::internal
