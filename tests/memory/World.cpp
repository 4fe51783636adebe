#include "World.h"

namespace ZEL::tests::memory {

namespace {

std::string textOf(ImmutableObject const & value) {
    ImmutableClassObject const object(value);
    return object.getImplementationWithoutAssert() != nullptr ? "#" + object.getId().toString().str()
                                                              : value.toString().str();
}

std::string textOf(ImmutableClassObject const & object) {
    std::string text = object.getMetaClass().getName().str() + '\n';
    for (ImmutableProperty const & property : object.getMetaClass().getOwnedAttributes()) {
        if (property.isDerived() || !object.has(property)) {
            continue;
        }
        text += "  " + property.getName().str() + ':';
        for (ImmutableObject const & value : object.get(property)) {
            text += ' ' + textOf(value);
        }
        text += '\n';
    }
    return text;
}

} // namespace

World::World() : model(Factory::createNewModel()), factory(model.getFactoryFactory()) {
    fill();
    draft = model.createDeviantWithName("draft");
    other = model.createDeviantWithName("other");
    draft.beginTransaction("draft");
    first.asDeviant(draft).setName("in the draft");
    factory.asDeviant(draft).createComment().setBody("only in the draft");
    draft.commitTransaction();
    for (char const * const name : {"one", "two", "three"}) {
        model.beginTransaction(name);
        change(model);
        model.commitTransaction();
    }
    model.undo();
    other.beginTransaction("open");
    first.asDeviant(other).setName("in the other");
    registerModifierOnCommit(model.getDeviant(), fCounter);
    registerValidatorOnCommit(model.getDeviant(), fCounter);
    registerObservingListener(model.getDeviant(), fCounter);
}

World::~World() { drop(); }

void World::drop() {
    draft = other = MetaModel();
    factory = Factory();
    package = Package();
    first = Class();
    model = MetaModel();
}

void World::fill() {
    model.beginTransaction("fill");
    package = factory.createPackage(String("library"));
    model.setTopPackage(package);
    Class before;
    for (int i = 0; i < 6; ++i) {
        Class const object = factory.createClass();
        object.setName(String("a name that is too long to stand in a string " + std::to_string(i)));
        object.setPackage(package);
        Property const property = factory.createProperty();
        property.setClass(object);
        property.setLower(Integer(i));
        if (before.isValid()) {
            property.setType(before);
            object.getSuperClasses().push_back(before);
        }
        before = object;
        first = first.isValid() ? first : object;
    }
    model.commitTransaction();
    model.getDeviant().clearUndoStack();
}

void World::change(MetaModel const & view) const {
    Factory const maker = factory.asDeviant(view);
    Package const parent = package.asDeviant(view);
    Class const object = maker.createClass();
    object.setName("a new class with a long name of its own");
    parent.getPackagedElements().push_back(object);
    Comment const comment = maker.createComment();
    comment.setBody(String("a comment, number " + std::to_string(parent.getPackagedElements().size())));
    comment.getAnnotatedElements().push_back(object);
    object.getOwnedComments().push_back(comment);
    for (Class const & each : {first.asDeviant(view), object}) {
        Property const property = maker.createProperty();
        property.setOrAdd(String("name"), Object(String("a property")));
        property.setClass(each);
        property.setType(object);
    }
    Class const victim(parent.getPackagedElements().at(1));
    victim.destroy();
    parent.setName(String(parent.getName().str() + "+"));
}

std::string World::picture() const {
    std::string text;
    for (MetaModel const & view : {model, draft, other}) {
        int const end = static_cast<std::int32_t>(view.getNextIdValue());
        text += view.getDeviant().getName() + '\n';
        for (int id = 1; id < end; ++id) {
            ClassObject const object = view.getObjectById(Integer(id));
            if (object.isValid()) {
                text += std::to_string(id) + ' ' + textOf(object);
            }
        }
    }
    return text;
}

std::string World::useOn() {
    std::string problems;
    auto const expectEqual = [&problems](std::string const & what, std::string const & expected,
                                         std::string const & found) {
        if (expected != found) {
            problems += what + ": expected\n" + expected + "found\n" + found;
        }
    };
    Deviant const root = model.getDeviant();
    std::string const now = picture();
    int const undoable = root.getUndoStackLength();
    while (root.getRedoStackLength() > 0) {
        root.redo();
    }
    std::string const newest = picture();
    int const steps = root.getUndoStackLength();
    while (root.getUndoStackLength() > undoable) {
        root.undo();
    }
    expectEqual("redo and undo", now, picture());
    while (root.getUndoStackLength() > 0) {
        root.undo();
    }
    while (root.getRedoStackLength() > 0) {
        root.redo();
    }
    expectEqual("undo and redo", newest, picture());
    if (root.getUndoStackLength() != steps) {
        problems += "a step of the history is lost\n";
    }
    Transaction transaction(root, "work");
    change(model);
    if (!transaction.commit()) {
        problems += "a commit is refused\n";
    }
    other.cancelTransaction();
    return problems;
}

} // namespace ZEL::tests::memory
