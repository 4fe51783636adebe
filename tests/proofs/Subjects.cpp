#include "Subjects.h"

#include <ZEL/metamodel/Constants.h>

#include <library/MetaModelRegistration.h>

#include <algorithm>
#include <iterator>

namespace ZEL::tests::proofs {

std::vector<Subject> const & subjects() {
    static std::vector<Subject> const all = [] {
        Library::registerMetaModel();
        return std::vector<Subject>{{"zel", METAMODEL_URI, "topPackage"},
                                    {"library", "http://example.org/library/1.0", "house"}};
    }();
    return all;
}

std::ostream & operator<<(std::ostream & out, Subject const & subject) { return out << subject.name; }

std::vector<ImmutableClass> concreteClasses(Subject const & subject) {
    std::vector<ImmutableClass> result;
    Model const metaModel = MetaModelRegistry::instance()->getModelFromUri(subject.uri);
    for (ClassObject const & object : contentOf(metaModel)) {
        ImmutableClass const metaClass(object);
        if (metaClass.isValid() && metaClass.hasName() && !metaClass.isAbstract()) {
            result.push_back(metaClass);
        }
    }
    return result;
}

// --- models -----------------------------------------------------------------------------------------------------------

/// The parameters of a random model. They differ with the seed: flat and wide, deep and narrow, sparse and well linked.
struct Shape {
    int depth;
    int breadth;
    int associations;
};

Shape shapeOf(unsigned int seed) {
    static constexpr Shape shapes[] = {{2, 3, 20},  {3, 4, 100}, {4, 4, 300}, {6, 2, 100}, {1, 60, 200},
                                       {8, 2, 400}, {3, 6, 50},  {5, 3, 800}, {60, 1, 60}, {2, 12, 1000}};
    return shapes[seed % std::size(shapes)];
}

Model emptyModel(Subject const & subject) { return FactoryRegistry::instance()->createModel(subject.uri); }

void applyStereotypes(Subject const & subject, Model const & model, unsigned int seed) {
    for (ImmutableClass const & metaClass : concreteClasses(subject)) {
        if (!inherits(metaClass, StereotypeObject::MetaClass())) {
            continue;
        }
        for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
            if (!property.getName().str().starts_with("base_")) {
                continue;
            }
            for (ClassObject const & element : contentOf(model)) {
                if (inherits(element.getMetaClass(), ImmutableClass(property.getType())) && seed++ % 3 == 0) {
                    makeObject(metaClass, model).setOrAdd(property, element);
                }
            }
        }
    }
}

ClassObject makeRoot(Subject const & subject, Model const & model) {
    ImmutableProperty const property = model.getMetaClass().getProperty(String(subject.root));
    ClassObject const root = makeObject(ImmutableClass(property.getType()), model);
    model.setOrAdd(property, root);
    return root;
}

Model randomModel(Subject const & subject, unsigned int seed) {
    Model const model = emptyModel(subject);
    Transaction transaction(model.getRootDeviant(), "random");
    ClassObject const root = makeRoot(subject, model);
    Shape const shape = shapeOf(seed);
    createRandomModel(root, shape.depth, shape.breadth, shape.associations, seed);
    applyStereotypes(subject, model, seed);
    transaction.commit();
    return model;
}

// --- objects ----------------------------------------------------------------------------------------------------------

std::vector<ClassObject> contentOf(ClassObject const & root) {
    std::vector<ClassObject> found{root};
    for (std::size_t i = 0; i < found.size(); ++i) {
        std::vector<ClassObject> const children = ClassObject(found[i]).getContaineeZELs().toVector();
        found.insert(found.end(), children.begin(), children.end());
    }
    return found;
}

ClassObject makeObject(ImmutableClass const & metaClass, Model const & model) {
    String const uri = metaClass.getRootModel().getUri();
    return FactoryRegistry::instance()->createFactory(uri, model).createFromString(metaClass.getName());
}

std::string difference(ImmutableObject const & a, ImmutableObject const & b) {
    Comparator comparator(a, b);
    if (comparator.compare()) {
        return "";
    }
    ImmutableClassObject const first = comparator.getFailedFirst();
    return first.isValid() ? first.getFullyQualifiedOrcaTypeName().str() + " " + first.getSiid().str() : "the roots";
}

} // namespace ZEL::tests::proofs
