#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "kernel/ZEL/metamodel/StereotypeInstances.h"
#include "support/ExpectRaises.h"

#include <ZEL/ValueObject.h>
#include <ZEL/ZEL.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/StaticExtensionStorage.h>

#include <memory>
#include <set>

namespace ZEL {
namespace {

char const kOnlyStereotypes[] = "Only Stereotypes can be added to this property!";

class StereotypeInstances : public Test::ModelFixture {
protected:
    StereotypeInstances() {
        open();
        stereotype = factory.createStereotype();
        other = factory.createStereotype();
        object = factory.createClass();
        first = ZEL::Test::createMark<1>(stereotype);
        second = ZEL::Test::createMark<1>(stereotype);
        foreign = ZEL::Test::createMark<2>(other);
        storage = PropertyStorage(std::make_unique<StaticExtensionStorage>(stereotype).release());
    }
    void apply() {
        for (StereotypeObject const & instance : {foreign, first, second}) {
            object.getAppliedStereotypeInstances().push_back(instance);
        }
    }

    Stereotype stereotype;
    Stereotype other;
    Class object;
    StereotypeObject first;
    StereotypeObject second;
    StereotypeObject foreign;
    PropertyStorage storage;
};

TEST_F(StereotypeInstances, HaveStoragesThatCanBeKeys) {
    std::set<PropertyStorage> const keys{storage, PropertyStorage(), PropertyStorage(storage)};
    EXPECT_EQ(2u, keys.size());
    EXPECT_FALSE(keys.begin()->isValid());
}

TEST_F(StereotypeInstances, AreContainedByTheObjectTheyAreAppliedTo) {
    apply();
    EXPECT_EQ(object, first.getBaseElement());
    EXPECT_EQ(object, first.getContainerZEL());
    EXPECT_TRUE(object.getContaineeZELs().contains(first));
    EXPECT_EQ(0, object.getOwnedElements().size());
    EXPECT_FALSE(model.getUnparented().contains(first));
    Class const newBase = factory.createClass();
    first.setBaseElement(newBase);
    EXPECT_EQ(2, object.getAppliedStereotypeInstances().size());
    EXPECT_EQ(first, newBase.getAppliedStereotypeInstances().at(0));
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
    EXPECT_FALSE(storage.has(object));
    EXPECT_FALSE(storage.getOne(ClassObject(object)).isValid());
    EXPECT_EQ(0, storage.get(ClassObject(object)).size());
    object.getAppliedStereotypeInstances().push_back(foreign);
    EXPECT_FALSE(storage.has(object));
    apply();
    EXPECT_TRUE(storage.has(object));
    EXPECT_EQ(first, storage.getOne(ClassObject(object)));
    EXPECT_EQ(first, storage.getOne(ImmutableClassObject(object)));
    ASSERT_EQ(2, storage.get(ClassObject(object)).size());
    EXPECT_EQ(second, storage.get(ImmutableClassObject(object)).at(1));
}

TEST_F(StereotypeInstances, AreHeldOnceAndLastWhenTheyAreAddedAgain) {
    apply();
    storage.setOrAdd(object, first);
    ASSERT_EQ(3, object.getAppliedStereotypeInstances().size());
    EXPECT_EQ(first, object.getAppliedStereotypeInstances().at(2));
    EXPECT_EQ(object, first.getBaseElement());
    EXPECT_FALSE(model.getUnparented().contains(first));
    storage.setOrAddEndOnly(object, second);
    ASSERT_EQ(3, object.getAppliedStereotypeInstances().size());
    EXPECT_EQ(second, object.getAppliedStereotypeInstances().at(2));
}

TEST_F(StereotypeInstances, KeepTheOtherEndInTheOneEndedForms) {
    storage.setOrAddEndOnly(object, first);
    EXPECT_EQ(1, object.getAppliedStereotypeInstances().size());
    EXPECT_FALSE(first.hasBaseElement());
    storage.removeEndOnly(object, first);
    EXPECT_EQ(0, object.getAppliedStereotypeInstances().size());
    apply();
    storage.removeEndOnly(object, first);
    EXPECT_EQ(2, object.getAppliedStereotypeInstances().size());
    EXPECT_EQ(object, first.getBaseElement());
    storage.removeOneEndOnly(object);
    EXPECT_EQ(object, second.getBaseElement());
    ASSERT_EQ(1, object.getAppliedStereotypeInstances().size());
    EXPECT_EQ(foreign, object.getAppliedStereotypeInstances().at(0));
    storage.removeOneEndOnly(object);
    EXPECT_EQ(1, object.getAppliedStereotypeInstances().size());
}

TEST_F(StereotypeInstances, AreRemovedByValueOrTheFirstOfTheStereotype) {
    apply();
    storage.removeOne(object);
    EXPECT_FALSE(first.hasBaseElement());
    EXPECT_TRUE(model.getUnparented().contains(first));
    EXPECT_EQ(foreign, object.getAppliedStereotypeInstances().at(0));
    storage.remove(object, first);
    EXPECT_EQ(2, object.getAppliedStereotypeInstances().size());
    storage.remove(object, second);
    EXPECT_FALSE(storage.has(object));
    storage.removeOne(object);
    EXPECT_EQ(1, object.getAppliedStereotypeInstances().size());
}

TEST_F(StereotypeInstances, AreTheOnlyValuesTaken) {
    for (Object const & value : {Object(object), Object(), Object(ValueObject(String("x")))}) {
        EXPECT_RAISES(kOnlyStereotypes, storage.setOrAdd(object, value));
        EXPECT_RAISES(kOnlyStereotypes, storage.setOrAddEndOnly(object, value));
        EXPECT_RAISES(kOnlyStereotypes, storage.remove(object, value));
        EXPECT_RAISES(kOnlyStereotypes, storage.removeEndOnly(object, value));
    }
    EXPECT_RAISES("An Internal Error has occurred", storage.get(ClassObject(object)).push_back(foreign));
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
} // namespace ZEL
