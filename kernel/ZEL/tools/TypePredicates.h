#pragma once

#include <ZEL/Export.h>

#include <string>

namespace ZEL {

class ImmutableClass;
class ImmutableObject;
class ImmutableType;

/// Whether the classes are the same, or `metaClass` has `superClass` among its superclasses at any distance. False if
/// one is null. Linear in the number of superclasses.
[[nodiscard]] ZEL_API bool inherits(ImmutableClass const & metaClass, ImmutableClass const & superClass);

/// Whether the class, or one of its superclasses at any distance, has this name, which is not a qualified one. False if
/// the class is null. Linear in the number of superclasses.
[[nodiscard]] ZEL_API bool inherits(ImmutableClass const & metaClass, std::string const & name);

/// Whether the values of the type are data: those of primitive types and enumerations, too. False for null.
[[nodiscard]] ZEL_API bool isDataType(ImmutableType const & type);

/// Whether the object is a boxed value and no instance of a class. False for null.
[[nodiscard]] ZEL_API bool isValueObject(ImmutableObject const & object);

} // namespace ZEL
