#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "support/ExpectRaises.h"

#include <ZEL/ValueObject.h>
#include <ZEL/ZEL.h>
#include <ZEL/metamodel/PropertyStorage.h>

#include <hasp_util/any.h>

#include <functional>
#include <string>

namespace ZEL {
namespace {

char const kGet[] = "Trying to get invalid property!";
char const kSet[] = "Trying to set invalid property!";
char const kInternal[] = "An Internal Error has occurred";

Object boxed(char const * text) { return ValueObject(String(text)); }

class Reflection : public Test::ModelFixture {
protected:
    Reflection() {
        open();
        object = factory.createClass();
        comment = factory.createComment();
    }
    Class object;
    Comment comment;
};

TEST_F(Reflection, NamesTheRoadOnWhichAPropertyIsMissing) {
    MetaModel gone = Factory::createNewModel();
    gone.beginTransaction();
    ImmutableProperty const ended = gone.getFactoryFactory().createProperty();
    gone = MetaModel();
    ZEL::Test::expectRefused(comment, ImmutableProperty(), kGet, kSet);
    ZEL::Test::expectRefused(comment, ended, kGet, kSet);
    for (char const * const name : {"name", "", "Body", "body ", "ZEL.Comment.body"}) {
        ZEL::Test::expectRefused(comment, String(name), kGet, kSet);
    }
    // A property without storage.
    EXPECT_RAISES("Cannot access NULL ref. Use isValid() before calling methods",
                  comment.get(factory.createProperty()));
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

TEST_F(Reflection, ShowsASingleValueAsASequenceOfNoneOrOne) {
    String const body("body");
    Sequence<Object> const values = comment.get(body);
    EXPECT_EQ(0, values.size());
    EXPECT_FALSE(comment.getOne(body).isValid());
    EXPECT_FALSE(comment.has(body));
    values.push_back(boxed("text"));
    EXPECT_EQ("text", comment.getBody().str());
    EXPECT_EQ(1, values.size());
    EXPECT_EQ("text", values.at(0).toString().str());
    values.clear();
    EXPECT_FALSE(comment.hasBody());
    comment.setBody(String("again"));
    comment.remove(body, boxed("whatever"));
    EXPECT_FALSE(comment.hasBody());
    comment.setBody(String("again"));
    comment.removeOneOnly(body);
    EXPECT_FALSE(comment.hasBody());
}

TEST_F(Reflection, AppendsToAndRemovesFromAMultiValuedProperty) {
    String const annotated("annotatedElement");
    EXPECT_FALSE(comment.getOne(annotated).isValid());
    EXPECT_FALSE(comment.has(annotated));
    Class const second = factory.createClass();
    comment.setOrAdd(annotated, object);
    comment.setOrAdd(annotated, second);
    EXPECT_EQ(object, comment.getOne(annotated));
    EXPECT_EQ(2, comment.get(annotated).size());
    comment.remove(annotated, object);
    ASSERT_EQ(1, comment.get(annotated).size());
    EXPECT_EQ(second, comment.getOne(annotated));
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
    EXPECT_RAISES(kInternal, expression.setOrAdd(body, object));
}

TEST_F(Reflection, KeepsTheOppositeEndInStepUnlessToldNotTo) {
    String const superClass("superClass");
    Class const base = factory.createClass();
    object.setOrAdd(superClass, base);
    EXPECT_EQ(object, base.getSubClasses().at(0));
    object.removeOnly(superClass, base);
    EXPECT_EQ(0, object.getSuperClasses().size());
    EXPECT_EQ(1, base.getSubClasses().size());
    object.setOrAddOnly(superClass, base);
    EXPECT_EQ(1, base.getSubClasses().size());
    object.removeOneOnly(superClass);
    EXPECT_EQ(1, base.getSubClasses().size());
    base.removeOneOnly(String("subClass"));
    Property const property = factory.createProperty();
    property.setOrAdd(String("class"), object);
    EXPECT_EQ(property, object.getOwnedAttributes().at(0));
    property.removeOne(String("class"));
    EXPECT_EQ(0, object.getOwnedAttributes().size());
    property.setOrAddOnly(String("class"), object);
    EXPECT_EQ(0, object.getOwnedAttributes().size());
    EXPECT_EQ(object, property.getContainerZEL());
    property.removeOneOnly(String("class"));
}

TEST_F(Reflection, RefusesAValueOfAnotherTypeAndChangesNothing) {
    struct {
        char const * property;
        Object value;
    } const rows[] = {
        {"name", object},     {"isAbstract", comment}, {"ownedAttribute", comment}, {"superClass", comment},
        {"package", comment}, {"visibility", comment}, {"ownedComment", object},
    };
    object.setName(String("kept"));
    for (auto const & row : rows) {
        EXPECT_RAISES(kInternal, object.setOrAdd(String(row.property), row.value)) << row.property;
        EXPECT_RAISES(kInternal, object.setOrAddOnly(String(row.property), row.value)) << row.property;
    }
    for (char const * const property : {"isAbstract", "visibility"}) {
        EXPECT_THROW(object.setOrAdd(String(property), boxed("true")), HASP::bad_any_cast) << property;
    }
    EXPECT_EQ("kept", object.getName().str());
    EXPECT_EQ(0, object.getContaineeZELs().size());
    EXPECT_FALSE(object.hasContainerZEL());
}

TEST_F(Reflection, ReachesViewsOverOtherProperties) {
    Package const package = factory.createPackage();
    package.setOrAdd(String("ownedType"), object);
    EXPECT_EQ(package, object.getPackage());
    package.setOrAdd(String("containeeZEL"), comment);
    EXPECT_EQ(package, comment.getOwner());
    Operation const operation = factory.createOperation();
    object.setOrAdd(String("feature"), operation);
    EXPECT_EQ(object, operation.getClass());
    EXPECT_RAISES("cannot insert value into the combined sequence", object.setOrAdd(String("containeeZEL"), package));
    PackageImport const import = factory.createPackageImport();
    import.setOrAdd(String("target"), package);
    EXPECT_EQ(package, import.getImportedPackage());
    import.setOrAdd(String("source"), object);
    EXPECT_EQ(object, import.getImportingNamespace());
    EXPECT_EQ(import, object.getPackageImports().at(0));
}

TEST_F(Reflection, KeepsTheTreeWholeThroughViewsWithoutAnOtherEnd) {
    auto const isPlaced = [this](Element const & element, ClassObject const & container) {
        return element.getContainerZEL() == container && container.getContaineeZELs().contains(element) &&
               !model.getUnparented().contains(element);
    };
    Package const package = factory.createPackage();
    ElementImport const elementImport = factory.createElementImport();
    Property const attribute = factory.createProperty();
    Property const member = factory.createProperty();
    Operation const operation = factory.createOperation();
    ExtensionEnd const end = factory.createExtensionEnd();
    PackageMerge const merge = factory.createPackageMerge();
    Constraint const rule = factory.createConstraint();
    elementImport.getSources().push_back(package);
    EXPECT_TRUE(isPlaced(elementImport, package));
    merge.getRelatedElements().push_back(package);
    EXPECT_TRUE(isPlaced(merge, package));
    EXPECT_EQ(merge, package.getPackageMerges().at(0));
    object.getAttributes().push_back(attribute);
    EXPECT_TRUE(isPlaced(attribute, object));
    object.getMembers().push_back(member);
    EXPECT_TRUE(isPlaced(member, object));
    operation.getRedefinitionContexts().push_back(object);
    EXPECT_TRUE(isPlaced(operation, object));
    object.getOwnedExtensions().push_back(end);
    EXPECT_TRUE(isPlaced(end, object));
    EXPECT_EQ(end, object.getOwnedExtensions().at(0));
    Association const association = factory.createAssociation();
    association.getMembers().push_back(rule);
    EXPECT_TRUE(isPlaced(rule, association));
    association.getMembers().push_back(member);
    EXPECT_EQ(association, member.getAssociation());
    object.getAttributes().remove(attribute);
    EXPECT_FALSE(attribute.hasContainerZEL());
    EXPECT_TRUE(model.getUnparented().contains(attribute));
    elementImport.getSources().clear();
    EXPECT_EQ(0, package.getElementImports().size());
    EXPECT_TRUE(model.getUnparented().contains(elementImport));
}

TEST_F(Reflection, ReadsAnImmutableObjectThroughImmutableHandles) {
    comment.setBody(String("b"));
    ImmutableComment const immutable(comment);
    ImmutableSequence<ImmutableObject> const values = immutable.get(String("body"));
    ASSERT_EQ(1, values.size());
    EXPECT_EQ("b", values.at(0).toString().str());
    EXPECT_EQ("b", immutable.getOne(String("body")).toString().str());
    EXPECT_TRUE(immutable.has(String("body")));
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
    char const null[] = "Cannot access NULL ref. Use isValid() before calling methods";
    PropertyStorage const storage;
    ClassObject const object;
    EXPECT_RAISES(null, storage.has(object));
    EXPECT_RAISES(null, storage.get(object));
    EXPECT_RAISES(null, storage.getOne(object));
    EXPECT_RAISES(null, storage.setOrAdd(object, Object()));
    EXPECT_RAISES(null, storage.setOrAddEndOnly(object, Object()));
    EXPECT_RAISES(null, storage.remove(object, Object()));
    EXPECT_RAISES(null, storage.removeEndOnly(object, Object()));
    EXPECT_RAISES(null, storage.removeOne(object));
    EXPECT_RAISES(null, storage.removeOneEndOnly(object));
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
} // namespace ZEL
