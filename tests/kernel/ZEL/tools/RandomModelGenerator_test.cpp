#include "kernel/ZEL/tools/TestModel.h"

#include <cstdint>
#include <ctime>
#include <map>
#include <set>

namespace ZEL::tests {
namespace {

/// All objects below the root.
std::vector<ImmutableClassObject> contentOf(ImmutableClassObject const & root) {
    std::vector<ImmutableClassObject> found = objectsIn(root);
    found.erase(found.begin());
    return found;
}

/// Makes public what is for derived classes.
struct Generator : RandomModelGenerator {
    using RandomModelGenerator::createCompositionAssociationMetaPropertyVectors;
    using RandomModelGenerator::createRandomModelComposition;
    using RandomModelGenerator::createValueForProperty;
    using RandomModelGenerator::RandomModelGenerator;
};

/// A model of its own, filled.
struct RandomModel : TestModel {
    RandomModel(unsigned int seed, int depth, int breadth, int associations) {
        createRandomModel(top, depth, breadth, associations, seed);
    }
};

TEST(RandomModelGenerator, DepthZeroCreatesNothing) {
    TestModel const model;
    int const nextId = model.model.getNextIdValue();
    EXPECT_EQ(createRandomModel(model.top, 0, 5, 100, 1), model.top);
    EXPECT_EQ(createRandomModel(model.top, 5, 0, 100, 1), model.top);
    EXPECT_EQ(model.model.getNextIdValue(), nextId);
}

TEST(RandomModelGenerator, TheSeedThatIsStoredReproducesARun) {
    auto const earliest = static_cast<std::uint32_t>(std::time(nullptr));
    TestModel const first;
    RandomModelGenerator generator(first.factory);
    unsigned int const seed = generator.getSeed();
    EXPECT_LE(seed - earliest, static_cast<std::uint32_t>(std::time(nullptr)) - earliest);
    generator.createRandomModel(first.top, 4, 5, 300, 0);
    EXPECT_EQ(generator.getSeed(), seed);
    EXPECT_GT(contentOf(first.top).size(), 100U);
    EXPECT_TRUE(compare(first.model, RandomModel(seed, 4, 5, 300).model));
    EXPECT_FALSE(compare(first.model, RandomModel(seed + 1, 4, 5, 300).model));

    generator.createRandomModel(first.top, 0, 0, 0, 99);
    EXPECT_EQ(generator.getSeed(), 99U);
}

TEST(RandomModelGenerator, AllIsContainedWithinTheBounds) {
    for (unsigned int seed = 1; seed <= 20; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        RandomModel const random(seed, 4, 3, 100);
        EXPECT_TRUE(random.model.getUnparented().empty());
        std::map<ImmutableObject, int> levels{{random.top, 0}};
        std::map<ImmutableObject, int> children;
        for (ImmutableClassObject const & object : contentOf(random.top)) {
            ImmutableClassObject const container = object.getContainerZEL();
            levels[object] = levels[container] + 1;
            EXPECT_LE(levels[object], 4);
            EXPECT_LE(++children[container], 3);
        }
    }
}

TEST(RandomModelGenerator, ANameTellsThePlaceTheClassAndTheId) {
    RandomModel const random(3, 5, 6, 0);
    std::map<ImmutableObject, std::string> places{{random.top, ""}};
    for (ImmutableClassObject const & object : contentOf(random.top)) {
        ImmutableNamedElement const element(object);
        auto const outer = places.find(object.getContainerZEL());
        if (element.isValid() && outer != places.end()) {
            std::string const tail =
                object.getMetaClass().getName().str() + "-[" + std::to_string(object.getId().getValue()) + "]";
            std::string const name = element.getName();
            std::string const place = name.substr(0, outer->second.size() + 2); // one of up to six children
            EXPECT_EQ(name, place + tail);
            EXPECT_TRUE(place.starts_with(outer->second) && place.back() == '-') << name << " in " << outer->second;
            places[object] = place;
        }
    }
    EXPECT_GT(places.size(), 10U);
}

TEST(RandomModelGenerator, ValuesAndLinksComeFromTheAssociationPhase) {
    RandomModel const bare(5, 4, 5, 0);
    RandomModel const linked(5, 4, 5, 2000);
    EXPECT_EQ(contentOf(bare.top).size(), contentOf(linked.top).size());
    std::set<std::string> values;
    std::size_t links = 0;
    for (ImmutableClassObject const & object : contentOf(linked.top)) {
        ImmutableComment const comment(object);
        if (comment.isValid()) {
            values.insert(comment.getBody().str());
            links += static_cast<std::size_t>(comment.getAnnotatedElements().size());
        }
    }
    EXPECT_EQ(values.count("foobar"), 1U);
    EXPECT_GT(links, 100U);
}

TEST(RandomModelGenerator, DeepTreesNeedNoStack) {
    TestModel const model;
    Comment const root = model.factory.createComment();
    createRandomModel(root, 50'000, 1, 0, 1); // a comment contains comments, and nothing else
    EXPECT_EQ(contentOf(root).size(), 50'000U);
}

TEST(RandomModelGenerator, ObjectsAreFoundByTheirClass) {
    TestModel const model;
    RandomModelGenerator generator(model.factory);
    EXPECT_FALSE(generator.getRandomObjectForClass(Class::MetaClass()).isValid());
    Class const object = model.classIn(model.top, "A");
    generator.addObjectToMap(NamedElement::MetaClass(), object);
    EXPECT_EQ(generator.getRandomObjectForClass(NamedElement::MetaClass()), object);
    EXPECT_FALSE(generator.getRandomObjectForClass(Class::MetaClass()).isValid());

    generator.createRandomModel(model.top, 3, 5, 0, 1);
    EXPECT_TRUE(generator.getRandomObjectForClass(ClassObject::MetaClass()).isValid());
}

TEST(RandomModelGenerator, TheVectorsLeaveOutWhatIsDerivedTransientOrTheOtherEndOfAComposition) {
    TestModel const model;
    RandomModelGenerator generator(model.factory);
    ImmutableClass const metaClass = Property::MetaClass();
    ImmutableSequence<ImmutableProperty> const properties = metaClass.getOwnedAttributes();
    auto const names = [&properties](HASP::GList<int> const & positions) {
        std::set<std::string> found;
        for (int const position : positions) {
            found.insert(properties[position].getName());
        }
        return found;
    };
    EXPECT_EQ(names(generator.getCompositionMetaPropertyVector(metaClass, properties)),
              (std::set<std::string>{"ownedComment"}));
    EXPECT_EQ(names(generator.getAssociationMetaPropertyVector(metaClass, properties)),
              (std::set<std::string>{"association", "default", "isComposite", "isDerived", "isDerivedUnion", "isID",
                                     "isOrdered", "isReadOnly", "isUnique", "lower", "name", "persistence",
                                     "redefinedProperty", "subsettedProperty", "type", "upper", "visibility"}));
}

TEST(RandomModelGenerator, WhatTheMetamodelLacksIsTold) {
    TestModel const model;
    Generator generator(model.factory);
    Class const owner = model.classIn(model.top, "Owner");
    Property const property = model.attribute(owner, "kind");
    auto const makeValue = [&] { return generator.createValueForProperty(owner, 1, 1, property); };

    EXPECT_RAISES("Property kind has no type",
                  generator.createCompositionAssociationMetaPropertyVectors(owner, owner.getOwnedAttributes()));
    EXPECT_RAISES("Property kind has no type",
                  generator.getAssociationMetaPropertyVector(owner, owner.getOwnedAttributes()));

    Enumeration const enumeration = model.factory.createEnumeration();
    enumeration.setName("Kind");
    property.setType(enumeration);
    EXPECT_RAISES("the enum type Kind doesnt have any literals ", makeValue());

    property.setType(owner);
    property.setUpper(UnlimitedNatural(UnlimitedNatural::GetUnlimitedValue()));
    owner.setIsAbstract(true);
    EXPECT_RAISES("couldnt find a concrete superclass for Owner", makeValue());

    EXPECT_RAISES(kNullRef, generator.createNameStringAndSet(ClassObject(), property));
}

TEST(RandomModelGenerator, TheLastChildOfTheRootIsGiven) {
    TestModel const model;
    Generator generator(model.factory);
    Comment const root = model.factory.createComment();
    EXPECT_EQ(generator.createRandomModelComposition(root, 0, 3), root);
    ClassObject const last = generator.createRandomModelComposition(root, 2, 3);
    EXPECT_EQ(last, root.getOwnedComments().back());
}

} // namespace
} // namespace ZEL::tests
