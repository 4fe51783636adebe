#pragma once

#include <optional>
#include <string>
#include <vector>

namespace zelgen {

/// A type as operations name it: `Sequence<Feature>`, `ImmutableSequence<ImmutableType>`, `Boolean`, `uml.Class`.
struct SignatureType {
    std::string name; ///< without `Immutable`, as a property names it; "void" for no result
    bool immutable = false;
    bool sequence = false;

    friend bool operator==(SignatureType const &, SignatureType const &) = default;
};

struct Signature {
    struct Parameter {
        SignatureType type;
        std::string name;
    };
    SignatureType result;
    std::string name;
    std::vector<Parameter> parameters;
    bool isConst = false;
};

/// Parses a text such as `Boolean conformsTo(ImmutableType other) const`; nothing for a text of another form.
[[nodiscard]] std::optional<Signature> parseSignature(std::string const & text);

} // namespace zelgen
