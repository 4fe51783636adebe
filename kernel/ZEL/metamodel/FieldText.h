#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/FieldValue.h>

#include <optional>
#include <string>

namespace ZEL::internal {

/// The text of a value that is set, as its type prints it. Nothing where only the type knows: for a literal and for a
/// floating-point number.
[[nodiscard]] ZEL_API std::optional<std::string> textOf(FieldValue const & value);

} // namespace ZEL::internal
