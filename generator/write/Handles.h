#pragma once

#include "family/Family.h"

#include <vector>

namespace zelgen {

/// The properties whose operations the handles of a class have: all of the closure, including redefined ones, each name
/// once.
[[nodiscard]] std::vector<Property const *> handleProperties(Class const & of);
/// The declared operations of the closure, each once.
[[nodiscard]] std::vector<Operation const *> handleOperations(Class const & of);

} // namespace zelgen
