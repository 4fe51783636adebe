#pragma once

#include "family/Family.h"
#include "load/Definition.h"

namespace zelgen {

/// Reports where C++ operations of the family's main metamodel, which `definition` defines, would collide: two of the
/// same name in a class, or an inherited one that two superclasses implement in different ways.
void checkCode(Family const & family, Definition const & definition, Diagnostics & diagnostics);

} // namespace zelgen
