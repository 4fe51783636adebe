#include "kernel/ZEL/tools/BareObjects.h"
#include "kernel/ZEL/tools/TestModel.h"

#include <initializer_list>
#include <tuple>

namespace ZEL::tests {
namespace {

TEST(Navigation, TellsTheTypeOfAnObjectAndTheClassOfThatType) {
    TestModel const m;
    Object const kind{VisibilityKind(VisibilityKind::Public)};
    std::tuple<Object, char const *, char const *> const cases[] = {
        {m.top, "Package", "Class"},
        {Object(Integer(7)), "Integer", "PrimitiveType"},
        {kind, "VisibilityKind", "Enumeration"},
    };
    for (auto const & [object, type, typeClass] : cases) {
        EXPECT_EQ(type, navigation::getMetaTypeName(object));
        EXPECT_EQ(typeClass, navigation::getMetaTypeClassName(object));
    }
    EXPECT_EQ("MetaModel", navigation::getMetaTypeName(m.model));
}

TEST(Navigation, TellsWhatIsMissing) {
    TestModel const m;
    Comment const dead = m.factory.createComment();
    dead.destroy();
    char const noObject[] = "navigation::getMetaTypeName:error Not a valid zel object";
    char const noObjectForClass[] = "navigation::getMetaTypeClassName:error Not a valid zel object";
    char const noType[] = "navigation::getMetaTypeName:error zel-object has not a valid meta-type";
    char const noClass[] = "navigation::getMetaTypeName:error zel-object mata-type has not a valid meta-class";
    struct Case {
        ImmutableObject object;
        char const * byTypeName;
        char const * byClassName;
    };
    for (Case const & c :
         {Case{ImmutableObject(), noObject, noObjectForClass}, Case{dead, noObject, noObjectForClass},
          Case{BareObject::make(), noType, noType}, Case{BareObject::make(BareType::make()), "(nothing)", noClass}}) {
        SCOPED_TRACE(c.byClassName);
        EXPECT_RAISES(c.byTypeName, navigation::getMetaTypeName(c.object));
        EXPECT_RAISES(c.byClassName, navigation::getMetaTypeClassName(c.object));
    }
}

TEST(Navigation, KnowsThePackageOfTheBuiltInTypes) {
    EXPECT_EQ("ZEL", getPackage().getName());
    EXPECT_EQ(Comment::MetaClass(), getPackage().getOwnedTypeByName("Comment"));
}

/// A model whose classes say what they derive from.
struct Hierarchy : TestModel {
    Class derive(std::string const & name, std::initializer_list<Class> superClasses) const {
        Class const made = classIn(top, name);
        for (Class const & superClass : superClasses) {
            made.getSuperClasses().push_back(superClass);
        }
        return made;
    }
};

TEST(TypePredicates, InheritanceIsFollowedUpwardsAlone) {
    Hierarchy const m;
    Class const a = m.derive("A", {});
    Class const b = m.derive("B", {a});
    Class const c = m.derive("C", {a});
    Class const d = m.derive("D", {b, c});
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
    Hierarchy const m;
    Class const top = m.derive("Top", {});
    Class below = top;
    for (int rung = 0; rung < 64; ++rung) {
        below = m.derive("N", {m.derive("L", {below}), m.derive("R", {below})});
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
} // namespace ZEL::tests
