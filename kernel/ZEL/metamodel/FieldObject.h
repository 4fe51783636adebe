#pragma once

#include <string_view>

namespace ZEL {

namespace NSInterface {
class ValueObjectIntf;
} // namespace NSInterface

namespace internal {

class FieldValue;

/// A box of its own for a value that is set, without a count: the first handle takes it. Throws as a null handle does if
/// the type of the value is not registered.
using Boxer = NSInterface::ValueObjectIntf * (*)(FieldValue const & value);

/// How the values of the primitive type are boxed, by its registered name: "ZEL.Integer". Null for all other types.
[[nodiscard]] Boxer boxerOf(std::string_view typeName) noexcept;

} // namespace internal
} // namespace ZEL
