#pragma once

#include "check/Catalogue.h"
#include "load/Diagnostics.h"

#include <string>
#include <vector>

namespace zelgen {

/// The checks of one definition, grouped by what they look at. Each group expects that `checkInheritance` has found
/// nothing; beyond that, what one check has told of, such as a type that is not known, the others must live with.
class Checker {
public:
    /// `definitions` are all that are known, `definition` among them.
    Checker(Definition const & definition, std::vector<Definition const *> const & definitions,
            Diagnostics & diagnostics)
        : fDefinition(definition), fCatalogue(definitions), fDiagnostics(diagnostics) {}

    void checkMetamodel();
    void checkTypes();
    /// Superclasses: known, classes, without cycle. Nothing that walks a closure is safe before this.
    void checkInheritance();
    void checkRoots();
    void checkRoles();
    void checkProperties();
    void checkOperations();
    /// Names of C++ operations that would collide.
    void checkNames();

private:
    using Entry = Catalogue::Entry;

    void report(Mark mark, std::string const & text) { fDiagnostics.add(fDefinition.fileOf(mark), mark, text); }
    /// Reports what is wrong with a word, which stands in quotes between the two texts.
    void report(Word const & word, std::string const & before, std::string const & after) {
        report(word.mark, before + " '" + word.text + "'" + after);
    }
    /// Reports a word that is not among `allowed`.
    void expectOneOf(Word const & word, std::string const & what, std::vector<std::string> const & allowed);
    void expectFlag(Word const & word, std::string const & what);
    void expectIdentifier(Word const & word, std::string const & what);
    /// The type of the name; reports a name that is not known.
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
    /// A text, of the entry `what`, that is to be a value of the type.
    void checkValue(Word const & value, std::string const & what, Entry const & type);
    void warnOfManyTexts(PropertyDefinition const & p, Entry const & type, std::string const & what);
    void checkAssociation(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkOpposite(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkRedefinition(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkNarrowing(TypeDefinition const & owner, PropertyDefinition const & p, Entry const & type);
    void checkMaking(TypeDefinition const & owner, PropertyDefinition const & p, Entry const & type);
    void checkDerivation(TypeDefinition const & owner, PropertyDefinition const & p);
    void checkView(TypeDefinition const & owner, std::vector<Word> const & parts);
    /// The same; what is shown must be of the type.
    void checkUnion(TypeDefinition const & owner, std::vector<Word> const & parts, Entry const & type);
    void checkViews(TypeDefinition const & owner);
    void checkSignature(OperationDefinition const & operation);
    void checkTwins(TypeDefinition const & type);

    /// As the definition names it.
    [[nodiscard]] std::string nameOf(Entry const & type) const {
        return (type.home == &fDefinition ? "" : type.home->prefix.text + '.') + type.type->name.text;
    }
    [[nodiscard]] bool isKindOf(Entry const & type, Entry const & other) const;
    /// Nothing if its type is not known, which is told where it stands.
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

/// "0..1" taken apart; false for a text of another form. An unlimited upper bound is -1.
[[nodiscard]] bool parseMultiplicity(std::string const & text, long & lower, long & upper);

} // namespace zelgen
