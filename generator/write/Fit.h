#pragma once

#include <string>

namespace zelgen {

/// Breaks lines of code that are too long to read: a one-line body gets lines of its own, an argument list goes on in
/// the next line. Comments, includes and texts stay as they are.
[[nodiscard]] std::string fitted(std::string const & text);

} // namespace zelgen
