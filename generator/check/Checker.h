#pragma once

#include "check/Catalogue.h"
#include "load/Diagnostics.h"

#include <string>
#include <vector>

namespace zelgen {

/// The checks of one definition, grouped by subject. Each group after `checkInheritance` expects that it has found
/// nothing; apart from that, each check must cope with what others have reported, such as an unknown type.
class Checker {
public:
    /// `definitions` are all that are known, `definition` among them.
    Checker(Definition const & definition, std::vector<Definition const *> const & definitions,
            Diagnostics & diagnostics)
        : fDefinition(definition), fCatalogue(definitions), fDiagnostics(diagnostics) {}

    void checkMetamodel();
    void checkTypes();
    /// Superclasses must be known classes without cycles. Walking a closure is not safe before this.
    void checkInheritance();
    void checkRoots();
    void checkRoles();
    void checkProperties();
    void checkOperations();
    /// Reports names of C++ operations that would collide.
    void checkNames();

private:
    using Entry = Catalogue::Entry;

    void report(Mark mark, std::string const & text) { fDiagnostics.add(fDefinition.fileOf(mark), mark, text); }
    /// Reports a word, in quotes between the two texts.
    void report(Word const & word, std::string const & before, std::string const & after) {
        report(word.mark, before + " '" + word.text + "'" + after);
    }
    /// Reports a word that is not among `allowed`.
    void expectOneOf(Word const & word, std::string const & what, std::vector<std::string> const & allowed);
    void expectFlag(Word const & word, std::string const & what);
    void expectIdentifier(Word const & word, std::string const & what);
    /// The type of that name; reports an unknown name.
    Entry expectType(Word const & name, std::string const & what);
    Entry expectClass(Word const & name, std::string const & what);

    void checkNamespace();
    void checkIncludeDirectory();
    void checkUri(Word const & uri);
    void checkGeneratedNames(TypeDefinition const & type);
    void checkLiterals(TypeDefinition const & type);
    void checkCycle(TypeDefinition const & type);
    void checkRole(Word const & name, std::string const & what, std::string const & base);
    void checkProperty(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkMultiplicity(PropertyDefinition const & p);
    /// Reports a text, of the entry `what`, that is not a value of the type.
    void checkValue(Word const & value, std::string const & what, Entry const & type);
    void warnOfManyTexts(PropertyDefinition const & p, Entry const & type, std::string const & what);
    void checkAssociation(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkOpposite(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkRedefinition(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkNarrowing(TypeDefinition const & owner, PropertyDefinition const & p, Entry const & type);
    void checkMaking(TypeDefinition const & owner, PropertyDefinition const & p, Entry const & type);
    void checkDerivation(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkSeldom(PropertyDefinition const & p, Entry const & type, std::string const & what);
    void checkView(TypeDefinition const & owner, std::vector<Word> const & parts);
    /// The same; the values shown must be of the type.
    void checkUnion(TypeDefinition const & owner, std::vector<Word> const & parts, Entry const & type);
    void checkViews(TypeDefinition const & owner);
    void checkSignature(OperationDefinition const & operation);
    void checkTwins(TypeDefinition const & type);
    void checkConstraints(TypeDefinition const & type);

    /// The name that the definition uses for the type.
    [[nodiscard]] std::string nameOf(Entry const & type) const {
        return (type.home == &fDefinition ? "" : type.home->prefix.text + '.') + type.type->name.text;
    }
    [[nodiscard]] bool isKindOf(Entry const & type, Entry const & other) const;
    /// Nothing if its type is unknown, which is reported elsewhere.
    [[nodiscard]] Entry typeOf(Catalogue::PropertyEntry const & p) const {
        return fCatalogue.find(p.property->type.text, *p.owner.home);
    }
    [[nodiscard]] Entry entryOf(TypeDefinition const & type) const { return {&fDefinition, &type}; }
    /// Names of all properties in the closure, for suggestions.
    [[nodiscard]] std::vector<std::string> propertyNames(TypeDefinition const & type) const;

    Definition const & fDefinition;
    Catalogue fCatalogue;
    Diagnostics & fDiagnostics;
};

/// Parses a text such as "0..1"; returns false for a text of another form. An unlimited upper bound is -1.
[[nodiscard]] bool parseMultiplicity(std::string const & text, long & lower, long & upper);

} // namespace zelgen
