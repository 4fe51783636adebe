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
/// What setting a single link comes to where there is no other end to keep in step. False, and nothing done, for all other
/// properties, and for a value that is not of the property's type.
[[nodiscard]] ZEL_API bool setLoneLink(ClassObjectIntf & object, Deviant deviant, FieldDescriptor const & field,
                                       ClassObjectIntf & value);
/// The value of a single-valued end; an invalid handle if there is none.
[[nodiscard]] ZEL_API ClassObject singleValue(ObjectIntf & object, Deviant deviant, PropertyDescriptor const & end);

} // namespace ZEL::internal
