#pragma once

#include <string>
#include <string_view>

namespace ZEL::Interchange {

/// The last part of a namespace that could be the name of a profile: "Library" of
/// "http://example.org/schemas/Library/_1/0". Empty if there is none.
[[nodiscard]] std::string_view nameInNamespace(std::string_view uri);

/// The name as tools make names of elements and attributes of it: what these cannot have is an underscore there.
[[nodiscard]] std::string xmlNameOf(std::string_view name);

} // namespace ZEL::Interchange
