#include "check/Check.h"

#include "check/CheckCode.h"
#include "check/Checker.h"
#include "family/Names.h"
#include "load/Suggestion.h"

#include <algorithm>
#include <cctype>
#include <set>

namespace zelgen {
namespace {

void checkDefinition(Definition const & definition, std::vector<Definition const *> const & definitions,
                     Diagnostics & diagnostics) {
    Checker checker(definition, definitions, diagnostics);
    checker.checkMetamodel();
    checker.checkTypes();
    checker.checkInheritance();
    if (!diagnostics.empty()) {
        return; // what follows walks superclasses and would report the same mistakes again
    }
    checker.checkRoots();
    checker.checkRoles();
    checker.checkProperties();
    checker.checkOperations();
    if (diagnostics.empty()) {
        checker.checkNames();
    }
}

} // namespace

void check(std::vector<Definition const *> const & definitions, Diagnostics & diagnostics) {
    // The definitions that the first one builds on come first: its checks rely on them.
    std::for_each(definitions.rbegin(), definitions.rend(), [&](Definition const * definition) {
        if (diagnostics.empty()) {
            checkDefinition(*definition, definitions, diagnostics);
        }
    });
    if (diagnostics.empty()) {
        checkCode(Family(definitions), *definitions.front(), diagnostics);
    }
}

void Checker::expectOneOf(Word const & word, std::string const & what, std::vector<std::string> const & allowed) {
    if (word.empty() || std::find(allowed.begin(), allowed.end(), word.text) != allowed.end()) {
        return;
    }
    report(word, "found " + what, ", expected " + anyOf(allowed) + suggestion(word.text, allowed));
}

void Checker::expectFlag(Word const & word, std::string const & what) { expectOneOf(word, what, {"true", "false"}); }

void Checker::expectIdentifier(Word const & word, std::string const & what) {
    if (!Names::isIdentifier(word.text)) {
        report(word, "found " + what, ", expected letters, digits and underscores");
    }
}

Checker::Entry Checker::expectType(Word const & name, std::string const & what) {
    Entry const entry = fCatalogue.find(name.text, fDefinition);
    if (!entry) {
        report(name, what + ": type", " not found" + suggestion(name.text, fCatalogue.names(fDefinition)));
    }
    return entry;
}

Checker::Entry Checker::expectClass(Word const & name, std::string const & what) {
    Entry const entry = expectType(name, what);
    if (entry && entry.type->kind != TypeKind::Class) {
        report(name, what + ": found the data type", ", expected a class");
        return {};
    }
    return entry;
}

void Checker::checkMetamodel() {
    if (fDefinition.prefix.empty()) {
        report({1, 1}, "found no 'prefix', expected the prefix of the metamodel, such as 'library'");
    } else {
        expectIdentifier(fDefinition.prefix, "prefix");
        if (fDefinition.cppNamespace.empty() && Names::isKeyword(fDefinition.prefix.text)) {
            report(fDefinition.prefix, "found prefix", ", expected a name that is no word of C++, or a 'namespace'");
        }
    }
    checkNamespace();
    checkIncludeDirectory();
    if (fDefinition.uris.empty()) {
        report({1, 1}, "found no 'uris', expected at least the URI of the metamodel");
    }
    for (std::vector<Word> const * const uris : {&fDefinition.uris, &fDefinition.alsoRegistered}) {
        for (Word const & uri : *uris) {
            checkUri(uri);
        }
    }
    if (!fDefinition.ownedEndKeys.empty() && fDefinition.ownedEndKeys.size() != 2) {
        report(fDefinition.ownedEndKeys.front().mark,
               "found " + std::to_string(fDefinition.ownedEndKeys.size()) + " texts in 'owned_end_keys', expected two");
    }
    // Of two definitions, the one that builds on the other is reported.
    std::vector<Definition const *> const & all = fCatalogue.definitions();
    std::for_each(std::find(all.begin(), all.end(), &fDefinition) + 1, all.end(), [this](Definition const * other) {
        if (other->prefix.text == fDefinition.prefix.text) {
            report(fDefinition.prefix, "found prefix", " also in " + other->file + ", expected a prefix of its own");
        }
    });
}

void Checker::checkNamespace() {
    std::string const & text = fDefinition.cppNamespace.text;
    for (std::size_t begin = 0; !text.empty() && begin <= text.size();) {
        std::size_t const end = std::min(text.find("::", begin), text.size());
        std::string const part = text.substr(begin, end - begin);
        if (!Names::isIdentifier(part) || Names::isKeyword(part)) {
            report(fDefinition.cppNamespace, "found namespace", ", expected C++ names with '::' between them");
            return;
        }
        begin = end + 2;
    }
}

/// The generator writes below the folder that it is given, and nowhere else.
void Checker::checkIncludeDirectory() {
    Word const & directory = fDefinition.includeDirectory;
    for (std::size_t begin = 0; !directory.empty() && begin <= directory.text.size();) {
        std::size_t const end = std::min(directory.text.find('/', begin), directory.text.size());
        std::string const part = directory.text.substr(begin, end - begin);
        bool const isPlain = std::all_of(part.begin(), part.end(), [](char c) {
            return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_' || c == '-' || c == '.';
        });
        if (!isPlain || part.find_first_not_of('.') == std::string::npos) {
            report(directory, "found 'include_directory'",
                   ", expected names of folders with '/' between them, of letters, digits, '_', '-' and '.'");
            return;
        }
        begin = end + 1;
    }
}

void Checker::checkUri(Word const & uri) {
    // The word in capitals before a path is one of the library's constants.
    std::size_t const plus = uri.text.find(" + ");
    if (plus == std::string::npos) {
        return;
    }
    expectOneOf(
        {uri.text.substr(0, plus), uri.mark}, "begin of a URI",
        {"OMG_SCHEMA_BASE", "QUILLON_SCHEMA_BASE", "MAGICDRAW_SCHEMA_BASE", "RHP_SCHEMA_BASE", "EMF_SCHEMA_BASE"});
}

void Checker::checkTypes() {
    for (TypeDefinition const & type : fDefinition.types) {
        expectIdentifier(type.name, "type");
        checkGeneratedNames(type);
        if (Names::isKeyword(type.name.text)) {
            report(type.name, "found type", ", expected a name that is no word of C++");
        }
        if (type.kind != TypeKind::Enumeration && !type.enumerators.empty()) {
            report(type.name, "found enumerators on", ", expected them on enumerations only");
        }
        if (type.kind != TypeKind::Class) {
            checkLiterals(type);
            continue;
        }
        if (type.name.text == "BodyInterface" || type.name.text == "ImmutableForm") {
            report(type.name, "found class", ", expected a name that is not one of a member of all handles");
        }
        expectFlag(type.abstract, "'abstract'");
        expectOneOf(type.builtAs, "'built_as'", {"class", "stereotype"});
        for (Word const & part : type.handWritten) {
            expectOneOf(part, "'hand_written'", {"interface", "handles"});
        }
    }
}

/// A type may not have a name that generated code uses for something else.
void Checker::checkGeneratedNames(TypeDefinition const & type) {
    static std::vector<std::string> const kOurs{
        "BuiltInMetaModel",    "Forward", "HASP",   "MetaModelRegistration", "NSImplementation",
        "NSInterface",         "Tables",  "ZEL",    "getMetaModel",          "registerMetaModel",
        "unregisterMetaModel", "std",     "tables",
    };
    std::string const & name = type.name.text;
    std::string const space =
        fDefinition.cppNamespace.empty() ? fDefinition.prefix.text : fDefinition.cppNamespace.text;
    bool const isInNamespace = ("::" + space + "::").find("::" + name + "::") != std::string::npos;
    if (std::find(kOurs.begin(), kOurs.end(), name) != kOurs.end() || isInNamespace) {
        report(type.name, "found type", ", expected a name that generated code does not use by itself");
    }
    for (TypeDefinition const & other : fDefinition.types) {
        std::string const & of = other.name.text;
        std::vector<std::string> made;
        if (other.kind == TypeKind::Class) {
            made = {"Immutable" + of,   of + "Intf",   of + "Impl",
                    of + "DeviantImpl", of + "Tables", of + "PropertyTable"};
        } else if (other.kind == TypeKind::Enumeration) {
            made = {of + "Shape"};
        }
        if (std::find(made.begin(), made.end(), name) != made.end()) {
            report(type.name, "found type", ", expected a name that is not one of those made for '" + of + "'");
        }
    }
}

void Checker::checkLiterals(TypeDefinition const & type) {
    if (type.kind == TypeKind::Enumeration && type.literals.empty()) {
        report(type.name, "found enumeration", " without literals, expected at least one");
    }
    std::vector<std::string> literals;
    std::set<std::string> enumerators;
    for (Word const & literal : type.literals) {
        std::string const enumerator = Names::enumerator(type, literal.text);
        literals.push_back(literal.text);
        if (literal.empty()) {
            report(literal.mark, "found an empty literal of '" + type.name.text + "', expected a text");
        } else if (!enumerators.insert(enumerator).second) {
            report(literal, "found literal",
                   " of '" + type.name.text + "' with the C++ name '" + enumerator +
                       "' of another one, expected a different one");
        }
    }
    for (auto const & [literal, name] : type.enumerators) {
        if (type.kind == TypeKind::Enumeration) {
            expectOneOf(literal, "literal", literals);
        }
        expectIdentifier(name, "enumerator");
        if (Names::isKeyword(name.text)) {
            report(name, "found enumerator", ", expected a name that is no word of C++");
        }
    }
    if (!type.properties.empty() || !type.superclasses.empty() || !type.operations.empty() || !type.views.empty() ||
        !type.constraints.empty()) {
        report(type.name, "found properties or superclasses on the data type", ", expected them on classes only");
    }
}

void Checker::checkInheritance() {
    for (TypeDefinition const & type : fDefinition.types) {
        std::set<std::string> seen;
        for (Word const & super : type.superclasses) {
            expectClass(super, "class '" + type.name.text + "'");
            if (!seen.insert(super.text).second) {
                report(super, "class '" + type.name.text + "': found superclass", " twice, expected it once");
            }
        }
        bool const isRoot = type.name.text == "Object" && fDefinition.prefix.text == "ZEL";
        if (type.kind == TypeKind::Class && type.superclasses.empty() && !isRoot) {
            report(type.name, "class", ": found no superclass, expected at least one, such as 'ZEL.ClassObject'");
        }
        checkCycle(type);
    }
}

void Checker::checkCycle(TypeDefinition const & type) {
    for (Word const & super : type.superclasses) {
        Entry const entry = fCatalogue.find(super.text, fDefinition);
        if (!entry) {
            continue;
        }
        std::vector<Entry> const above = fCatalogue.closure(entry);
        if (std::find(above.begin(), above.end(), entryOf(type)) != above.end()) {
            report(super, "class '" + type.name.text + "': found superclass",
                   " that is a subclass of it, expected no cycle");
        }
    }
}

/// All objects of a program are instances of subclasses of `ZEL.ClassObject`.
void Checker::checkRoots() {
    for (TypeDefinition const & type : fDefinition.types) {
        if (type.kind == TypeKind::Class && fDefinition.prefix.text != "ZEL" &&
            !fCatalogue.isKindOf(entryOf(type), "ZEL.ClassObject")) {
            report(type.superclasses.front(), "class '" + type.name.text + "': found superclass",
                   ", expected 'ZEL.ClassObject' or a subclass of it");
        }
    }
}

void Checker::checkRoles() {
    checkRole(fDefinition.modelClass, "model_class", "ZEL.Model");
    checkRole(fDefinition.factoryClass, "factory_class", "ZEL.FactoryObject");
    if (fDefinition.factoryClass.empty()) {
        report({1, 1}, "found no 'factory_class', expected the class that creates objects");
    }
}

void Checker::checkRole(Word const & name, std::string const & what, std::string const & base) {
    if (name.empty()) {
        return;
    }
    Entry const entry = expectClass(name, "'" + what + "'");
    if (!entry) {
        return;
    }
    if (entry.home != &fDefinition) {
        report(name, "'" + what + "': found", " of another metamodel, expected a class of this one");
    } else if (!fCatalogue.isKindOf(entry, base)) {
        report(name, "'" + what + "': found class", ", expected a subclass of '" + base + "'");
    } else if (entry.type->abstract.isTrue()) {
        report(name, "'" + what + "': found the abstract class", ", expected one with instances");
    }
}

} // namespace zelgen
