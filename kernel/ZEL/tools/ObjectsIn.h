#pragma once

#include <ZEL/metamodel/ClassObject.h>

#include <vector>

namespace ZEL {

/// All objects of a `ContentsWalk` over `root`. Linear.
[[nodiscard]] ZEL_API std::vector<ImmutableClassObject> objectsIn(ImmutableClassObject const & root);

} // namespace ZEL
