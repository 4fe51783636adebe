#pragma once

#include "load/Definition.h"

#include <vector>

namespace zelgen {

/// Says what is wrong with the first definition, which builds on the others. All mistakes are collected; without any,
/// the definition can be turned into a `Family`.
void check(std::vector<Definition const *> const & definitions, Diagnostics & diagnostics);

} // namespace zelgen
