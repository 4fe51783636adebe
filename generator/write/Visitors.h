#pragma once

#include "write/Emit.h"

#include <string>
#include <vector>

namespace zelgen {

struct VisitorFiles {
    std::string name; ///< of the class and of its files
    std::string header;
    std::string source;
};

/// The visitors of the metamodel's own concrete classes, each before the one that builds on it. None if a type of the
/// metamodel has the name of one: the type takes precedence.
[[nodiscard]] std::vector<VisitorFiles> emitVisitors(Emission const & emission);

} // namespace zelgen
