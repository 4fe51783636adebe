#include "kernel/ZEL/tools/BareObjects.h"
#include "kernel/ZEL/tools/TestModel.h"
#include "support/ExpectRaises.h"

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/ValueObject.h>
#include <ZEL/VisibilityKind.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/tools/Navigation.h>
#include <ZEL/tools/TypePredicates.h>

#include <gtest/gtest.h>

namespace ZEL {
namespace {

using testsupport::BareObject;
using testsupport::BareType;
using testsupport::TestModel;

TEST(Navigation, TellsTheTypeOfAnObjectAndTheClassOfThatType) {
    TestModel const m;
    EXPECT_EQ("Package", navigation::getMetaTypeName(m.top));
    EXPECT_EQ("Class", navigation::getMetaTypeClassName(m.top));
    Object const number(Integer(7));
    EXPECT_EQ("Integer", navigation::getMetaTypeName(number));
    EXPECT_EQ("PrimitiveType", navigation::getMetaTypeClassName(number));
    Object const kind{VisibilityKind(VisibilityKind::Public)};
    EXPECT_EQ("VisibilityKind", navigation::getMetaTypeName(kind));
    EXPECT_EQ("Enumeration", navigation::getMetaTypeClassName(kind));
    EXPECT_EQ("MetaModel", navigation::getMetaTypeName(m.model));
}

TEST(Navigation, TellsWhatIsMissing) {
    TestModel const m;
    Comment const dead = m.factory.createComment();
    dead.destroy();
    struct Case {
        char const * what;
        ImmutableObject object;
        char const * byTypeName;
        char const * byClassName;
    };
    char const noObject[] = "navigation::getMetaTypeName:error Not a valid zel object";
    char const noObjectForClass[] = "navigation::getMetaTypeClassName:error Not a valid zel object";
    char const noType[] = "navigation::getMetaTypeName:error zel-object has not a valid meta-type";
    char const noClass[] = "navigation::getMetaTypeName:error zel-object mata-type has not a valid meta-class";
    Case const cases[] = {
        {"null", ImmutableObject(), noObject, noObjectForClass},
        {"dead", dead, noObject, noObjectForClass},
        {"without type", BareObject::make(), noType, noType},
        {"of a type without class", BareObject::make(BareType::make()), "(nothing)", noClass},
    };
    for (Case const & c : cases) {
        SCOPED_TRACE(c.what);
        EXPECT_RAISES(c.byTypeName, navigation::getMetaTypeName(c.object));
        EXPECT_RAISES(c.byClassName, navigation::getMetaTypeClassName(c.object));
    }
}

TEST(Navigation, KnowsThePackageOfTheBuiltInTypes) {
    EXPECT_EQ("ZEL", getPackage().getName());
    EXPECT_EQ(Comment::MetaClass(), getPackage().getOwnedTypeByName("Comment"));
}

TEST(TypePredicates, InheritanceIsFollowedUpwardsAlone) {
    TestModel const m;
    // a <- b <- d and a <- c <- d
    Class const a = m.classIn(m.top, "A");
    Class const b = m.classIn(m.top, "B");
    Class const c = m.classIn(m.top, "C");
    Class const d = m.classIn(m.top, "D");
    b.getSuperClasses().push_back(a);
    c.getSuperClasses().push_back(a);
    d.getSuperClasses().push_back(b);
    d.getSuperClasses().push_back(c);
    for (Class const & above : {a, b, c, d}) {
        EXPECT_TRUE(inherits(d, above)) << above.getName();
        EXPECT_TRUE(inherits(d, above.getName().str())) << above.getName();
        EXPECT_EQ(above == a, inherits(a, above)) << above.getName();
    }
    EXPECT_FALSE(inherits(b, c));
    EXPECT_FALSE(inherits(b, std::string("C")));
    EXPECT_FALSE(inherits(d, std::string("top.A")));
    EXPECT_TRUE(inherits(Package::MetaClass(), std::string("ClassObject")));
    EXPECT_FALSE(inherits(ImmutableClass(), a));
    EXPECT_FALSE(inherits(ImmutableClass(), std::string()));
    EXPECT_FALSE(inherits(a, ImmutableClass()));
}

TEST(TypePredicates, ALadderOfDiamondsIsClimbedOnce) {
    // Each rung doubles the number of ways to the top.
    TestModel const m;
    Class const top = m.classIn(m.top, "Top");
    Class below = top;
    for (int rung = 0; rung < 64; ++rung) {
        Class const left = m.classIn(m.top, "L");
        Class const right = m.classIn(m.top, "R");
        Class const next = m.classIn(m.top, "N");
        left.getSuperClasses().push_back(below);
        right.getSuperClasses().push_back(below);
        next.getSuperClasses().push_back(left);
        next.getSuperClasses().push_back(right);
        below = next;
    }
    EXPECT_TRUE(inherits(below, top));
    EXPECT_FALSE(inherits(below, std::string("none")));
}

TEST(TypePredicates, DataAreTellableFromObjects) {
    for (char const * name : {"Integer", "String", "VisibilityKind"}) {
        EXPECT_TRUE(isDataType(getPackage().getOwnedTypeByName(name))) << name;
    }
    EXPECT_FALSE(isDataType(Comment::MetaClass()));
    EXPECT_FALSE(isDataType(ImmutableType()));

    TestModel const m;
    EXPECT_TRUE(isValueObject(Object(String("text"))));
    EXPECT_FALSE(isValueObject(m.top));
    EXPECT_FALSE(isValueObject(ImmutableObject()));
}

} // namespace
} // namespace ZEL
