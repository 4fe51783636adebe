#pragma once

#include <string>

namespace zelgen {

/// Breaks lines of code that are too long: a one-line body gets lines of its own, the head of a template stands in the
/// line above, the base of a class in the line below, an argument list continues on the next line. Comments, includes and string literals are left as they are.
[[nodiscard]] std::string fitted(std::string const & text);

} // namespace zelgen
