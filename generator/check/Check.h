#pragma once

#include "load/Definition.h"

#include <vector>

namespace zelgen {

/// Reports the mistakes of the first definition, or those of the others, on which it builds, if there are any. All
/// mistakes of a definition are collected; if there are none, the definitions can be turned into a `Family`.
void check(std::vector<Definition const *> const & definitions, Diagnostics & diagnostics);

} // namespace zelgen
