#pragma once

#include "load/Definition.h"

#include <vector>

namespace zelgen {

/// Says what is wrong with the first definition, or if there is anything, with the others, on which it builds. All
/// mistakes of a definition are collected; without any, the definitions can be turned into a `Family`.
void check(std::vector<Definition const *> const & definitions, Diagnostics & diagnostics);

} // namespace zelgen
