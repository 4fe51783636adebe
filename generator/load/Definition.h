#pragma once

#include "load/Diagnostics.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace zelgen {

// A definition file as it was read: one struct for each kind of entry. Only the form of the file has been checked.

struct PropertyDefinition {
    Word name;
    Word type;
    Word multiplicity;
    std::vector<Word> flags;
    Word defaultValue;
    Word persistence;
    Word association;
    Word opposite;
    Word ownedEnd;
    Word key;
    Word redefines;
    Word stored;
    Word body;
    Word fixed;
    std::vector<Word> view;
    std::optional<Word> viewOf; ///< `view: p`: the values of `p` that are of this property's type
    Word stereotype;
    Word baseElement;
    Word hidden;
    std::string description;
};

/// Where the body of an operation comes from.
enum class OperationBody {
    Hand,          ///< declared; defined by hand
    BodyOnly,      ///< the same, but not on the handles
    Unimplemented, ///< throws that it is not implemented
};

struct OperationDefinition {
    Word signature;
    OperationBody body = OperationBody::Hand;
};

/// A rule about the instances of a class, which a function written by hand decides.
struct ConstraintDefinition {
    Word name;
    Word severity;
    Word text;
};

enum class TypeKind { Class, Enumeration, Primitive };

struct TypeDefinition {
    Word name;
    TypeKind kind = TypeKind::Class;
    std::vector<Word> literals;
    /// By literal, what C++ calls it where that is not made of the literal.
    std::vector<std::pair<Word, Word>> enumerators;
    std::vector<Word> superclasses;
    Word abstract;
    Word builtAs;
    std::vector<Word> handWritten;
    std::vector<PropertyDefinition> properties;
    /// What derived properties show on instances of this class, for each property.
    std::vector<std::pair<Word, std::vector<Word>>> views;
    std::vector<OperationDefinition> operations;
    std::vector<ConstraintDefinition> constraints;
};

struct Definition {
    std::string file;
    std::vector<std::string> parts; ///< further files with types of the definition; marks count them from 1
    Word prefix;
    Word cppNamespace;
    Word includeDirectory;
    Word topPackage;
    std::vector<Word> uris; ///< the first is that of the model
    std::vector<Word> alsoRegistered;
    Word uuid;
    Word modelClass;
    Word factoryClass;
    std::vector<Word> ownedEndKeys;
    std::vector<TypeDefinition> types;

    [[nodiscard]] std::string const & fileOf(Mark mark) const { return mark.part == 0 ? file : parts[mark.part - 1]; }
};

/// Reads a file and the files that it names as its parts. What is malformed is reported to `diagnostics` and left out.
[[nodiscard]] Definition loadDefinition(std::string const & path, Diagnostics & diagnostics);
/// The same from a text, which messages call `file`; parts are searched for in the folder of that.
[[nodiscard]] Definition parseDefinition(std::string const & text, std::string const & file, Diagnostics & diagnostics);

} // namespace zelgen
