#pragma once

#include <nlohmann/json_fwd.hpp>

namespace ZEL {
class ImmutableClassObject;
} // namespace ZEL

/// What commands print for other programs to read.
namespace cli {

/// Its entries stand in the order in which they are made.
using Json = nlohmann::ordered_json;

/// An object for other programs: `class`, `name`, qualified by those of what contains it, and `id`, by which files
/// refer to it. Null for an invalid handle.
[[nodiscard]] Json jsonOf(ZEL::ImmutableClassObject const & object);

/// On standard output, a line for each entry. Bytes that are not UTF-8 are replaced.
void print(Json const & json);

} // namespace cli
