#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "kernel/ZEL/metamodel/StereotypeInstances.h"

#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/StaticExtensionStorage.h>

namespace ZEL::tests {
namespace {

char const kOnlyStereotypes[] = "Only Stereotypes can be added to this property!";

struct StereotypeInstances : OpenModelFixture {
    void apply() {
        for (StereotypeObject const & instance : {foreign, first, second}) {
            object.getAppliedStereotypeInstances().push_back(instance);
        }
    }

    MarksOfATest marks;
    Stereotype stereotype = factory.createStereotype();
    Stereotype other = factory.createStereotype();
    Class object = factory.createClass();
    StereotypeObject first = createMark<1>(stereotype);
    StereotypeObject second = createMark<1>(stereotype);
    StereotypeObject foreign = createMark<2>(other);
    PropertyStorage storage{std::make_unique<StaticExtensionStorage>(stereotype).release()};
};

TEST_F(StereotypeInstances, AreContainedByTheObjectTheyAreAppliedTo) {
    apply();
    EXPECT_EQ(object, first.getBaseElement());
    EXPECT_EQ(object, first.getContainerZEL());
    EXPECT_THAT(object.getContaineeZELs(), ElementsAre(foreign, first, second));
    EXPECT_EQ(0, object.getOwnedElements().size());
    EXPECT_FALSE(model.getUnparented().contains(first));
    Class const newBase = factory.createClass();
    first.setBaseElement(newBase);
    EXPECT_THAT(object.getAppliedStereotypeInstances(), ElementsAre(foreign, second));
    EXPECT_THAT(newBase.getAppliedStereotypeInstances(), ElementsAre(first));
    first.removeBaseElement();
    EXPECT_EQ(0, newBase.getAppliedStereotypeInstances().size());
    EXPECT_TRUE(model.getUnparented().contains(first));
}

TEST_F(StereotypeInstances, FollowTheirObjectThroughUndoAndItsEnd) {
    model.commitTransaction();
    change([&] { apply(); });
    model.undo();
    EXPECT_EQ(0, object.getAppliedStereotypeInstances().size());
    EXPECT_FALSE(first.hasBaseElement());
    model.redo();
    EXPECT_EQ(3, object.getAppliedStereotypeInstances().size());
    change([&] { object.destroy(); });
    EXPECT_FALSE(first.isValid());
    model.undo();
    EXPECT_EQ(first, object.getAppliedStereotypeInstances().at(1));
    change([&] { first.destroy(); });
    EXPECT_EQ(2, object.getAppliedStereotypeInstances().size());
}

TEST_F(StereotypeInstances, OfTheStereotypeAloneAreTheValuesOfItsExtension) {
    ClassObject const base(object);
    object.getAppliedStereotypeInstances().push_back(foreign);
    EXPECT_FALSE(storage.has(base));
    EXPECT_FALSE(storage.getOne(base).isValid());
    EXPECT_EQ(0, storage.get(base).size());
    apply();
    EXPECT_TRUE(storage.has(base));
    EXPECT_EQ(first, storage.getOne(base));
    EXPECT_EQ(first, storage.getOne(ImmutableClassObject(base)));
    EXPECT_THAT(storage.get(base), ElementsAre(first, second));
    EXPECT_THAT(storage.get(ImmutableClassObject(base)), ElementsAre(first, second));
}

TEST_F(StereotypeInstances, AreHeldOnceAndLastWhenTheyAreAddedAgain) {
    apply();
    storage.setOrAdd(object, first);
    EXPECT_THAT(object.getAppliedStereotypeInstances(), ElementsAre(foreign, second, first));
    EXPECT_EQ(object, first.getBaseElement());
    EXPECT_FALSE(model.getUnparented().contains(first));
    storage.setOrAddEndOnly(object, second);
    EXPECT_THAT(object.getAppliedStereotypeInstances(), ElementsAre(foreign, first, second));
}

TEST_F(StereotypeInstances, KeepTheOtherEndInTheOneEndedForms) {
    auto const applied = object.getAppliedStereotypeInstances();
    storage.setOrAddEndOnly(object, first);
    EXPECT_THAT(applied, ElementsAre(first));
    EXPECT_FALSE(first.hasBaseElement());
    storage.removeEndOnly(object, first);
    EXPECT_THAT(applied, ElementsAre());
    apply();
    storage.removeEndOnly(object, first);
    EXPECT_THAT(applied, ElementsAre(foreign, second));
    EXPECT_EQ(object, first.getBaseElement());
    for (int i = 0; i < 2; ++i) {
        storage.removeOneEndOnly(object);
        EXPECT_EQ(object, second.getBaseElement());
        EXPECT_THAT(applied, ElementsAre(foreign));
    }
}

TEST_F(StereotypeInstances, AreRemovedByValueOrTheFirstOfTheStereotype) {
    auto const applied = object.getAppliedStereotypeInstances();
    apply();
    storage.removeOne(object);
    EXPECT_FALSE(first.hasBaseElement());
    EXPECT_TRUE(model.getUnparented().contains(first));
    EXPECT_THAT(applied, ElementsAre(foreign, second));
    storage.remove(object, first);
    EXPECT_THAT(applied, ElementsAre(foreign, second));
    storage.remove(object, second);
    EXPECT_FALSE(storage.has(object));
    storage.removeOne(object);
    EXPECT_THAT(applied, ElementsAre(foreign));
}

TEST_F(StereotypeInstances, AreTheOnlyValuesTaken) {
    for (Object const & value : {Object(object), Object(), Object(ValueObject(String("x")))}) {
        EXPECT_RAISES(kOnlyStereotypes, storage.setOrAdd(object, value));
        EXPECT_RAISES(kOnlyStereotypes, storage.setOrAddEndOnly(object, value));
        EXPECT_RAISES(kOnlyStereotypes, storage.remove(object, value));
        EXPECT_RAISES(kOnlyStereotypes, storage.removeEndOnly(object, value));
    }
    EXPECT_RAISES(kInternalError, storage.get(ClassObject(object)).push_back(foreign));
    storage.get(ClassObject(object)).push_back(first);
    EXPECT_EQ(object, first.getBaseElement());
}

TEST_F(StereotypeInstances, AreReachedByAPropertyWithSuchAStorage) {
    Property const property = factory.createProperty();
    property.setStorage(storage);
    object.setOrAdd(property, first);
    EXPECT_TRUE(object.has(property));
    EXPECT_EQ(first, object.getOne(property));
    EXPECT_RAISES(kOnlyStereotypes, object.setOrAdd(property, object));
    object.removeOne(property);
    EXPECT_FALSE(object.has(property));
}

} // namespace
} // namespace ZEL::tests
