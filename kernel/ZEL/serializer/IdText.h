#pragma once

#include <ZEL/Integer.h>

#include <string>

/// The text form of an object's id in files: a prefix, the uuid of its model, an underscore, and its number in the
/// model, as in "_zel_5376c05e-df72-49a6-85e0-5388c3fca417_14".
namespace ZEL {

/// `id` behind the prefix "_zel_".
[[nodiscard]] ZEL_API std::string getPrefixedId(std::string const & id);

/// The number in a prefixed id. 0, which no object has, for any other text, and for a number that is not positive, out
/// of range or followed by anything.
[[nodiscard]] ZEL_API Integer getIdValue(std::string const & id);

/// The second of the parts between underscores, where nothing counts as a part between two of them; empty if there is
/// none.
[[nodiscard]] ZEL_API std::string getUuidValue(std::string const & id);

} // namespace ZEL
