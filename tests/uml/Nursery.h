#pragma once

#include <ZEL/ZEL.h>

#include <deque>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZEL::tests {

/// A metamodel whose objects are to be made in models of `modelUri`, which is its own or, for a profile, another's.
struct TestedMetaModel {
    char const * name;
    ImmutableMetaModel (*metaModel)();
    char const * modelUri;
};

inline bool isModelOrFactory(ImmutableClass const & metaClass) {
    return inherits(metaClass, Model::MetaClass()) || inherits(metaClass, FactoryObject::MetaClass());
}

/// The concrete classes of a metamodel, without its model and its factory.
inline std::vector<ImmutableClass> concreteClasses(ImmutableMetaModel const & metaModel) {
    std::vector<ImmutableClass> classes;
    for (ImmutableType const & type : metaModel.getTopPackage().getOwnedTypes()) {
        ImmutableClass const metaClass(type);
        if (metaClass.isValid() && !metaClass.isAbstract() && !isModelOrFactory(metaClass)) {
            classes.push_back(metaClass);
        }
    }
    return classes;
}

/// Models are read without their profiles: no other tool's definition of one is of use to a program.
inline bool isRead(ImmutableClass const & metaClass) { return metaClass.getQualifiedName() != "uml.Profile"; }

/// What a program may set and finds in the file that it saves: not derived, not read-only, not transient.
inline bool isSaved(ImmutableProperty const & property) {
    return !property.isDerived() && !property.isReadOnly() && property.getPersistence() != PersistenceKind::Transient;
}

/// Whether the property names the object's container.
inline bool isContainerEnd(ImmutableProperty const & property) {
    ImmutableProperty const opposite = property.getOpposite();
    return opposite.isValid() && opposite.isComposite() && !property.getUpper().isUnlimited();
}

/// Whether the property holds the one object below which all others of a model are.
inline bool isTop(ImmutableProperty const & property) { return property.getName() == "topPackage"; }

/// Where in a model objects of each class have their place.
struct Places {
    struct Place {
        ImmutableClass container;
        ImmutableProperty property;
    };

    /// Breadth first from the model, so that each class is placed as near to it as can be.
    explicit Places(TestedMetaModel const & subject)
        : modelClass(FactoryRegistry::instance()->createModel(subject.modelUri).getMetaClass()) {
        for (ImmutableModel const & metaModel : {ImmutableModel(subject.metaModel()), modelClass.getRootModel(),
                                                 ImmutableClass::MetaClass().getRootModel()}) {
            for (ImmutableClass const & metaClass : concreteClasses(ImmutableMetaModel(metaModel))) {
                if (isRead(metaClass)) {
                    classes.push_back(metaClass);
                }
            }
        }
        std::deque<ImmutableClass> open{modelClass};
        for (; !open.empty(); open.pop_front()) {
            ImmutableClass const container = open.front();
            for (ImmutableProperty const & property : container.getOwnedAttributes()) {
                bool const hasRoom = container != modelClass || property.isMultivalued() || isTop(property);
                ImmutableClass const type(property.getType());
                if (!property.isComposite() || !isSaved(property) || !type.isValid() || !hasRoom) {
                    continue;
                }
                for (ImmutableClass const & metaClass : classes) {
                    if (inherits(metaClass, type) && places.try_emplace(metaClass, Place{container, property}).second) {
                        open.push_back(metaClass);
                    }
                }
            }
        }
    }

    /// A concrete class of the type: of the metamodel under test, or else of those below it.
    [[nodiscard]] ImmutableClass concreteClassOf(ImmutableClass const & type) const {
        if (!type.isAbstract()) {
            return type;
        }
        for (ImmutableClass const & metaClass : classes) {
            if (inherits(metaClass, type)) {
                return metaClass;
            }
        }
        throw std::runtime_error("no concrete class is a " + type.getQualifiedName().str());
    }

    ImmutableClass modelClass;
    std::vector<ImmutableClass> classes; ///< those of the metamodel under test first
    std::map<ImmutableClass, Place> places;
};

/// Makes objects in one model, each below what may contain it, by reflection alone.
///
/// Every object gets containers of its own, so that what is done to one leaves the others alone.
class Nursery {
public:
    /// There must be a transaction.
    Nursery(Model const & model, Places const & places) : fModel(model), fPlaces(places) {
        for (ImmutableProperty const & property : places.modelClass.getOwnedAttributes()) {
            if (isTop(property)) {
                fModel.setOrAdd(property, makeLoose(property.getType()));
            }
        }
    }

    /// A new object of a concrete class of the type, somewhere in the tree of the model.
    [[nodiscard]] ClassObject make(ImmutableType const & type) const {
        ClassObject const object = makeLoose(type);
        contain(object);
        return object;
    }
    /// The same, not contained yet.
    [[nodiscard]] ClassObject makeLoose(ImmutableType const & type) const {
        ImmutableClass const metaClass = fPlaces.concreteClassOf(ImmutableClass(type));
        ClassObject const object = factoryOf(metaClass).createFromString(metaClass.getName());
        if (!object.isValid()) {
            throw std::runtime_error("no factory makes a " + metaClass.getQualifiedName().str());
        }
        return object;
    }
    /// A value of the data type that differs from the default of the property.
    [[nodiscard]] Object value(ImmutableProperty const & property) const {
        static std::map<std::string, std::string> const texts{
            {"Integer", "-7"}, {"UnlimitedNatural", "7"},  {"Double", "-0.25"},
            {"Real", "-0.25"}, {"Argument", "(given,())"}, {"String", "a <text> & \"more\", \xc3\xa9"}};
        ImmutableType const type = property.getType();
        std::string text;
        if (ImmutableEnumeration const enumeration(type); enumeration.isValid()) {
            auto const literals = enumeration.getOwnedLiterals();
            text = literals.at(property.getDefault() == literals.at(1).getName() ? 0 : 1).getName().str();
        } else if (type.getName() == "Boolean") {
            text = property.getDefault() == "true" ? "false" : "true";
        } else {
            text = texts.at(type.getName().str());
        }
        return factoryOf(type).createFromString(type.getName(), String(text));
    }

private:
    [[nodiscard]] FactoryObject factoryOf(ImmutableType const & type) const {
        return FactoryRegistry::instance()->createFactory(type.getRootModel().getUri(), fModel);
    }

    void contain(ClassObject const & object) const {
        ImmutableClass const metaClass = object.getMetaClass();
        if (inherits(metaClass, StereotypeObject::MetaClass())) {
            for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
                if (property.getName().str().starts_with("base_")) {
                    object.setOrAdd(property, make(property.getType()));
                    return;
                }
            }
        }
        auto const found = fPlaces.places.find(isRead(metaClass) ? metaClass : Package::MetaClass());
        if (found == fPlaces.places.end()) {
            throw std::runtime_error("nothing contains a " + metaClass.getQualifiedName().str());
        }
        auto const & [container, property] = found->second;
        if (container != fPlaces.modelClass) {
            make(container).setOrAdd(property, object);
        } else if (!isTop(property)) {
            fModel.setOrAdd(property, object);
        } else {
            ClassObject(fModel.getOne(property)).setOrAdd(String("packagedElement"), object);
        }
    }

    Model fModel;
    Places const & fPlaces;
};

} // namespace ZEL::tests
