#pragma once

#include "family/Family.h"

#include <string>

namespace zelgen {

/// How values are read from and written to the fields of a state. `fields` is the expression of the struct, including
/// the dot after it.
namespace fieldText {

/// The declaration of the member with its initial value; empty for a bit-field.
[[nodiscard]] std::string declaration(Property const & p);
/// The declarations of bit-fields: of the member, if it is one, and of its has-flag, if it has one. They are grouped
/// after all other members.
[[nodiscard]] std::string bitDeclarations(Property const & p);

[[nodiscard]] std::string member(std::string const & fields, Property const & p);
/// The same to be written.
[[nodiscard]] std::string writableMember(std::string const & fields, Property const & p);
[[nodiscard]] std::string load(std::string const & fields, Property const & p);
[[nodiscard]] std::string isSet(std::string const & fields, Property const & p);
/// Statements, each with its semicolon.
[[nodiscard]] std::string store(std::string const & fields, Property const & p, std::string const & value);
[[nodiscard]] std::string clear(std::string const & fields, Property const & p);
/// Whether the member may hold a value that counts as absent, so that setting the same value is a change.
[[nodiscard]] bool mayHoldAbsentValue(Property const & p);
/// The condition that the member holds `value` already, so that a write would change nothing.
[[nodiscard]] std::string holds(std::string const & fields, Property const & p, std::string const & value);

/// A constant of the property's type, such as "ZEL::Integer(1)".
[[nodiscard]] std::string constant(Property const & p, std::string const & value);

} // namespace fieldText
} // namespace zelgen
