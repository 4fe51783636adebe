#include "Changes.h"

#include <algorithm>

namespace ZEL::tests::proofs {

Changes::Changes(Subject const & subject, Model const & model, unsigned int seed)
    : fModel(model), fFactory(model.getFactory()), fClasses(concreteClasses(subject)), fRandom(seed) {
    // Models and factories are made by registries. What builds on the built-in metamodel has its comments too.
    std::erase_if(fClasses, [](ImmutableClass const & metaClass) {
        return inherits(metaClass, Model::MetaClass()) || inherits(metaClass, FactoryObject::MetaClass());
    });
    for (ImmutableClass const & metaClass : concreteClasses(subjects().front())) {
        if (metaClass.getName() == "Comment" && subject.uri != subjects().front().uri) {
            fClasses.push_back(metaClass);
        }
    }
    refresh();
}

namespace {

bool isReference(ImmutableProperty const & property) { return ImmutableClass(property.getType()).isValid(); }

/// The objects that an object refers to by the property.
std::vector<ClassObject> linked(ClassObject const & object, ImmutableProperty const & property) {
    std::vector<ClassObject> result;
    for (Object const & value : object.get(property)) {
        result.push_back(ClassObject(value));
    }
    return result;
}

} // namespace

bool areAlike(Object const & a, Object const & b) {
    ValueObject const value(a);
    return a == b || (value.isValid() && value == ValueObject(b));
}

bool isContainerEnd(ImmutableProperty const & property) {
    ImmutableProperty const opposite = property.getOpposite();
    return (opposite.isValid() && opposite.isComposite()) || property.getName().str().starts_with("base_");
}

std::vector<Change> Changes::of(ClassObject const & object, ImmutableProperty const & property) {
    std::vector<Change> changes;
    if (property.isDerived() || property.isReadOnly()) {
        return changes;
    }
    bool const isMany = property.isMultivalued();
    bool const isPart = isReference(property) && property.isComposite();
    Sequence<Object> const present = object.get(property);
    int const size = present.size();
    ImmutableProperty const opposite = property.getOpposite();
    // A new container changes with what it gets, and so does the former one.
    bool const hasPartners = !isPart && (isContainerEnd(property) || (opposite.isValid() && !opposite.isDerived()));
    std::vector<ClassObject> const former = hasPartners ? linked(object, property) : std::vector<ClassObject>();

    if (isPart) {
        std::vector<ImmutableClass> const classes = classesFor(property);
        if (!classes.empty() && (isMany || size == 0)) {
            ImmutableClass const metaClass = any(classes);
            changes.push_back({isMany ? "append" : "set", [object, property, metaClass, model = fModel] {
                                   object.setOrAdd(property, makeObject(metaClass, model));
                               }});
        }
    } else {
        std::vector<Object> values = isReference(property) ? objectsFor(property) : dataFor(property);
        std::vector<Object> const had = present.toVector();
        std::erase_if(values, [&](Object const & value) {
            return value == object ||
                   std::any_of(had.begin(), had.end(), [&](Object const & each) { return areAlike(each, value); });
        });
        if (!values.empty()) {
            Object const value = any(values);
            // Those that gain the link, and those that they were linked to and lose it.
            std::vector<ClassObject> partners = former;
            if (hasPartners) {
                partners.push_back(ClassObject(value));
            }
            if (hasPartners && opposite.isValid()) {
                std::vector<ClassObject> const losing = linked(ClassObject(value), opposite);
                partners.insert(partners.end(), losing.begin(), losing.end());
            }
            std::string const what = isMany ? "append" : size == 0 ? "set" : "replace";
            changes.push_back({what, [=] { object.setOrAdd(property, value); }, partners});
        }
    }
    if (!isMany && size == 1 && property.lowerBound() == Integer(0)) {
        changes.push_back({"remove", [=] { object.removeOne(property); }, former});
    }
    if (isMany && size > 0) {
        int const index = below(static_cast<std::size_t>(size));
        changes.push_back({"erase", [=] { object.get(property).erase(index); }, former});
    }
    if (isMany && size > 1) {
        int const index = below(static_cast<std::size_t>(size) - 1);
        changes.push_back({"swap",
                           [=] {
                               Sequence<Object> const values = object.get(property);
                               Object const value = values[index];
                               values.erase(index);
                               values.insert(index + 1, value);
                           },
                           former});
    }
    return changes;
}

void Changes::makeAny(int count) {
    for (int i = 0; i < count; ++i) {
        refresh();
        ClassObject const object = any(fContent);
        if (Model(object).isValid() || FactoryObject(object).isValid()) {
            continue;
        }
        if (below(12) == 0 && object.getContainerZEL() != fContent.front()) {
            object.destroy();
            continue;
        }
        ImmutableProperty const property = any(object.getMetaClass().getOwnedAttributes().toVector());
        std::vector<Change> const possible = of(object, property);
        if (!possible.empty() && property.getName() != "modelZEL") {
            try {
                any(possible).make();
            } catch (Exception const &) {
                // Refused, as an object in its own part is. What has been written by then is undone too.
            }
        }
    }
}

std::vector<ImmutableClass> Changes::classesFor(ImmutableProperty const & property) const {
    std::vector<ImmutableClass> classes = fClasses;
    std::erase_if(classes, [type = ImmutableClass(property.getType())](ImmutableClass const & metaClass) {
        return !inherits(metaClass, type);
    });
    return classes;
}

std::vector<Object> Changes::dataFor(ImmutableProperty const & property) {
    ImmutableType const type = property.getType();
    std::string const kind = type.getName();
    std::vector<std::string> texts;
    if (ImmutableEnumeration const enumeration(type); enumeration.isValid()) {
        for (ImmutableEnumerationLiteral const & literal : enumeration.getOwnedLiterals()) {
            texts.push_back(literal.getName());
        }
    } else if (kind == "Boolean") {
        texts = {"false", "true"};
    } else {
        texts = {std::to_string(fRandom() % 1000 + 2)};
    }
    std::vector<Object> values;
    for (std::string const & text : texts) {
        values.push_back(fFactory.createFromString(type.getQualifiedName(), String(text)));
    }
    return values;
}

std::vector<Object> Changes::objectsFor(ImmutableProperty const & property) const {
    std::vector<Object> values;
    for (ClassObject const & object : fContent) {
        if (object.isValid() && inherits(object.getMetaClass(), ImmutableClass(property.getType()))) {
            values.push_back(object);
        }
    }
    return values;
}

// --- full models ------------------------------------------------------------------------------------------------------

namespace {

constexpr int kPlanted = 3; ///< of each class

/// At the first place below the model that is found for each class.
void plantEachClass(Model const & model, std::vector<ImmutableClass> classes) {
    std::vector<ClassObject> open{model};
    auto const plant = [&](ClassObject const & owner, ImmutableProperty const & property,
                           ImmutableClass const & metaClass) {
        bool isPlanted = false;
        for (int n = 0; n < kPlanted && (property.isMultivalued() || !owner.has(property)); ++n) {
            open.push_back(makeObject(metaClass, model));
            owner.setOrAdd(property, open.back());
            isPlanted = true;
        }
        return isPlanted;
    };
    for (std::size_t i = 0; i < open.size() && !classes.empty(); ++i) {
        ClassObject const owner = open[i];
        for (ImmutableProperty const & property : owner.getMetaClass().getOwnedAttributes()) {
            bool const isForParts = isReference(property) && property.isComposite() && !property.isDerived();
            if (isForParts && property.getPersistence() != PersistenceKind::Transient) {
                std::erase_if(classes, [&](ImmutableClass const & metaClass) {
                    return inherits(metaClass, ImmutableClass(property.getType())) && plant(owner, property, metaClass);
                });
            }
        }
    }
}

} // namespace

Model fullModel(Subject const & subject, unsigned int seed) {
    Model const model = emptyModel(subject);
    Transaction transaction(model.getRootDeviant(), "full");
    Changes changes(subject, model, seed);
    plantEachClass(model, changes.classes());
    applyStereotypes(subject, model, seed);
    changes.refresh();
    for (ClassObject const & object : changes.content()) {
        if (Model(object).isValid() || FactoryObject(object).isValid()) {
            continue;
        }
        for (ImmutableProperty const & property : object.getMetaClass().getOwnedAttributes()) {
            bool const isWritten = !property.isDerived() && property.getPersistence() != PersistenceKind::Transient;
            if (!isWritten || isContainerEnd(property) || changes.below(10) < 3) {
                continue;
            }
            std::vector<Change> const possible = changes.of(object, property);
            bool const isMissing = !object.has(property) || property.lowerBound() > Integer(0);
            if (isMissing && !possible.empty()) {
                possible.front().make();
            }
        }
    }
    transaction.commit();
    return model;
}

} // namespace ZEL::tests::proofs
