// What UML derives: bounds, aggregation, generals, what an operation has of its result; and how files state these.

#include "host/TemporaryFolder.h"
#include "support/Texts.h"

#include <ZEL/ZEL.h>

#include <gmock/gmock.h>
#include <uml/AggregationKind.h>
#include <uml/Association.h>
#include <uml/AssociationClass.h>
#include <uml/Class.h>
#include <uml/Component.h>
#include <uml/Constraint.h>
#include <uml/Generalization.h>
#include <uml/Interface.h>
#include <uml/LiteralInteger.h>
#include <uml/LiteralString.h>
#include <uml/LiteralUnlimitedNatural.h>
#include <uml/MetaModelRegistration.h>
#include <uml/Model.h>
#include <uml/OpaqueBehavior.h>
#include <uml/OpaqueExpression.h>
#include <uml/Operation.h>
#include <uml/Parameter.h>
#include <uml/Property.h>
#include <uml/UmlFactory.h>

namespace uml {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

template <class S> std::vector<std::string> namesOf(S const & elements) {
    std::vector<std::string> names;
    for (auto const & element : elements) {
        names.push_back(element.getName().str());
    }
    return names;
}

class Derived : public testing::Test {
protected:
    Derived() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        registerMetaModel();
        model = UmlFactory::createNewModel();
        factory = UmlFactory(model.getFactory());
        model.beginTransaction("test");
    }

    template <class T> T add(std::string const & name) const {
        T const element = factory.create<T>();
        element.setName(name);
        model.getPackagedElements().push_back(element);
        return element;
    }
    Property addProperty(Class const & owner, std::string const & name = "p") const {
        Property const property = factory.createProperty();
        property.setName(name);
        owner.getOwnedAttributes().push_back(property);
        return property;
    }

    /// Reads a model with this content.
    Model read(std::string const & content) {
        std::string const file = folder.file("in.xmi", R"(<?xml version="1.0" encoding="UTF-8"?>
<xmi:XMI xmi:version="2.1" xmlns:xmi="http://schema.omg.org/spec/XMI/2.1" xmlns:uml="http://schema.omg.org/spec/UML/2.1">
  <uml:Model xmi:id="m" name="m">)" + content + "</uml:Model></xmi:XMI>");
        return Model(reader.read(file));
    }
    static Class firstClass(Model const & of) { return Class(of.getPackagedElements().at(0)); }
    std::string written(ZEL::Model const & of) {
        EXPECT_TRUE(ZEL::Serializer::XmiWriter().write(folder.path("out.xmi"), of));
        return folder.content("out.xmi");
    }

    TemporaryFolder folder;
    ZEL::Serializer::XmiReader reader;
    Model model;
    UmlFactory factory;
};

TEST_F(Derived, BoundsAreReadFromValues) {
    struct Case {
        char const * lowerValue;
        char const * upperValue;
        int lower;
        char const * upper;
    };
    Case const cases[] = {
        {"", "", 1, "1"},
        {"LiteralInteger", "LiteralUnlimitedNatural", 0, "0"},
        {"LiteralInteger' value='0", "LiteralUnlimitedNatural' value='*", 0, "*"},
        {"LiteralInteger' value='2", "LiteralUnlimitedNatural' value='7", 2, "7"},
        {"LiteralUnlimitedNatural' value='3", "LiteralInteger' value='4", 3, "4"},
        {"LiteralString' value='0", "LiteralString' value='*", 0, "*"},
        {"LiteralString' value='5", "LiteralString' value='-1", 5, "*"},
        {"LiteralString' value='few", "LiteralString' value='4294967296", 1, "1"},
        {"LiteralInteger' value='0", "LiteralInteger' value='-1", 0, "*"},
        {"OpaqueExpression", "LiteralString", 1, "1"},
    };
    for (Case const & c : cases) {
        SCOPED_TRACE(std::string(c.lowerValue) + " .. " + c.upperValue);
        auto const value = [](std::string const & role, std::string const & type) {
            return type.empty() ? "" : "<" + role + " xmi:id='" + role + "' xmi:type='uml:" + type + "'/>";
        };
        Model const again = read("<packagedElement xmi:type='uml:Class' xmi:id='c'><ownedAttribute xmi:id='a'"
                                 " xmi:type='uml:Property'>" +
                                 value("upperValue", c.upperValue) + value("lowerValue", c.lowerValue) +
                                 "</ownedAttribute></packagedElement>");
        ZEL::Property const property = firstClass(again).getOwnedAttributes().at(0);
        EXPECT_EQ(property.getLower(), c.lower);
        EXPECT_EQ(property.getUpper().toString(), c.upper);
        EXPECT_EQ(property.has("lower"), ZEL::Boolean(*c.lowerValue != '\0'));
        if (property.has("upper")) {
            EXPECT_EQ(property.getOne("upper").toString(), c.upper);
        }
    }
}

TEST_F(Derived, SettingABoundMakesItsValueOrChangesIt) {
    Property const property = addProperty(add<Class>("C"));
    property.setLower(1);
    EXPECT_FALSE(property.hasLowerValue()) << "it is 1 without a value";
    model.commitTransaction();

    model.beginTransaction("bounds");
    property.setLower(0);
    property.setOrAdd("upper", ZEL::Object(factory.createFromString("UnlimitedNatural", "*")));
    model.commitTransaction();
    LiteralInteger const lower(property.getLowerValue());
    LiteralUnlimitedNatural const upper(property.getUpperValue());
    ASSERT_TRUE(lower.isValid());
    ASSERT_TRUE(upper.isValid());
    EXPECT_EQ(lower.getValue(), 0);
    EXPECT_TRUE(upper.getValue().isUnlimited());
    EXPECT_EQ(lower.getOwner(), property);
    model.undo();
    EXPECT_EQ(property.getUpper(), ZEL::UnlimitedNatural(1U));
    EXPECT_FALSE(property.hasUpperValue());
    model.redo();
    EXPECT_TRUE(property.getUpper().isUnlimited());

    model.beginTransaction("others");
    property.setUpper(ZEL::UnlimitedNatural(3U));
    EXPECT_EQ(upper.getValue(), ZEL::UnlimitedNatural(3U)) << "the same literal";
    LiteralString const text = factory.createLiteralString();
    property.setUpperValue(text);
    property.setUpper(ZEL::UnlimitedNatural(ZEL::UnlimitedNatural::GetUnlimitedValue()));
    EXPECT_EQ(text.getValue(), "*");
    OpaqueExpression const expression = factory.createOpaqueExpression();
    property.setLowerValue(expression);
    property.setLower(2);
    EXPECT_FALSE(expression.isValid()) << "it is no literal, and makes room for one";
    EXPECT_EQ(property.getLower(), 2);
    property.removeUpper();
    EXPECT_FALSE(property.hasUpperValue());
    EXPECT_FALSE(text.isValid());
    EXPECT_EQ(ZEL::MultiplicityElement(property).upperBound(), ZEL::UnlimitedNatural(1U));
}

TEST_F(Derived, IsCompositeFollowsAggregation) {
    Property const property = addProperty(add<Class>("C"));
    property.setAggregation(AggregationKind::Shared);
    property.setIsComposite(false);
    EXPECT_EQ(property.getAggregation(), AggregationKind::Shared) << "it was not composite";
    property.setAggregation(AggregationKind::Composite);
    EXPECT_TRUE(property.isComposite());
    EXPECT_EQ(property.getOne("isComposite").toString(), "true");
    property.setIsComposite(false);
    EXPECT_EQ(property.getAggregation(), AggregationKind::None);
    ZEL::Property(property).setIsComposite(true);
    EXPECT_EQ(property.getAggregation(), AggregationKind::Composite);
}

TEST_F(Derived, SuperClassesAreThoseOfGeneralizations) {
    Class const a = add<Class>("A");
    Component const b = add<Component>("B");
    AssociationClass const c = add<AssociationClass>("C");
    Class const special = add<Class>("special");
    Generalization const generalization = factory.createGeneralization();
    special.getGeneralizations().push_back(generalization);
    EXPECT_THAT(namesOf(special.getSuperClasses()), IsEmpty()) << "it leads nowhere yet";
    generalization.setGeneral(a);
    EXPECT_THAT(namesOf(special.getSuperClasses()), ElementsAre("A"));
    model.commitTransaction();

    model.beginTransaction("more");
    special.getSuperClasses().push_back(b);
    special.getSuperClasses().push_back(b);
    special.setOrAdd("superClass", c);
    model.commitTransaction();
    EXPECT_THAT(namesOf(special.getSuperClasses()), ElementsAre("A", "B", "C"));
    EXPECT_EQ(special.get("superClass").size(), 3);
    EXPECT_THAT(namesOf(Classifier(special).getGenerals()), ElementsAre("A", "B", "C"));
    EXPECT_THAT(namesOf(ZEL::Classifier(special).getGenerals()), ElementsAre("A", "B", "C"));
    EXPECT_EQ(special.getSuperClassByName("B"), b);
    EXPECT_EQ(special.getGeneralizations().size(), 3);
    EXPECT_THAT(namesOf(a.getSubClasses()), ElementsAre("special"));
    EXPECT_THAT(namesOf(special.getSubClasses()), IsEmpty());
    model.undo();
    EXPECT_THAT(namesOf(special.getSuperClasses()), ElementsAre("A"));
    EXPECT_EQ(special.getGeneralizations().size(), 1);
    model.redo();

    model.beginTransaction("fewer");
    auto supers = special.getSuperClasses();
    EXPECT_TRUE(supers.contains(b));
    supers.remove(b);
    EXPECT_FALSE(supers.contains(b));
    EXPECT_EQ(special.getGeneralizations().size(), 2) << "the generalization has gone with it";
    EXPECT_EQ(model.getUnparented().size(), 0);
    supers.insert(1, b);
    supers.replace(0, special);
    EXPECT_THAT(namesOf(supers), ElementsAre("special", "B", "C"));
    supers.erase(supers.begin());
    EXPECT_THAT(namesOf(supers), ElementsAre("B", "C"));
    EXPECT_ANY_THROW(special.setOrAdd("superClass", add<Interface>("I")));
    c.destroy();
    EXPECT_THAT(namesOf(supers), ElementsAre("B")) << "a generalization to nothing shows nothing";
    supers.clear();
    EXPECT_THAT(namesOf(supers), IsEmpty());

    Interface const wide = add<Interface>("wide");
    Interface const narrow = add<Interface>("narrow");
    narrow.getGenerals().push_back(wide);
    ASSERT_EQ(narrow.getGeneralizations().size(), 1);
    EXPECT_EQ(narrow.getGeneralizations().at(0).getGeneral(), wide);
    EXPECT_EQ(narrow.getOne("general"), wide);
}

TEST_F(Derived, GeneralsAreThoseOfTheDeviant) {
    Class const a = add<Class>("A");
    Class const special = add<Class>("special");
    model.commitTransaction();
    Model const draft = model.createDeviantWithName("draft");
    draft.beginTransaction();
    special.asDeviant(draft).getSuperClasses().push_back(a.asDeviant(draft));
    draft.commitTransaction();
    EXPECT_EQ(special.getSuperClasses().size(), 0);
    EXPECT_THAT(namesOf(special.asDeviant(draft).getSuperClasses()), ElementsAre("A"));
}

TEST_F(Derived, AnOperationHasWhatItsReturnParameterHas) {
    Class const type = add<Class>("T");
    Operation const operation = factory.createOperation();
    type.getOwnedOperations().push_back(operation);
    Parameter const in = factory.createParameter();
    in.setType(type);
    in.setLower(0);
    operation.getOwnedParameters().push_back(in);
    EXPECT_FALSE(operation.hasType());
    EXPECT_EQ(operation.getLower(), 1);
    operation.setLower(1);
    EXPECT_THROW(operation.setLower(0), ZEL::Exception) << "nothing has it";
    EXPECT_THROW(operation.setIsOrdered(true), ZEL::Exception);

    operation.setType(type);
    ASSERT_EQ(operation.getOwnedParameters().size(), 2);
    ZEL::Parameter const result = operation.getOwnedParameters().at(1);
    EXPECT_EQ(result.getDirection(), ZEL::ParameterDirectionKind::Return);
    EXPECT_EQ(result.getType(), type);
    operation.setLower(0);
    operation.setUpper(ZEL::UnlimitedNatural(9U));
    operation.setIsOrdered(true);
    operation.setIsUnique(false);
    EXPECT_EQ(result.getLower(), 0);
    EXPECT_EQ(result.getUpper(), ZEL::UnlimitedNatural(9U));
    EXPECT_TRUE(result.isOrdered());
    EXPECT_FALSE(result.isUnique());
    result.setUpper(ZEL::UnlimitedNatural(2U));
    EXPECT_EQ(ZEL::MultiplicityElement(operation).getUpper(), ZEL::UnlimitedNatural(2U));
    EXPECT_EQ(operation.getOne("type"), type);
    operation.removeType();
    EXPECT_FALSE(result.hasType());
}

TEST_F(Derived, AnAssociationHasTheTypesOfItsEnds) {
    Class const a = add<Class>("A");
    Class const b = add<Class>("B");
    Association const association = add<Association>("ab");
    for (Class const & type : {a, b, a}) {
        Property const end = factory.createProperty();
        end.setType(type);
        association.getOwnedEnds().push_back(end);
        association.getMemberEnds().push_back(end);
    }
    EXPECT_THAT(namesOf(association.getEndTypes()), ElementsAre("A", "B"));
    EXPECT_EQ(association.getRelatedElements().size(), 2);
    EXPECT_EQ(association.get("endType").size(), 2);
}

/// A file that states what is derived, rather than what it is derived from.
TEST_F(Derived, AFileMayStateWhatIsDerived) {
    Model const stated = read(R"(
    <packagedElement xmi:type="uml:Class" xmi:id="c" name="C">
      <ownedAttribute xmi:type="uml:Property" xmi:id="a" lower="0" upper="*" isComposite="true"/>
      <ownedAttribute xmi:type="uml:Property" xmi:id="b" lower="0" upper="5" aggregation="shared" isComposite="false">
        <lowerValue xmi:type="uml:LiteralInteger" xmi:id="l" value="3"/>
        <upperValue xmi:type="uml:OpaqueExpression" xmi:id="u"/>
      </ownedAttribute>
      <ownedOperation xmi:type="uml:Operation" xmi:id="o" isOrdered="true">
        <ownedParameter xmi:type="uml:Parameter" xmi:id="r" direction="return"/>
      </ownedOperation>
    </packagedElement>)");
    ASSERT_TRUE(stated.isValid());
    EXPECT_TRUE(reader.report().isEmpty());
    Property const a(firstClass(stated).getOwnedAttributes().at(0));
    EXPECT_EQ(a.getLower(), 0);
    EXPECT_TRUE(a.getUpper().isUnlimited());
    EXPECT_EQ(a.getAggregation(), AggregationKind::Composite);
    Property const b(firstClass(stated).getOwnedAttributes().at(1));
    EXPECT_EQ(b.getLower(), 3) << "the value goes first";
    EXPECT_TRUE(OpaqueExpression(b.getUpperValue()).isValid());
    EXPECT_EQ(b.getAggregation(), AggregationKind::Shared);
    EXPECT_TRUE(firstClass(stated).getOwnedOperations().at(0).getOwnedParameters().at(0).isOrdered());

    std::string const text = written(stated);
    EXPECT_THAT(text, HasSubstr(R"(aggregation="composite")"));
    EXPECT_THAT(text, Not(HasSubstr("lower=")));
    EXPECT_THAT(text, Not(HasSubstr("isComposite")));
    EXPECT_TRUE(ZEL::compare(stated, ZEL::Serializer::XmiReader().read(folder.path("out.xmi"))));
}

TEST_F(Derived, ConditionsAreOwnedRulesAndLinksToThem) {
    std::string const rule = R"(xmi:type="uml:Constraint" xmi:id="r" name="r"/>)";
    std::string const behavior = R"(<ownedBehavior xmi:type="uml:OpaqueBehavior" xmi:id="b" )";
    std::string const operation = R"(<ownedOperation xmi:type="uml:Operation" xmi:id="b" )";
    std::string const cases[] = {
        operation + R"(precondition="r"><ownedRule )" + rule + "</ownedOperation>",
        operation + "><ownedRule " + rule + R"(<precondition xmi:idref="r"/></ownedOperation>)",
        operation + "><precondition " + rule + "</ownedOperation>",
        operation + R"(><precondition xmi:id="r" name="r"/></ownedOperation>)",
        behavior + "><precondition " + rule + "</ownedBehavior>",
        behavior + R"(precondition="r"><ownedRule )" + rule + "</ownedBehavior>",
    };
    for (std::string const & text : cases) {
        SCOPED_TRACE(text);
        Model const found =
            read(R"(<packagedElement xmi:type="uml:Class" xmi:id="c" name="C">)" + text + "</packagedElement>");
        EXPECT_TRUE(reader.report().isEmpty());
        ASSERT_TRUE(found.isValid());
        ZEL::Namespace const owner(firstClass(found).getOwnedMembers().at(0));
        ASSERT_EQ(owner.getOwnedRules().size(), 1);
        EXPECT_EQ(owner.getOwnedRules().at(0).getName(), "r");
        EXPECT_EQ(owner.getOne("precondition"), owner.getOwnedRules().at(0));
        EXPECT_EQ(owner.getName(), "") << "what is said of the rule is not said of its owner";
        EXPECT_THAT(written(found), HasSubstr("<ownedRule "));
        EXPECT_TRUE(ZEL::compare(found, ZEL::Serializer::XmiReader().read(folder.path("out.xmi"))));
    }
}

TEST_F(Derived, EqualBodiesStandSideBySide) {
    Constraint const constraint = add<Constraint>("c");
    OpaqueExpression const expression = factory.createOpaqueExpression();
    constraint.setSpecification(expression);
    for (char const * const text : {"x", "y", "x"}) {
        expression.getBodies().push_back(text);
        expression.getLanguages().push_back("OCL");
    }
    EXPECT_EQ(expression.getBodies().size(), 3);
    ZEL::Serializer::XmiWriterSettings settings;
    settings.setElementPerValue(true);
    ASSERT_TRUE(ZEL::Serializer::XmiWriter(settings).write(folder.path("out.xmi"), model));
    Model const again(reader.read(folder.path("out.xmi")));
    EXPECT_EQ(OpaqueExpression(Constraint(again.getPackagedElements().at(0)).getSpecification()).getLanguages().size(),
              3);
    EXPECT_TRUE(ZEL::compare(model, again));
}

} // namespace
} // namespace uml
