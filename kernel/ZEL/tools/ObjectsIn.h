#pragma once

#include <ZEL/metamodel/ClassObject.h>

#include <vector>

namespace ZEL {

/// The object and all that it contains, stereotype instances too: each before what it contains, and in the order of
/// `getContaineeZELs`. Of a model these are the objects that its file holds: neither the factory nor objects without a
/// container. Linear, without recursion.
[[nodiscard]] ZEL_API std::vector<ImmutableClassObject> objectsIn(ImmutableClassObject const & root);

} // namespace ZEL
