#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zelgen {

/// ", did you mean 'subClass'?" for the candidate most similar to `name`; empty if none is similar.
[[nodiscard]] std::string suggestion(std::string_view name, std::vector<std::string> const & candidates);

/// "a", "a or b", "a, b or c".
[[nodiscard]] std::string anyOf(std::vector<std::string> const & names);

} // namespace zelgen
