#include "Definitions.h"
#include "write/Fields.h"

#include <gmock/gmock.h>

#include <array>
#include <map>

namespace zelgen::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Class const & classOf(std::string const & name) { return *builtInFamily().findClass("ZEL." + name); }

Property const & propertyOf(std::string const & owner, std::string const & name) {
    for (Property const & p : classOf(owner).own) {
        if (p.name == name) {
            return p;
        }
    }
    throw std::runtime_error("no property " + owner + '.' + name);
}

template <class Properties> std::vector<std::string> namesOf(Properties const & properties) {
    std::vector<std::string> names;
    for (Property const * const p : properties) {
        names.push_back(p->qualifiedName());
    }
    return names;
}

std::vector<Property const *> allOwn() {
    std::vector<Property const *> result;
    for (auto const & c : builtInFamily().main().classes) {
        auto const own = c->reflectiveOwn();
        result.insert(result.end(), own.begin(), own.end());
    }
    return result;
}

TEST(Family, InheritedPropertiesComeDepthFirstFromLeftToRightWithoutRedefinedOnes) {
    EXPECT_THAT(namesOf(classOf("MetaModel").clones),
                ElementsAre("Model.siid", "Model.unparented", "Model.uri", "ClassObject.appliedStereotypeInstance",
                            "ClassObject.modelZEL", "ClassObject.containerZEL", "ClassObject.containeeZEL",
                            "ClassObject.rootModel", "ClassObject.id", "Class.ownedExtension", "Class.superClass",
                            "Class.subClass", "Class.isAbstract", "Class.ownedAttribute", "Class.ownedOperation",
                            "Classifier.attribute", "Classifier.feature", "Classifier.inheritedMember", "Type.package",
                            "NamedElement.qualifiedName", "NamedElement.name", "NamedElement.visibility",
                            "NamedElement.namespace", "Element.persistence", "Element.ownedElement", "Element.owner",
                            "Element.ownedComment", "Namespace.importedMember", "Namespace.elementImport",
                            "Namespace.packageImport", "Namespace.ownedMember", "Namespace.member",
                            "Namespace.ownedRule"));
}

TEST(Family, TheFieldsOfAStateAreTheStoredPropertiesInTheirOrder) {
    EXPECT_THAT(namesOf(classOf("Property").fields),
                ElementsAre("Property.storage", "Property.isReadOnly", "Property.default", "Property.isComposite",
                            "Property.isDerived", "Property.isDerivedUnion", "Property.redefinedProperty",
                            "Property.subsettedProperty", "Property.association", "Property.isID", "NamedElement.name",
                            "NamedElement.visibility", "Element.ownedComment", "MultiplicityElement.isOrdered",
                            "MultiplicityElement.isUnique", "MultiplicityElement.lower", "MultiplicityElement.upper",
                            "TypedElement.type"));
    EXPECT_THAT(namesOf(classOf("Factory").fields), ElementsAre("Factory.metaModel"));
    EXPECT_THAT(namesOf(classOf("Element").fields), IsEmpty()) << "abstract";
}

TEST(Family, SingleEndsOppositeToAContainmentAreTheContainer) {
    std::vector<std::string> stored;
    for (Property const * const p : allOwn()) {
        if (p->making == Making::Container && !p->isDerived) {
            stored.push_back(p->qualifiedName());
        }
    }
    EXPECT_THAT(stored,
                testing::UnorderedElementsAre(
                    "Property.class", "Property.owningAssociation", "Property.datatype", "Package.nestingPackage",
                    "EnumerationLiteral.enumeration", "Type.package", "Stereotype.profile", "Constraint.context",
                    "Operation.class", "Operation.datatype", "Parameter.operation", "ElementImport.importingNamespace",
                    "PackageImport.importingNamespace", "PackageMerge.receivingPackage"));
    EXPECT_EQ(propertyOf("Element", "owner").making, Making::Container);
    EXPECT_EQ(propertyOf("StereotypeObject", "baseElement").making, Making::Container);
}

TEST(Family, RepeatedNamesTakeTheirTypeInFront) {
    std::map<std::string, std::string> prefixed;
    for (Property const * const p : allOwn()) {
        if (p->base != p->name) {
            prefixed[p->qualifiedName()] = p->base;
        }
    }
    EXPECT_THAT(prefixed,
                testing::UnorderedElementsAre(testing::Pair("ExtensionEnd.type", "stereotypeType"),
                                              testing::Pair("Model.siid", "stringSiid"),
                                              testing::Pair("MetaModel.factory", "factoryFactory"),
                                              testing::Pair("Operation.isOrdered", "booleanIsOrdered"),
                                              testing::Pair("Operation.isUnique", "booleanIsUnique"),
                                              testing::Pair("Operation.lower", "integerLower"),
                                              testing::Pair("Operation.upper", "unlimitedNaturalUpper"),
                                              testing::Pair("Operation.raisedException", "typeRaisedException"),
                                              testing::Pair("Operation.type", "typeType"),
                                              testing::Pair("Operation.ownedParameter", "parameterOwnedParameter")));
    EXPECT_EQ(propertyOf("Operation", "ownedParameter").getter(), "getParameterOwnedParameters");
    EXPECT_EQ(propertyOf("Operation", "isOrdered").getter(), "getBooleanIsOrdered");
    EXPECT_EQ(propertyOf("Property", "isID").getter(), "isID");
}

TEST(Family, OperationsOfRedefinedPropertiesForward) {
    auto const forwards = [](std::string const & name) {
        std::vector<std::string> texts;
        for (auto const & [redefined, by] : classOf(name).redefinitions) {
            texts.push_back(redefined->qualifiedName() + " -> " + by->qualifiedName());
        }
        return texts;
    };
    EXPECT_THAT(forwards("Class"), ElementsAre("Classifier.general -> Class.superClass"));
    EXPECT_THAT(forwards("Factory"), ElementsAre("FactoryObject.model -> Factory.metaModel"));
    EXPECT_THAT(forwards("Model"), ElementsAre("ClassObject.siid -> Model.siid"));
    EXPECT_THAT(forwards("Stereotype"), IsEmpty()) << "both ends are the container";
    EXPECT_EQ(forwards("Operation").size(), 7u);
}

TEST(Family, AStoredPropertyMayBeRedefinedByADerivedOne) {
    Application const app(applicationWith(
        "  Kind: {superclasses: [ZEL.Classifier], abstract: true, properties: {\n"
        "    general: {type: Kind, multiplicity: 0..*, flags: [derived], body: hand}}}\n"
        "  Leaf: {superclasses: [ZEL.DataType, Kind]}\n"
        "  Sort: {superclasses: [Kind, ZEL.Class], properties: {\n"
        "    superClass: {type: Sort, multiplicity: 0..*, flags: [derived], body: hand, redefines: Kind.general}}}\n"));
    auto const namesOf = [](std::vector<Property const *> const & properties) {
        std::vector<std::string> names;
        for (Property const * const p : properties) {
            names.push_back(p->qualifiedName());
        }
        return names;
    };
    // It comes after the one that it redefines.
    EXPECT_THAT(namesOf(app["Leaf"].clones), testing::Contains("Kind.general"));
    EXPECT_THAT(namesOf(app["Leaf"].clones), testing::Not(testing::Contains("Classifier.general")));
    EXPECT_THAT(namesOf(app["Leaf"].fields), testing::Not(testing::Contains(testing::EndsWith(".general"))));

    // It stands for what both superclasses have put in the place of one.
    std::vector<std::string> redefined;
    for (auto const & [other, by] : app["Sort"].redefinitions) {
        redefined.push_back(other->qualifiedName() + " -> " + by->qualifiedName());
    }
    EXPECT_THAT(redefined,
                testing::IsSupersetOf({"Kind.general -> Sort.superClass", "Class.superClass -> Sort.superClass",
                                       "Classifier.general -> Sort.superClass"}));
    EXPECT_THAT(namesOf(app["Sort"].fields), testing::Not(testing::Contains(testing::EndsWith(".superClass"))));
    EXPECT_THAT(namesOf(app["Sort"].clones), testing::Not(testing::Contains(testing::EndsWith(".general"))));
}

TEST(Family, OtherEndsAreKeptWhereSomebodyHoldsThem) {
    EXPECT_EQ(propertyOf("Package", "packagedElement").otherEnd, OtherEnd::Container);
    EXPECT_EQ(propertyOf("Class", "ownedAttribute").otherEnd, OtherEnd::Property);
    EXPECT_EQ(propertyOf("Class", "ownedAttribute").opposite, &propertyOf("Property", "class"));
    EXPECT_EQ(propertyOf("TypedElement", "type").otherEnd, OtherEnd::None);
    EXPECT_EQ(propertyOf("OpaqueExpression", "body").otherEnd, OtherEnd::None) << "texts have no container";
}

TEST(Family, AnApplicationBuildsOnTheBuiltInMetamodel) {
    Application const app("prefix: uml\n"
                          "uris: [OMG_SCHEMA_BASE + /spec/UML/2.1]\n"
                          "factory_class: UmlFactory\n"
                          "model_class: Model\n"
                          "types:\n"
                          "  UmlFactory: {superclasses: [ZEL.FactoryObject]}\n"
                          "  Package: {superclasses: [ZEL.Package]}\n"
                          "  Model: {superclasses: [ZEL.Model, Package]}\n"
                          "  mark: {superclasses: [ZEL.StereotypeObject], properties: {\n"
                          "    base_Package: {type: Package, base_element: true}, mark: {type: mark}}}\n"
                          "  Marked: {superclasses: [Package], properties: {\n"
                          "    marks: {type: mark, multiplicity: 0..*, flags: [derived], stereotype: mark}}}\n");

    // Of two inherited properties of one name the first stands for both, and has the only field.
    Class const & model = app["Model"];
    ASSERT_EQ(model.redefinitions.size(), 1u);
    EXPECT_EQ(model.redefinitions[0].first->qualifiedName(), "Package.uri");
    EXPECT_EQ(model.redefinitions[0].second->qualifiedName(), "Model.uri");
    auto const fields = namesOf(model.fields);
    EXPECT_EQ(std::count(fields.begin(), fields.end(), "Model.uri"), 1);
    EXPECT_EQ(std::count(fields.begin(), fields.end(), "Package.uri"), 0);
    EXPECT_TRUE(model.isModel);

    Class const & mark = app["mark"];
    EXPECT_TRUE(mark.builtAsStereotype);
    EXPECT_EQ(mark.own[0].making, Making::Container);
    EXPECT_EQ(mark.own[0].opposite->qualifiedName(), "ClassObject.appliedStereotypeInstance");
    EXPECT_EQ(mark.own[1].type->cppName(true), "uml::Immutablemark");
    EXPECT_EQ(app["Marked"].own[0].making, Making::Extension);
    EXPECT_EQ(app.family().main().uris[0].base, "OMG_SCHEMA_BASE");
    EXPECT_EQ(app.family().main().uris[0].path, "/spec/UML/2.1");
}

TEST(Fields, AreDeclaredAndTestedByTheKindOfValue) {
    std::array<char const *, 4> const rows[] = {
        {"Property", "default", "ZEL::internal::TextField default_;\n", "!f.internal_seldom->default_.isEmpty()"},
        {"Property", "storage", "ZEL::PropertyStorage storage;\n", "f.hasStorage"},
        {"TypedElement", "type", "ZEL::NSInterface::TypeIntf * type = nullptr;\n", "f.type != nullptr"},
        {"MultiplicityElement", "upper", "std::uint32_t upper = 1;\n", "f.hasUpper"},
    };
    for (auto const & [owner, name, declaration, isSet] : rows) {
        EXPECT_EQ(fieldText::declaration(propertyOf(owner, name)), declaration);
        EXPECT_EQ(fieldText::isSet("f.", propertyOf(owner, name)), isSet);
    }
    EXPECT_EQ(fieldText::bitDeclarations(propertyOf("NamedElement", "visibility")),
              "std::uint8_t visibility : 2 = 0;\n");
    EXPECT_EQ(fieldText::bitDeclarations(propertyOf("MultiplicityElement", "isUnique")), "bool isUnique : 1 = true;\n");
}

} // namespace
} // namespace zelgen::tests
