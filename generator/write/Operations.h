#pragma once

#include "family/Family.h"
#include "write/Printer.h"

#include <set>
#include <string>

namespace zelgen {

/// The texts of the operations that a definition declares in addition to those of properties.
namespace operationText {

[[nodiscard]] std::string declaration(Printer const & print, Operation const & operation);
/// The body of an unimplemented operation; empty for those that are written by hand.
[[nodiscard]] std::string definition(Printer const & print, Operation const & operation);

/// Whether the class of a handle declares it: `ImmutableX` if it is const, `X` if it is not or returns handles for writing.
[[nodiscard]] bool isOnHandle(Operation const & operation, bool immutable);

[[nodiscard]] std::string handleOperation(Printer const & print, Operation const & operation, bool immutable);

/// Adds the types that must be complete where the operation is called.
void collectTypes(Operation const & operation, std::set<Type const *> & types);

} // namespace operationText
} // namespace zelgen
