#pragma once

#include "load/Definition.h"

#include <string>
#include <string_view>

namespace zelgen {

/// The one place where C++ names are made from model names.
///
/// `property` is a base name: a property's model name, or the prefixed one of a property that repeats an inherited
/// name.
class Names {
public:
    /// "ownedComment" -> "OwnedComment".
    [[nodiscard]] static std::string capital(std::string_view name);
    /// "Boolean" -> "boolean".
    [[nodiscard]] static std::string uncapital(std::string_view name);
    /// "OwnedComment" -> "OwnedComments"; "y" becomes "ies", "ss" gets "es". Some words are their own plural.
    [[nodiscard]] static std::string plural(std::string_view name);
    /// Base name of a property that repeats an inherited name: the name of its type goes before, "typeRaisedException".
    [[nodiscard]] static std::string prefixed(std::string_view type, std::string_view property);

    /// Name of the function that decides about a constraint: "has_parts" -> "satisfiesHasParts".
    [[nodiscard]] static std::string satisfies(std::string_view constraint);

    /// Whether operations read `isFoo()` in place of `getIsFoo()`.
    [[nodiscard]] static bool readsAsFlag(std::string_view property);

    /// Member of a state's fields: words of C++ get an underscore.
    [[nodiscard]] static std::string field(std::string_view property);
    /// "in" -> "In"; never a word of C++.
    [[nodiscard]] static std::string enumerator(std::string_view literal);
    /// The same, or what the definition of the enumeration says.
    [[nodiscard]] static std::string enumerator(TypeDefinition const & enumeration, std::string_view literal);

    [[nodiscard]] static bool isKeyword(std::string_view name);
    [[nodiscard]] static bool isIdentifier(std::string_view name);
};

} // namespace zelgen
