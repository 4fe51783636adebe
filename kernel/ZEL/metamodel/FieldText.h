#pragma once

#include <ZEL/Export.h>
#include <ZEL/metamodel/FieldValue.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace ZEL::internal {

/// The text of a value that is set, as its type prints it. Nothing where only the type knows: for a literal and for a
/// floating-point number.
[[nodiscard]] ZEL_API std::optional<std::string> textOf(FieldValue const & value);

/// Room for the text of a number.
using NumberBuffer = std::array<char, 16>;

/// The same as a view: of the object's state or of `buffer`.
[[nodiscard]] ZEL_API std::optional<std::string_view> viewOf(FieldValue const & value, NumberBuffer & buffer);

} // namespace ZEL::internal
