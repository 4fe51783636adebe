#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/sequences/MultiIndexImpl.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <string>
#include <utility>

namespace ZEL {
namespace {

/// One of `count` positions; `count` is not 0.
std::size_t draw(std::size_t count) { return static_cast<std::size_t>(std::rand()) % count; }

bool isDataTyped(ImmutableProperty const & property) { return !ImmutableClass(property.getType()).isValid(); }

/// A required value of a data type is always there, so it counts as not set.
bool canTakeValue(ClassObject const & object, ImmutableProperty const & property) {
    bool const isAlwaysThere = isDataTyped(property) && property.lowerBound() > Integer(0);
    return property.isMultivalued() || isAlwaysThere || !object.has(property);
}

Sequence<ImmutableClass> emptySetOfClasses() {
    return Sequence<ImmutableClass>(std::make_unique<Generic::MultiIndexImpl<ImmutableClass, 1>>(), Deviant());
}

} // namespace

/// An object that is being filled.
struct RandomModelGenerator::Frame {
    ClassObject parent;
    int depth;
    int made;
};

RandomModelGenerator::RandomModelGenerator(FactoryObject factory)
    : fFactory(std::move(factory)), fSeed(static_cast<std::uint32_t>(std::time(nullptr))) {}

ClassObject RandomModelGenerator::createRandomModel(ClassObject const & root, int depth, int breadth, int associations,
                                                    unsigned int seed) {
    if (seed != 0) {
        fSeed = seed;
    }
    std::srand(fSeed);
    fPositions.clear();
    fInstantiableClasses.clear();
    createRandomModelComposition(root, depth, breadth);
    createRandomModelAssociation(associations);
    return root;
}

// --- what contains what ----------------------------------------------------------------------------------------------

ClassObject RandomModelGenerator::createRandomModelComposition(ClassObject const & parent, int depth, int breadth) {
    if (depth < 1) {
        return parent;
    }
    ClassObject last;
    std::size_t const outerPositions = fPositions.size();
    std::vector<Frame> frames{{parent, depth, 0}};
    while (!frames.empty()) {
        Frame & frame = frames.back();
        fPositions.resize(outerPositions + frames.size() - 1);
        ImmutableClass const metaClass = frame.parent.getMetaClass();
        ImmutableSequence<ImmutableProperty> const properties = metaClass.getOwnedAttributes();
        HASP::GList<int> const & positions = getCompositionMetaPropertyVector(metaClass, properties);
        if (frame.made >= breadth || positions.empty()) {
            frames.pop_back();
            continue;
        }
        fPositions.push_back(frame.made++);
        ClassObject const object = makeValue(frame.parent, properties[positions[draw(positions.size())]]);
        if (frames.size() == 1) {
            last = object;
        }
        if (object.isValid() && frame.depth > 1) {
            frames.push_back({object, frame.depth - 1, 0});
        }
    }
    fPositions.resize(outerPositions);
    return last;
}

ClassObject RandomModelGenerator::createValueForProperty(ClassObject const & parent, int depth, int breadth,
                                                         ImmutableProperty const & property) {
    ClassObject object = makeValue(parent, property);
    if (object.isValid()) {
        createRandomModelComposition(object, depth, breadth);
    }
    return object;
}

ClassObject RandomModelGenerator::makeValue(ClassObject const & parent, ImmutableProperty const & property) {
    // A single object that is replaced would remain without a container.
    if (!canTakeValue(parent, property)) {
        return ClassObject();
    }
    ImmutableType const type = property.getType();
    if (ImmutableClass const metaClass(type); metaClass.isValid()) {
        ClassObject object = makeObject(metaClass);
        parent.setOrAdd(property, object);
        return object;
    }
    if (internal::PropertyView::roleOf(property.getName().str()) == internal::PropertyView::Role::Name &&
        type.getName() == "String") {
        createNameStringAndSet(parent, property);
    } else if (Object const value = makeData(type); value.isValid()) {
        parent.setOrAdd(property, value);
    }
    return ClassObject();
}

Object RandomModelGenerator::makeData(ImmutableType const & type) const {
    String const name = type.getQualifiedName();
    if (type.getName() == "String") {
        return fFactory.createFromString(name, "foobar");
    }
    if (type.getName() == "Integer") {
        return fFactory.createFromString(name, std::to_string(std::rand() % 5000));
    }
    if (type.getName() == "Boolean") {
        return fFactory.createFromString(name, std::rand() % 2 == 0 ? "false" : "true");
    }
    ImmutableEnumeration const enumeration(type);
    if (!enumeration.isValid()) {
        return Object(); // a type that there are no texts for
    }
    std::vector<ImmutableEnumerationLiteral> const literals = enumeration.getOwnedLiterals().toVector();
    if (literals.empty()) {
        raiseInternalError("the enum type " + type.getName().str() + " doesnt have any literals ");
    }
    Object value = fFactory.createFromString(name, literals[draw(literals.size())].getName());
    if (!value.isValid()) {
        raiseInternalError("enumValue is not valid");
    }
    return value;
}

ClassObject RandomModelGenerator::makeObject(ImmutableClass const & type) {
    std::vector<ImmutableClass> const & classes = instantiableClasses(type);
    if (classes.empty()) {
        raiseInternalError("couldnt find a concrete superclass for " + type.getName().str());
    }
    ImmutableClass const metaClass = classes[draw(classes.size())];
    ClassObject object = factoryFor(metaClass).createFromString(metaClass.getName());
    if (!object.isValid()) {
        raiseInternalError("class object created is not valid");
    }
    rememberObject(object);
    ImmutableProperty const name = internal::MetaClassView::of(metaClass)->nameProperty();
    if (name.isValid()) {
        createNameStringAndSet(object, name);
    }
    return object;
}

void RandomModelGenerator::createNameStringAndSet(ClassObject const & object,
                                                  ImmutableProperty const & property) const {
    if (!object.isValid()) {
        raiseNullReference();
    }
    std::string text;
    for (int const position : fPositions) {
        text += std::to_string(position) + "-";
    }
    text += object.getMetaClass().getName().str() + "-[" + object.getId().toString().str() + "]";
    object.setOrAdd(property, String(text));
}

// --- values and links ------------------------------------------------------------------------------------------------

void RandomModelGenerator::createRandomModelAssociation(int count) {
    for (int i = 0; i < count && !fObjects.empty(); ++i) {
        ClassObject const object = fObjects[draw(fObjects.size())];
        if (!object.isValid()) {
            continue; // gone since an earlier run
        }
        ImmutableClass const metaClass = object.getMetaClass();
        ImmutableSequence<ImmutableProperty> const properties = metaClass.getOwnedAttributes();
        HASP::GList<int> const & positions = getAssociationMetaPropertyVector(metaClass, properties);
        if (positions.empty()) {
            continue;
        }
        ImmutableProperty const property = properties[positions[draw(positions.size())]];
        if (isDataTyped(property)) {
            makeValue(object, property);
            continue;
        }
        ClassObject const target = getRandomObjectForClass(ImmutableClass(property.getType()));
        if (target.isValid() && canTakeValue(object, property)) {
            object.setOrAdd(property, target);
        }
    }
}

ClassObject RandomModelGenerator::getRandomObjectForClass(ImmutableClass const & metaClass) const {
    auto const found = fObjectsByClass.find(metaClass);
    return found == fObjectsByClass.end() ? ClassObject() : found->second[draw(found->second.size())];
}

void RandomModelGenerator::addObjectToMap(ImmutableClass const & metaClass, ClassObject const & object) {
    fObjectsByClass[metaClass].push_back(object);
}

void RandomModelGenerator::rememberObject(ClassObject const & object) {
    fObjects.push_back(object);
    for (ImmutableClass const & metaClass : internal::withSuperClasses(object.getMetaClass())) {
        addObjectToMap(metaClass, object);
    }
}

// --- what the metamodel says -----------------------------------------------------------------------------------------

void RandomModelGenerator::createCompositionAssociationMetaPropertyVectors(
    ImmutableClass const & metaClass, ImmutableSequence<ImmutableProperty> const & properties) {
    Vectors vectors;
    int position = -1;
    for (ImmutableProperty const & handle : properties.toVector()) {
        internal::PropertyView const property(handle);
        ++position;
        if (!property.type.isValid()) {
            raiseInternalError("Property " + property.name + " has no type");
        }
        if (property.isDerived || property.persistence == PersistenceKind::Transient) {
            continue;
        }
        if (property.isComposite) {
            vectors.compositions.append(position);
        } else if (!property.isReadOnly && !property.isContainer) {
            // Setting the other end of a composition would move objects about, out of the model or into a cycle.
            vectors.associations.append(position);
        }
    }
    fVectors[metaClass] = vectors;
}

RandomModelGenerator::Vectors const &
RandomModelGenerator::vectorsOf(ImmutableClass const & metaClass,
                                ImmutableSequence<ImmutableProperty> const & properties) {
    if (fVectors.find(metaClass) == fVectors.end()) {
        createCompositionAssociationMetaPropertyVectors(metaClass, properties);
    }
    return fVectors[metaClass];
}

HASP::GList<int> const &
RandomModelGenerator::getCompositionMetaPropertyVector(ImmutableClass const & metaClass,
                                                       ImmutableSequence<ImmutableProperty> const & properties) {
    return vectorsOf(metaClass, properties).compositions;
}

HASP::GList<int> const &
RandomModelGenerator::getAssociationMetaPropertyVector(ImmutableClass const & metaClass,
                                                       ImmutableSequence<ImmutableProperty> const & properties) {
    return vectorsOf(metaClass, properties).associations;
}

Sequence<ImmutableClass> RandomModelGenerator::getNonAbstractSubClasses(ImmutableClass const & metaClass,
                                                                        Sequence<ImmutableClass> const & found) const {
    std::vector<ImmutableClass> seen;
    std::vector<ImmutableClass> open{metaClass};
    while (!open.empty()) {
        ImmutableClass const next = open.back();
        open.pop_back();
        if (std::find(seen.begin(), seen.end(), next) != seen.end()) {
            continue;
        }
        seen.push_back(next);
        if (!next.isAbstract()) {
            found.push_back(next);
        }
        std::vector<ImmutableClass> const subClasses = next.getSubClasses().toVector();
        open.insert(open.end(), subClasses.rbegin(), subClasses.rend());
    }
    return found;
}

/// Those of the factory's own metamodel. Where it builds on the metamodel of the type and adds no class to it, those of
/// that one. Other metamodels that build on it have their own models.
std::vector<ImmutableClass> const & RandomModelGenerator::instantiableClasses(ImmutableClass const & type) {
    auto const [entry, isNew] = fInstantiableClasses.try_emplace(type);
    if (!isNew) {
        return entry->second;
    }
    Sequence<ImmutableClass> const all = getNonAbstractSubClasses(type, emptySetOfClasses());
    for (ImmutableModel const & metaModel : {fFactory.getMetaClass().getRootModel(), type.getRootModel()}) {
        for (ImmutableClass const & metaClass : all.toVector()) {
            if (metaClass.getRootModel() == metaModel && !internal::isModelOrFactory(metaClass)) {
                entry->second.push_back(metaClass);
            }
        }
        if (!entry->second.empty()) {
            break;
        }
    }
    return entry->second;
}

FactoryObject RandomModelGenerator::factoryFor(ImmutableClass const & metaClass) {
    ImmutableModel const metaModel = metaClass.getRootModel();
    if (metaModel == fFactory.getMetaClass().getRootModel()) {
        return fFactory;
    }
    auto const [entry, isNew] = fFactories.try_emplace(metaModel);
    if (isNew) {
        entry->second = FactoryRegistry::instance()->createFactory(metaModel.getUri(), fFactory.getModel());
    }
    return entry->second;
}

ClassObject createRandomModel(ClassObject const & root, int depth, int breadth, int associations, unsigned int seed) {
    return RandomModelGenerator(root.getRootModel().getFactory())
        .createRandomModel(root, depth, breadth, associations, seed);
}

} // namespace ZEL
