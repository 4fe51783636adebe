#pragma once

#include <ZEL/Export.h>

namespace ZEL {

class ImmutableObject;
class Package;
class String;

/// What the metamodel of an object says about it.
namespace navigation {

/// The name of the object's type, as in "Package" or "Integer". Throws if the object is invalid or has no valid type.
[[nodiscard]] ZEL_API String getMetaTypeName(ImmutableObject const & object);

/// The name of the class of the object's type, as in "Class", "PrimitiveType" or "Stereotype". Throws if the object is
/// invalid, or its type or the type's class is.
[[nodiscard]] ZEL_API String getMetaTypeClassName(ImmutableObject const & object);

} // namespace navigation

/// The package of the built-in metamodel's types.
[[nodiscard]] ZEL_API Package getPackage();

} // namespace ZEL
