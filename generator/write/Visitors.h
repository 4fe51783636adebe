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

/// The visitors of the metamodel's own concrete classes, each before the one that builds on it. None if the metamodel
/// has a type of the name of one: that has the name first.
[[nodiscard]] std::vector<VisitorFiles> emitVisitors(Emission const & emission);

} // namespace zelgen
