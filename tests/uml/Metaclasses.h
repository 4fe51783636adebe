#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Property.h>

#include <map>
#include <string>
#include <vector>

namespace ZEL::Test {

/// A metamodel whose objects are to be made in models of `modelUri`, which is its own or, for a profile, another's.
struct Subject {
    char const * name;
    ImmutableMetaModel (*metaModel)();
    char const * modelUri;
    /// The metamodel of that model.
    ImmutableMetaModel (*modelMetaModel)();
};

/// The concrete classes of a metamodel, without its model and its factory.
[[nodiscard]] std::vector<ImmutableClass> concreteClasses(ImmutableMetaModel const & metaModel);
[[nodiscard]] ImmutableClass modelClass(ImmutableMetaModel const & metaModel);
[[nodiscard]] bool isStereotype(ImmutableClass const & metaClass);

/// What a program may set and finds in the file that it saves: not derived, not read-only, not transient.
[[nodiscard]] bool isSaved(ImmutableProperty const & property);
/// Whether the property names the object's container.
[[nodiscard]] bool isContainerEnd(ImmutableProperty const & property);

/// Where in a model objects of each class have their place.
class Places {
public:
    struct Place {
        ImmutableClass container;
        ImmutableProperty property;
    };
    explicit Places(Subject const & subject);

    /// The nearest place to the model; null if nothing contains the class.
    [[nodiscard]] Place const * find(ImmutableClass const & metaClass) const;
    /// A concrete class of the type: of the metamodel under test, or else of those below it.
    [[nodiscard]] ImmutableClass concreteClassOf(ImmutableType const & type);
    [[nodiscard]] ImmutableClass modelClass() const { return fModelClass; }

private:
    ImmutableClass fModelClass;
    std::vector<ImmutableClass> fClasses; ///< those of the metamodel under test first
    std::map<ImmutableClass, Place> fPlaces;
    std::map<ImmutableType, ImmutableClass> fConcrete;
};

/// Makes objects in one model, each below what may contain it, by reflection alone.
///
/// Every object gets containers of its own, so that what is done to one leaves the others alone.
class Nursery {
public:
    /// There must be a transaction.
    Nursery(Model const & model, Places & places);

    /// A new object of a concrete class of the type, somewhere in the tree of the model.
    [[nodiscard]] ClassObject make(ImmutableType const & type);
    /// The same, not contained yet.
    [[nodiscard]] ClassObject makeLoose(ImmutableType const & type);
    /// A value of the data type that differs from the default of the property.
    [[nodiscard]] Object value(ImmutableProperty const & property) const;

private:
    void contain(ClassObject const & object);

    Model fModel;
    Places & fPlaces;
};

} // namespace ZEL::Test
