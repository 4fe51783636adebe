#pragma once

#include "family/Family.h"

#include <map>

namespace zelgen {

/// Makes a `Family` from checked definitions, in passes: each needs the results of the one before it for all classes.
class FamilyBuilder {
public:
    FamilyBuilder(std::vector<Definition const *> const & definitions,
                  std::vector<std::unique_ptr<Metamodel>> & target);

    void build();

private:
    template <class Function> void forEachClass(Function function) {
        for (Class * const target : fOrder) {
            function(*target);
        }
    }
    void forEachProperty(void (FamilyBuilder::*pass)(Property &, PropertyDefinition const &));

    void addMetamodel(Definition const & definition);
    void addAncestors(Class & target);
    void addProperties(Class & target);
    void fillProperty(Property & property, PropertyDefinition const & source);
    void connectProperty(Property & property, PropertyDefinition const & source);
    void decideStorage(Property & property, PropertyDefinition const & source);
    void addRedefinitions(Class & target);
    void addInherited(Class & target);
    void addViews(Class & target);
    void addOperations(Class & target);
    void addConstraints(Class & target);

    [[nodiscard]] Type const & typeOf(std::string const & name, Definition const & from) const;
    [[nodiscard]] Property const & propertyOf(Catalogue::PropertyEntry const & entry) const;
    [[nodiscard]] Property const & inClosure(Class const & from, std::string const & name) const;
    [[nodiscard]] Definition const & definitionOf(Class const & of) const { return *fSources.at(&of).home; }

    std::vector<Definition const *> fDefinitions;
    Catalogue fCatalogue;
    std::vector<std::unique_ptr<Metamodel>> & fTarget;
    std::map<TypeDefinition const *, Type *> fTypes;
    std::map<TypeDefinition const *, Class *> fClasses;
    std::map<Class const *, Catalogue::Entry> fSources;
    std::vector<Class *> fOrder; ///< all classes, those of other metamodels and superclasses first
};

} // namespace zelgen
