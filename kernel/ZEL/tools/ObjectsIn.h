#pragma once

#include <ZEL/metamodel/ClassObject.h>

#include <vector>

namespace ZEL {

/// The object and all that it contains, stereotype instances too: each before what it contains, and in the order of
/// `getContaineeZELs`. The objects of a model that have no container are not contained. Linear, without recursion.
[[nodiscard]] ZEL_API std::vector<ImmutableClassObject> objectsIn(ImmutableClassObject const & root);

} // namespace ZEL
