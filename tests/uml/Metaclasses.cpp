#include "uml/Metaclasses.h"

#include <ZEL/FactoryRegistry.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/tools/TypePredicates.h>

#include <deque>
#include <set>
#include <stdexcept>

namespace ZEL::Test {
namespace {

/// Models are read without their profiles: no other tool's definition of one is of use to a program.
bool isRead(ImmutableClass const & metaClass) { return metaClass.getQualifiedName() != "uml.Profile"; }

/// Whether the property holds the one object below which all others of a model are.
bool isTop(ImmutableProperty const & property) { return property.getName() == "topPackage"; }

std::string uriOf(ImmutableType const & type) { return type.getRootModel().getUri().str(); }

} // namespace

std::vector<ImmutableClass> concreteClasses(ImmutableMetaModel const & metaModel) {
    std::vector<ImmutableClass> classes;
    for (ImmutableType const & type : metaModel.getTopPackage().getOwnedTypes()) {
        ImmutableClass const metaClass(type);
        if (metaClass.isValid() && !metaClass.isAbstract() && !inherits(metaClass, Model::MetaClass()) &&
            !inherits(metaClass, FactoryObject::MetaClass())) {
            classes.push_back(metaClass);
        }
    }
    return classes;
}

ImmutableClass modelClass(ImmutableMetaModel const & metaModel) {
    for (ImmutableType const & type : metaModel.getTopPackage().getOwnedTypes()) {
        ImmutableClass const metaClass(type);
        if (metaClass.isValid() && !metaClass.isAbstract() && inherits(metaClass, Model::MetaClass())) {
            return metaClass;
        }
    }
    return MetaModel::MetaClass(); // the built-in one describes itself
}

bool isStereotype(ImmutableClass const & metaClass) { return inherits(metaClass, StereotypeObject::MetaClass()); }

bool isSaved(ImmutableProperty const & property) {
    return !property.isDerived() && !property.isReadOnly() && property.getPersistence() != PersistenceKind::Transient;
}

bool isContainerEnd(ImmutableProperty const & property) {
    ImmutableProperty const opposite = property.getOpposite();
    return opposite.isValid() && opposite.isComposite() && !property.getUpper().isUnlimited();
}

/// Breadth first from the model, so that each class is placed as near to it as can be.
Places::Places(Subject const & subject) : fModelClass(ZEL::Test::modelClass(subject.modelMetaModel())) {
    std::set<ImmutableClass> known;
    for (ImmutableMetaModel const & metaModel : {subject.metaModel(), subject.modelMetaModel(),
                                                 ImmutableMetaModel(ImmutableClass::MetaClass().getRootModel())}) {
        for (ImmutableClass const & metaClass : concreteClasses(metaModel)) {
            if (isRead(metaClass) && known.insert(metaClass).second) {
                fClasses.push_back(metaClass);
            }
        }
    }
    std::deque<ImmutableClass> open{fModelClass};
    while (!open.empty()) {
        ImmutableClass const container = open.front();
        open.pop_front();
        for (ImmutableProperty const & property : container.getOwnedAttributes()) {
            ImmutableClass const type(property.getType());
            bool const hasRoom = container != fModelClass || property.isMultivalued() || isTop(property);
            if (!property.isComposite() || !isSaved(property) || !type.isValid() || !hasRoom) {
                continue;
            }
            for (ImmutableClass const & metaClass : fClasses) {
                if (fPlaces.count(metaClass) == 0 && inherits(metaClass, type)) {
                    fPlaces[metaClass] = {container, property};
                    open.push_back(metaClass);
                }
            }
        }
    }
}

Places::Place const * Places::find(ImmutableClass const & metaClass) const {
    auto const found = fPlaces.find(metaClass);
    return found == fPlaces.end() ? nullptr : &found->second;
}

ImmutableClass Places::concreteClassOf(ImmutableType const & type) {
    ImmutableClass & result = fConcrete[type];
    ImmutableClass const wanted(type);
    if (!result.isValid() && !wanted.isAbstract()) {
        result = wanted;
    }
    for (std::size_t i = 0; i < fClasses.size() && !result.isValid(); ++i) {
        if (inherits(fClasses[i], wanted)) {
            result = fClasses[i];
        }
    }
    if (!result.isValid()) {
        throw std::runtime_error("no concrete class is a " + type.getQualifiedName().str());
    }
    return result;
}

Nursery::Nursery(Model const & model, Places & places) : fModel(model), fPlaces(places) {
    for (ImmutableProperty const & property : places.modelClass().getOwnedAttributes()) {
        if (isTop(property)) {
            fModel.setOrAdd(property, makeLoose(property.getType()));
        }
    }
}

ClassObject Nursery::makeLoose(ImmutableType const & type) {
    ImmutableClass const metaClass = fPlaces.concreteClassOf(type);
    FactoryObject const factory = FactoryRegistry::instance()->createFactory(uriOf(metaClass), fModel);
    ClassObject const object = factory.createFromString(metaClass.getName());
    if (!object.isValid()) {
        throw std::runtime_error("no factory makes a " + metaClass.getQualifiedName().str());
    }
    return object;
}

ClassObject Nursery::make(ImmutableType const & type) {
    ClassObject const object = makeLoose(type);
    contain(object);
    return object;
}

void Nursery::contain(ClassObject const & object) {
    ImmutableClass const metaClass = object.getMetaClass();
    if (isStereotype(metaClass)) {
        for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
            if (property.getName().str().rfind("base_", 0) == 0) {
                object.setOrAdd(property, make(property.getType()));
                return;
            }
        }
    }
    Places::Place const * const place = fPlaces.find(isRead(metaClass) ? metaClass : Package::MetaClass());
    if (place == nullptr) {
        throw std::runtime_error("nothing contains a " + metaClass.getQualifiedName().str());
    }
    if (place->container != fPlaces.modelClass()) {
        make(place->container).setOrAdd(place->property, object);
    } else if (!isTop(place->property)) {
        fModel.setOrAdd(place->property, object);
    } else {
        ClassObject(fModel.getOne(place->property)).setOrAdd(String("packagedElement"), object);
    }
}

Object Nursery::value(ImmutableProperty const & property) const {
    static std::map<std::string, std::string> const texts{{"Integer", "-7"},
                                                          {"UnlimitedNatural", "7"},
                                                          {"Double", "-0.25"},
                                                          {"Real", "-0.25"},
                                                          {"String", "a <text> & \"more\", \xc3\xa9"}};
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
    return FactoryRegistry::instance()
        ->createFactory(uriOf(type), fModel)
        .createFromString(type.getName(), String(text));
}

} // namespace ZEL::Test
