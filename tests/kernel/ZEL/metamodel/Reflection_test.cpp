#include "kernel/ZEL/metamodel/ModelFixture.h"

#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>

namespace ZEL::tests {
namespace {

char const kGet[] = "Trying to get invalid property!";
char const kSet[] = "Trying to set invalid property!";

Object boxed(char const * text) { return ValueObject(String(text)); }

struct Reflection : OpenModelFixture {
    Class object = factory.createClass();
    Comment comment = factory.createComment();
};

TEST_F(Reflection, NamesTheRoadOnWhichAPropertyIsMissing) {
    MetaModel gone = openModel();
    ImmutableProperty const ended = gone.getFactoryFactory().createProperty();
    gone = MetaModel();
    expectRefused(comment, ImmutableProperty(), kGet, kSet);
    expectRefused(comment, ended, kGet, kSet);
    for (char const * const name : {"name", "", "Body", "body ", "ZEL.Comment.body"}) {
        expectRefused(comment, String(name), kGet, kSet);
    }
    // A property without storage.
    EXPECT_RAISES(kNullRef, comment.get(factory.createProperty()));
}

TEST_F(Reflection, TakesTheDefinerAndEachCloneAlike) {
    ImmutableProperty const definer = NamedElement::MetaClass().getProperty(String("name"));
    ImmutableProperty const clone = Package::MetaClass().getProperty(String("name"));
    EXPECT_NE(definer, clone);
    object.setOrAdd(definer, boxed("a"));
    EXPECT_EQ("a", object.getOne(clone).toString().str());
    object.setOrAdd(clone, boxed("b"));
    EXPECT_EQ("b", object.getName().str());
}

/// Reads in a way of its own.
struct Shouting final : SingleValuedPropertyManager {
    using SingleValuedPropertyManager::SingleValuedPropertyManager;
    Object getOne(ClassObject const &) override { return boxed("TEXT"); }
    ImmutableObject getOne(ImmutableClassObject const &) const override { return boxed("TEXT"); }
};

TEST_F(Reflection, ReadsByTheStorageThatThePropertyHasAtTheTime) {
    comment.setBody(String("text"));
    ImmutableComment const immutable(comment);
    PropertyStorage const usual = Comment::MetaClass().getProperty(String("body")).getStorage();
    auto const & manager = dynamic_cast<SingleValuedPropertyManager const &>(*usual.getImplementation());
    Property const property = factory.createProperty();
    property.setStorage(usual);
    EXPECT_EQ("text", comment.getOne(property).toString());
    EXPECT_EQ("text", immutable.getOne(property).toString());
    property.setStorage(PropertyStorage(new Shouting(manager.methods(), 0)));
    EXPECT_EQ("TEXT", comment.getOne(property).toString());
    EXPECT_EQ("TEXT", immutable.getOne(property).toString());
    property.removeStorage();
    EXPECT_RAISES(kNullRef, comment.getOne(property));
    EXPECT_RAISES(kNullRef, immutable.has(property));
}

TEST_F(Reflection, ShowsASingleValueAsASequenceOfNoneOrOne) {
    String const body("body");
    Sequence<Object> const values = comment.get(body);
    EXPECT_EQ(0, values.size());
    EXPECT_FALSE(comment.getOne(body).isValid());
    values.push_back(boxed("text"));
    EXPECT_EQ("text", comment.getBody().str());
    EXPECT_EQ(1, values.size());
    EXPECT_EQ("text", values.at(0).toString().str());
    ImmutableComment const immutable(comment);
    EXPECT_TRUE(immutable.has(body));
    EXPECT_EQ("text", immutable.getOne(body).toString().str());
    ASSERT_EQ(1, immutable.get(body).size());
    EXPECT_EQ("text", immutable.get(body).at(0).toString().str());
    std::function<void()> const removals[] = {
        [&] { values.clear(); },
        [&] { comment.remove(body, boxed("whatever")); },
        [&] { comment.removeOneOnly(body); },
    };
    for (auto const & remove : removals) {
        comment.setBody(String("again"));
        remove();
        EXPECT_FALSE(comment.hasBody());
        EXPECT_FALSE(comment.has(body));
    }
}

TEST_F(Reflection, AppendsToAndRemovesFromAMultiValuedProperty) {
    String const annotated("annotatedElement");
    EXPECT_FALSE(comment.getOne(annotated).isValid());
    Class const second = factory.createClass();
    comment.setOrAdd(annotated, object);
    comment.setOrAdd(annotated, second);
    EXPECT_EQ(object, comment.getOne(annotated));
    EXPECT_THAT(comment.get(annotated), ElementsAre(object, second));
    comment.remove(annotated, object);
    EXPECT_THAT(comment.get(annotated), ElementsAre(second));
    comment.remove(annotated, object);
    comment.removeOne(annotated);
    EXPECT_FALSE(comment.has(annotated));
    EXPECT_RAISES("sequence is empty", comment.removeOne(annotated));
}

TEST_F(Reflection, ComparesTextsByValueWhenItRemovesThem) {
    OpaqueExpression const expression = factory.createOpaqueExpression();
    String const body("body");
    expression.setOrAdd(body, boxed("a"));
    expression.setOrAdd(body, boxed("b"));
    expression.setOrAdd(body, boxed("a"));
    EXPECT_EQ(2, expression.getBodies().size());
    expression.remove(body, boxed("a"));
    ASSERT_EQ(1, expression.getBodies().size());
    EXPECT_EQ("b", expression.getBodies().at(0).str());
    EXPECT_RAISES("property 'body' of object of type 'ZEL.OpaqueExpression' [id = 4 ]: found 'ZEL.Class', expected "
                  "'ZEL.String'",
                  expression.setOrAdd(body, object));
}

TEST_F(Reflection, KeepsTheOppositeEndInStepUnlessToldNotTo) {
    String const superClass("superClass");
    Class const base = factory.createClass();
    object.setOrAdd(superClass, base);
    EXPECT_THAT(base.getSubClasses(), ElementsAre(object));
    object.removeOnly(superClass, base);
    EXPECT_THAT(object.getSuperClasses(), ElementsAre());
    EXPECT_THAT(base.getSubClasses(), ElementsAre(object));
    base.removeOneOnly(String("subClass"));
    object.setOrAddOnly(superClass, base);
    EXPECT_THAT(object.getSuperClasses(), ElementsAre(base));
    EXPECT_THAT(base.getSubClasses(), ElementsAre());
    object.removeOneOnly(superClass);
    EXPECT_THAT(object.getSuperClasses(), ElementsAre());
    Property const property = factory.createProperty();
    property.setOrAdd(String("class"), object);
    EXPECT_THAT(object.getOwnedAttributes(), ElementsAre(property));
    property.removeOne(String("class"));
    EXPECT_THAT(object.getOwnedAttributes(), ElementsAre());
    property.setOrAddOnly(String("class"), object);
    EXPECT_THAT(object.getOwnedAttributes(), ElementsAre());
    EXPECT_EQ(object, property.getContainerZEL());
}

TEST_F(Reflection, RefusesAValueOfAnotherTypeAndChangesNothing) {
    struct {
        char const * property;
        Object value;
        char const * found;
        char const * expected;
    } const rows[] = {
        {"name", object, "'ZEL.Class'", "String"},
        {"isAbstract", comment, "'ZEL.Comment'", "Boolean"},
        {"isAbstract", boxed("true"), "'ZEL.String'", "Boolean"},
        {"visibility", boxed("public"), "'ZEL.String'", "VisibilityKind"},
        {"visibility", comment, "'ZEL.Comment'", "VisibilityKind"},
        {"ownedAttribute", comment, "'ZEL.Comment'", "Property"},
        {"superClass", comment, "'ZEL.Comment'", "Class"},
        {"superClass", boxed("x"), "'ZEL.String'", "Class"},
        {"package", comment, "'ZEL.Comment'", "Package"},
        {"ownedComment", object, "'ZEL.Class'", "Comment"},
        {"ownedComment", Object(), "no value", "Comment"},
    };
    object.setName(String("kept"));
    for (auto const & row : rows) {
        std::string const text = "property '" + std::string(row.property) +
                                 "' of object of type 'ZEL.Class' [id = 2 ]: found " + row.found + ", expected 'ZEL." +
                                 row.expected + "'";
        EXPECT_RAISES(text, object.setOrAdd(String(row.property), row.value));
        EXPECT_RAISES(text, object.setOrAddOnly(String(row.property), row.value));
    }
    ImmutableProperty const name = NamedElement::MetaClass().getProperty(String("name"));
    ImmutableProperty const attribute = DataType::MetaClass().getProperty(String("ownedAttribute"));
    char const noName[] = "object of type 'ZEL.Comment' [id = 3 ] has no property 'name' of 'ZEL.NamedElement'";
    EXPECT_RAISES(noName, comment.getOne(name));
    EXPECT_RAISES(noName, comment.setOrAdd(name, boxed("x")));
    EXPECT_RAISES(noName, comment.removeOneOnly(name));
    EXPECT_RAISES("object of type 'ZEL.Class' [id = 2 ] has no property 'ownedAttribute' of 'ZEL.DataType'",
                  object.get(attribute));
    EXPECT_EQ("kept", object.getName().str());
    EXPECT_EQ(0, object.getContaineeZELs().size());
    EXPECT_FALSE(object.hasContainerZEL());
}

TEST_F(Reflection, ReachesViewsOverOtherPropertiesAndKeepsTheTreeWhole) {
    Package const package = factory.createPackage();
    Class const other = factory.createClass();
    Association const association = factory.createAssociation();
    struct {
        char const * view;
        ClassObject container;
        ClassObject element; ///< has the view, or is put into it
        bool isOfElement = false;
    } const rows[] = {
        {"ownedType", package, other},
        {"containeeZEL", package, comment},
        {"feature", object, factory.createOperation()},
        {"attribute", object, factory.createProperty()},
        {"member", object, factory.createProperty()},
        {"member", association, factory.createConstraint()},
        {"ownedExtension", object, factory.createExtensionEnd()},
        {"source", package, factory.createElementImport(), true},
        {"source", object, factory.createPackageImport(), true},
        {"relatedElement", package, factory.createPackageMerge(), true},
        {"redefinitionContext", object, factory.createOperation(), true},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(row.view);
        ClassObject const & owner = row.isOfElement ? row.element : row.container;
        ClassObject const & value = row.isOfElement ? row.container : row.element;
        owner.setOrAdd(String(row.view), value);
        EXPECT_TRUE(owner.get(String(row.view)).contains(value));
        EXPECT_EQ(row.container, row.element.getContainerZEL());
        EXPECT_TRUE(row.container.getContaineeZELs().contains(row.element));
        EXPECT_FALSE(model.getUnparented().contains(row.element));
        owner.remove(String(row.view), value);
        EXPECT_FALSE(row.element.hasContainerZEL());
        EXPECT_FALSE(row.container.getContaineeZELs().contains(row.element));
        EXPECT_TRUE(model.getUnparented().contains(row.element));
    }
    EXPECT_RAISES("cannot insert value into the combined sequence", object.setOrAdd(String("containeeZEL"), package));
    PackageImport const import = factory.createPackageImport();
    import.setOrAdd(String("target"), package);
    EXPECT_EQ(package, import.getImportedPackage());
    Property const member = factory.createProperty();
    association.getMembers().push_back(member);
    EXPECT_EQ(association, member.getAssociation());
}

TEST_F(Reflection, WorksInTheDeviantOfTheHandle) {
    model.commitTransaction();
    MetaModel const deviant = model.createDeviantWithName(String("d"));
    Comment const there = comment.asDeviant(deviant);
    deviant.beginTransaction();
    there.setOrAdd(String("body"), boxed("there"));
    deviant.commitTransaction();
    EXPECT_EQ("there", there.getOne(String("body")).toString().str());
    EXPECT_FALSE(comment.has(String("body")));
    model.beginTransaction();
}

TEST(PropertyStorageHandle, RaisesTheNullTextWithoutABody) {
    PropertyStorage const storage;
    ClassObject const object;
    EXPECT_RAISES(kNullRef, storage.has(object));
    EXPECT_RAISES(kNullRef, storage.get(object));
    EXPECT_RAISES(kNullRef, storage.getOne(object));
    EXPECT_RAISES(kNullRef, storage.setOrAdd(object, Object()));
    EXPECT_RAISES(kNullRef, storage.setOrAddEndOnly(object, Object()));
    EXPECT_RAISES(kNullRef, storage.remove(object, Object()));
    EXPECT_RAISES(kNullRef, storage.removeEndOnly(object, Object()));
    EXPECT_RAISES(kNullRef, storage.removeOne(object));
    EXPECT_RAISES(kNullRef, storage.removeOneEndOnly(object));
}

TEST_F(Reflection, AStorageTakesHandlesOfAnyClass) {
    PropertyStorage const storage = Comment::MetaClass().getProperty(String("body")).getStorage();
    comment.setBody(String("x"));
    Object const one = storage.getOne(comment);
    ImmutableObject const immutableOne = storage.getOne(ImmutableElement(comment));
    EXPECT_EQ("x", one.toString().str());
    EXPECT_EQ("x", immutableOne.toString().str());
    storage.get(comment).clear();
    EXPECT_EQ(0, storage.get(ImmutableComment(comment)).size());
}

TEST_F(Reflection, BindsAPropertyToItsObjectAtCompileTime) {
    auto const body = comment.Body_();
    EXPECT_FALSE(body.has());
    body.setOrAdd(String("x"));
    EXPECT_EQ("x", comment.getBody().str());
    EXPECT_EQ("x", body.get().str());
    comment.AnnotatedElement_().setOrAdd(Element(object));
    EXPECT_EQ(object, comment.getAnnotatedElements().at(0));
}

} // namespace
} // namespace ZEL::tests
