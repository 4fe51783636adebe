#pragma once

#include <ZEL/compare/Difference.h>
#include <ZEL/compare/Pairs.h>

#include <vector>

namespace ZEL::Compare {

/// What is different on the right of the pairs.
[[nodiscard]] std::vector<Difference> differencesOf(Pairs const & pairs);

} // namespace ZEL::Compare
