#pragma once

#include "load/Definition.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelgen {

/// Finds types by the names that definitions use: `Comment` within its own definition, `ZEL.Comment` anywhere.
class Catalogue {
public:
    struct Entry {
        Definition const * home = nullptr;
        TypeDefinition const * type = nullptr;

        explicit operator bool() const { return type != nullptr; }
        friend bool operator==(Entry const &, Entry const &) = default;
    };
    struct PropertyEntry {
        Entry owner;
        PropertyDefinition const * property = nullptr;

        explicit operator bool() const { return property != nullptr; }
        friend bool operator==(PropertyEntry const &, PropertyEntry const &) = default;
    };

    explicit Catalogue(std::vector<Definition const *> definitions) : fDefinitions(std::move(definitions)) {}

    [[nodiscard]] Entry find(std::string_view name, Definition const & from) const;
    /// The property named `Class.p` or `ZEL.Class.p`; only among those that the class itself introduces.
    [[nodiscard]] PropertyEntry findProperty(std::string_view name, Definition const & from) const;
    /// The class itself and its ancestors, depth first, left to right, each once at its first place. Unknown
    /// superclasses are left out, and cycles end.
    [[nodiscard]] std::vector<Entry> closure(Entry const & type) const;
    /// What `property` means on instances of `type`: the first one of that name in the closure, as names hide in C++.
    [[nodiscard]] PropertyEntry inClosure(Entry const & type, std::string_view property) const;
    [[nodiscard]] bool isKindOf(Entry const & type, std::string_view qualifiedName) const;

    /// All names that `find` accepts within `from`.
    [[nodiscard]] std::vector<std::string> names(Definition const & from) const;
    [[nodiscard]] std::vector<Definition const *> const & definitions() const noexcept { return fDefinitions; }

private:
    void addClosure(Entry const & type, std::vector<Entry> & result) const;

    std::vector<Definition const *> fDefinitions;
};

/// The property of that name that `type` introduces; null if there is none.
[[nodiscard]] PropertyDefinition const * ownProperty(TypeDefinition const & type, std::string_view name);

} // namespace zelgen
