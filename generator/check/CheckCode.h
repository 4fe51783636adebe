#pragma once

#include "family/Family.h"
#include "load/Definition.h"

namespace zelgen {

/// Says where the C++ operations of the family's main metamodel, which `definition` defines, would meet: two of one name
/// in a class, or an inherited one that two superclasses make in different ways.
void checkCode(Family const & family, Definition const & definition, Diagnostics & diagnostics);

} // namespace zelgen
