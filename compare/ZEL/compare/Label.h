#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/ClassObject.h>

#include <string>

namespace ZEL::Compare {

/// The object for a reader: its class and its name with those of what contains it, as in "Class 'library.Book'". One
/// without a name is called after the nearest object around it that has one: "Comment in Class 'library.Book'".
/// "nothing" for an invalid handle. Linear in the depth of the object.
[[nodiscard]] ZEL_API std::string labelOf(ImmutableClassObject const & object);

/// Its own name; empty if it has none.
[[nodiscard]] ZEL_API std::string nameOf(ImmutableClassObject const & object);

/// The names of the object and of what contains it, but for that of a model, with dots between them: "library.Book".
/// Containers without a name are passed over; empty if the object has no name.
[[nodiscard]] ZEL_API std::string qualifiedNameOf(ImmutableClassObject const & object);

} // namespace ZEL::Compare
