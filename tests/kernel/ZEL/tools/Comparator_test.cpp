#include "kernel/ZEL/tools/TestModel.h"

namespace ZEL::tests {
namespace {

/// Two models of the same structure: p(A(x : A, y : String), B < A, comment on x), q().
struct ComparatorTest : testing::Test {
    struct Side : TestModel {
        Side() {
            b.getSuperClasses().push_back(a);
            x.setType(a);
            MetaModel const metaModel(MetaModelRegistry::instance()->getModelFromUri(METAMODEL_URI));
            y.setType(metaModel.getTopPackage().getOwnedTypeByName("String"));
            note.setBody("about x");
            note.getAnnotatedElements().push_back(x);
            p.getOwnedComments().push_back(note);
        }
        Package p = package(top, "p");
        Package q = package(top, "q");
        Class a = classIn(p, "A");
        Class b = classIn(p, "B");
        Property x = attribute(a, "x");
        Property y = attribute(a, "y");
        Comment note = factory.createComment();
    };

    Side left;
    Side right;
};

TEST_F(ComparatorTest, AnObjectIsEqualToItselfAtOnce) {
    Comparator comparator(left.p, left.p);
    EXPECT_TRUE(comparator.compare());
    EXPECT_FALSE(comparator.getFailedFirst().isValid());
    EXPECT_EQ(comparator.getFirst(), left.p);
    EXPECT_EQ(comparator.getSecond(), left.p);
}

TEST_F(ComparatorTest, NullAndInvalidHandlesAreEqualToThemselvesOnly) {
    EXPECT_TRUE(compare(ImmutableObject(), ImmutableObject()));
    EXPECT_FALSE(compare(left.p, ImmutableObject()));
    EXPECT_FALSE(compare(ImmutableObject(), left.p));
    right.q.destroy();
    EXPECT_FALSE(compare(left.q, right.q));
    EXPECT_TRUE(compare(right.q, right.q));
}

TEST_F(ComparatorTest, ObjectsOfDifferentMetaclassesAreDifferent) {
    Comparator comparator(left.a, left.p);
    EXPECT_FALSE(comparator.compare());
    EXPECT_EQ(comparator.getFailedFirst(), left.a);
    EXPECT_EQ(comparator.getFailedSecond(), left.p);
}

TEST_F(ComparatorTest, ValueObjectsCompareByValueAndNeverEqualClassObjects) {
    EXPECT_TRUE(compare(Object(String("a")), Object(String("a"))));
    EXPECT_FALSE(compare(Object(String("a")), Object(String("b"))));
    EXPECT_FALSE(compare(Object(String("1")), Object(Integer(1))));
    EXPECT_FALSE(compare(Object(String("a")), left.p));
    EXPECT_FALSE(compare(left.p, Object(String("a"))));
}

TEST_F(ComparatorTest, TreesOfTwoModelsAreEqualWhateverTheirIds) {
    left.classIn(left.q, "moves the ids").destroy();
    ASSERT_NE(left.classIn(left.q, "late").getId(), right.classIn(right.q, "late").getId());
    EXPECT_TRUE(compare(left.model, right.model));
    EXPECT_TRUE(compare(right.model, left.model));
}

TEST_F(ComparatorTest, ACopyIsEqualAndItsLinksLeadToItsOwnParts) {
    Package const copy(left.p.clone(left.model));
    ASSERT_NE(copy, left.p);
    EXPECT_TRUE(compare(left.p, copy));
    Class const copyOfA(copy.getOwnedTypeByName("A"));
    copyOfA.getOwnedAttributes().front().setType(left.a);
    EXPECT_FALSE(
        compare(left.p, copy)); // the same object on both sides, but within the first tree it has a counterpart
}

TEST_F(ComparatorTest, WhatLiesOutsideOfTheTreesDoesNotCount) {
    left.top.setName("another");
    ASSERT_NE(left.a.getQualifiedName(), right.a.getQualifiedName());
    EXPECT_TRUE(compare(left.p, right.p)) << "derived properties are not compared";
    EXPECT_TRUE(compare(left.y, right.y)) << "both of the metamodel's String";
    EXPECT_FALSE(compare(left.x, right.x)) << "each of the class around it";
}

TEST_F(ComparatorTest, TheFirstDifferenceIsFoundWithThePairThatHoldsIt) {
    auto const expectFailure = [this](ImmutableClassObject const & first, ImmutableClassObject const & second) {
        Comparator comparator(left.model, right.model);
        EXPECT_FALSE(comparator.compare());
        EXPECT_EQ(comparator.getFailedFirst(), first);
        EXPECT_EQ(comparator.getFailedSecond(), second);
        EXPECT_FALSE(compare(right.model, left.model)) << "the other way round";
    };
    Side const elsewhere;
    left.x.setType(elsewhere.a);
    expectFailure(left.x, right.x);
    // The order of children comes before links. They are compared by their places.
    left.a.getOwnedAttributes().erase(0);
    left.a.getOwnedAttributes().push_back(left.x);
    expectFailure(left.y, right.x);
}

TEST_F(ComparatorTest, ADifferenceAfterAnEqualChildIsThatOfTheParent) {
    // Properties come in the metamodel's order: the children in packagedElement ahead of the comments.
    left.p.getOwnedComments().clear();
    Comparator comparator(left.p, right.p);
    EXPECT_FALSE(comparator.compare());
    EXPECT_EQ(comparator.getFailedFirst(), left.p);
    EXPECT_EQ(comparator.getFailedSecond(), right.p);
}

TEST_F(ComparatorTest, EachCallBeginsAnew) {
    Comparator comparator(left.p, right.p);
    right.y.setName("z");
    EXPECT_FALSE(comparator.compare());
    Comparator const copy(comparator);
    EXPECT_EQ(copy.getFailedFirst(), left.y);
    right.y.setName("y");
    EXPECT_TRUE(comparator.compare());
    EXPECT_FALSE(comparator.getFailedFirst().isValid());

    // The counterparts of an earlier call say nothing.
    Class const newA = right.classIn(right.p, "A");
    right.p.getPackagedElements().erase(0);
    right.p.getPackagedElements().push_front(newA);
    EXPECT_FALSE(comparator.compare());
    EXPECT_EQ(comparator.getFailedFirst(), left.a);
}

TEST_F(ComparatorTest, TheTwoSidesMayBeDeviantsOfOneObject) {
    left.transaction.commit();
    MetaModel const draft = left.model.createDeviantWithName("draft");
    Package const p = left.p.asDeviant(draft);
    EXPECT_TRUE(compare(left.p, p));
    Transaction transaction(draft.getDeviant());
    Class const a = left.a.asDeviant(draft);
    a.setName("Z");
    Comparator comparator(left.p, p);
    EXPECT_FALSE(comparator.compare());
    EXPECT_EQ(comparator.getFailedSecond().getDeviant(), draft.getDeviant());
}

} // namespace
} // namespace ZEL::tests
