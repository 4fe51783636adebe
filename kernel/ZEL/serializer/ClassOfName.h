#pragma once

#include <ZEL/Export.h>
#include <ZEL/serializer/QualifiedName.h>

namespace ZEL {
class ImmutableClass;
} // namespace ZEL

namespace ZEL::Serializer {

/// The class that files call so: by the URI of its metamodel and its name in the top package. Invalid if no such metamodel
/// is registered, or it has no such class.
[[nodiscard]] ZEL_API ImmutableClass classOfName(QualifiedName name);

} // namespace ZEL::Serializer
