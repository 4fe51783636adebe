#pragma once

#include <ZEL/deviants/Deviant.h>

#include <string_view>

namespace ZEL {

class Object;

namespace internal {

class FieldValue;

/// A value that is set in a box of its own, seen in the deviant. Throws as a null handle does if its type is not
/// registered.
using Boxer = Object (*)(FieldValue const & value, Deviant deviant);

/// How the values of the primitive type are boxed, by its registered name: "ZEL.Integer". Null for all other types.
[[nodiscard]] Boxer boxerOf(std::string_view typeName) noexcept;

} // namespace internal
} // namespace ZEL
