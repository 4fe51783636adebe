#include "support/TestObjects.h"
#include "support/ValueTypes.h"

#include <ZEL/values/ValueObjectFactory.h>

#include <set>

namespace ZEL::tests {
namespace {

template <class V> void expectRoundTrip(V const & value, char const * type, char const * text) {
    EXPECT_EQ(type, V::getTypeName());
    ValueObject const boxed = value;
    ASSERT_TRUE(boxed.isValid());
    EXPECT_EQ(text, boxed.toString());
    EXPECT_TRUE(V(boxed) == value);
    EXPECT_TRUE(V(ImmutableValueObject(boxed)) == value);
    Object const object = value;
    EXPECT_TRUE(V(object) == value);
    EXPECT_TRUE(V(ImmutableObject(object)) == value);
    EXPECT_TRUE(boxed.getTypeInfo() == TypeInfoRegistry::getTypeInfo(type));
}

TEST(ValueObjectTest, ReturnsWhatWasBoxed) {
    expectRoundTrip(Boolean(true), "ZEL.Boolean", "true");
    expectRoundTrip(Integer(-3), "ZEL.Integer", "-3");
    expectRoundTrip(UnlimitedNatural(0xFFFFFFFFu), "ZEL.UnlimitedNatural", "*");
    expectRoundTrip(Real(0.25), "ZEL.Real", "0.25");
    expectRoundTrip(Single(0.25f), "ZEL.Single", "0.25");
    expectRoundTrip(Double(-1.5), "ZEL.Double", "-1.5");
    expectRoundTrip(String("some text"), "ZEL.String", "some text");
    expectRoundTrip(Argument("name", Integer(5)), "ZEL.Argument", "(name,5)");
    expectRoundTrip(PersistenceKind(PersistenceKind::Extension), "ZEL.PersistenceKind", "extension");
}

TEST(ValueObjectTest, ComparesByValueAndIsOrderedByBody) {
    ValueObject const one = Integer(1);
    ValueObject const anotherOne = Integer(1);
    ValueObject const two = Integer(2);
    EXPECT_TRUE(one == anotherOne && !(one != anotherOne));
    EXPECT_TRUE(one != two);
    EXPECT_TRUE(one != ValueObject(UnlimitedNatural(1))) << "of another class";
    EXPECT_TRUE(one != ValueObject() && ValueObject() == ImmutableValueObject());
    EXPECT_TRUE(ImmutableValueObject(one) == anotherOne);
    EXPECT_EQ(2u, (std::set<ValueObject>{one, anotherOne}.size()));
    EXPECT_FALSE(Object(one) == Object(anotherOne)) << "as objects, bodies are compared";
}

TEST(ValueObjectTest, IsOneObjectInEveryForm) {
    Object const object = Integer(7);
    ValueObject const value(object);
    EXPECT_TRUE(value.isValid());
    EXPECT_TRUE(Object(value) == object);
    EXPECT_EQ(2, object.getImplementation()->numRef());
    NSInterface::ObjectIntf * const body = object.getImplementation();
    EXPECT_EQ(body, body->getReadDeviant(Deviant()));
    EXPECT_EQ(body, body->getWriteDeviant(Deviant()));
    EXPECT_EQ(body, body->internal_getDeviation(Deviant()));
    EXPECT_EQ(body, body->deviant_getCopyOfDeviation(Deviant()));
}

TEST(ValueObjectTest, NamesItsClassByTheHandle) {
    Object const object = Integer(7);
    EXPECT_EQ("ZEL.ValueObject", object.getFullyQualifiedOrcaTypeName());
    EXPECT_EQ("ZEL.ImmutableValueObject", ImmutableObject(object).getFullyQualifiedOrcaTypeName());
    EXPECT_EQ("ZEL.Object", Object().getFullyQualifiedOrcaTypeName());
    EXPECT_EQ("ZEL.ImmutableObject", ImmutableObject().getFullyQualifiedOrcaTypeName());
}

TEST(ValueObjectTest, CannotBeReadAsAnotherClassOrFromNothing) {
    ValueObject const boxed = Integer(1);
    EXPECT_THROW(Boolean{boxed}, HASP::bad_any_cast);
    EXPECT_THROW(String{Object(boxed)}, HASP::bad_any_cast);
    EXPECT_RAISES(kInternalError, Integer(ValueObject()));
    EXPECT_RAISES(kInternalError, Integer(Object()));
    EXPECT_RAISES(kInternalError, String(ImmutableObject()));
    EXPECT_RAISES(kNullRef, ValueObject().getAny());
    EXPECT_RAISES(kNullRef, Object().toString());
}

TEST(ValueObjectTest, IsNotMadeOfAnObjectThatIsNoValue) {
    Object const thing(new Thing, Deviant());
    EXPECT_FALSE(ValueObject(thing).isValid());
    EXPECT_RAISES(kInternalError, Integer(thing));
}

TEST(ValueObjectTest, IsReadFromTextByTheTypeOfAnotherOrByARegisteredName) {
    Object const eight = Object(Integer(7)).fromString("8");
    EXPECT_EQ(8, Integer(eight).getValue());
    EXPECT_RAISES("Can't convert string 'x' to INT32_T", eight.fromString("x"));
    EXPECT_FALSE(ValueObjectFactory::create("nonsense").isValid());
    EXPECT_FALSE(ValueObjectFactory::create("nonsense", Integer(1)).isValid());
    EXPECT_FALSE(ValueObjectFactory::createFromString("nonsense", "1").isValid());
    EXPECT_FALSE(ValueObjectFactory::isValueObjectType("nonsense"));
    EXPECT_TRUE(ValueObjectFactory::isValueObjectType("ZEL.Single"));

    ValueObject const made = ValueObjectFactory::create("ZEL.UnlimitedNatural");
    EXPECT_EQ("0", made.toString());
    EXPECT_EQ(1, made.getImplementation()->numRef());
    EXPECT_FALSE(made.getDeviant().isNotNull());
    EXPECT_EQ("*", ValueObjectFactory::createFromString("ZEL.UnlimitedNatural", "-1").toString());
    EXPECT_RAISES("Can't convert string '1' to bool", ValueObjectFactory::createFromString("ZEL.Boolean", "1"));
}

} // namespace
} // namespace ZEL::tests
