#pragma once

#include "family/Family.h"

#include <string>

namespace zelgen {

/// How values go into and out of the member of a state's fields. `fields` is the expression of the fields' struct, with
/// its dot or what stands for it.
namespace fieldText {

/// Declaration of the member with its initial value; empty for one of less than a byte.
[[nodiscard]] std::string declaration(Property const & p);
/// Declarations of what takes less than a byte: the member, and its has-flag if it keeps one. They stand together,
/// after all others.
[[nodiscard]] std::string bitDeclarations(Property const & p);

[[nodiscard]] std::string member(std::string const & fields, Property const & p);
[[nodiscard]] std::string load(std::string const & fields, Property const & p);
[[nodiscard]] std::string isSet(std::string const & fields, Property const & p);
/// Statements, each with its semicolon.
[[nodiscard]] std::string store(std::string const & fields, Property const & p, std::string const & value);
[[nodiscard]] std::string clear(std::string const & fields, Property const & p);
/// Whether the member may hold a value that counts as absent: setting it to the same one is a change.
[[nodiscard]] bool mayHoldAbsentValue(Property const & p);
/// Whether the member holds `value` already, so that a write would change nothing.
[[nodiscard]] std::string holds(std::string const & fields, Property const & p, std::string const & value);

/// A constant of the property's type, such as "ZEL::Integer(1)".
[[nodiscard]] std::string constant(Property const & p, std::string const & value);

} // namespace fieldText
} // namespace zelgen
