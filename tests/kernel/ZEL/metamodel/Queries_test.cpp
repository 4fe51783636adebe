#include "kernel/ZEL/metamodel/ModelFixture.h"

namespace ZEL::tests {
namespace {

constexpr std::uint32_t kUnlimited = 0xFFFFFFFFU;

bool isUnimplemented(std::function<void()> const & call) {
    try {
        call();
    } catch (Exception const & raised) {
        return dynamic_cast<UnImplementedException const *>(&raised) != nullptr;
    }
    return false;
}

struct Queries : OpenModelFixture {
    Property range(int lower, std::uint32_t upper) {
        Property const property = factory.createProperty();
        property.setLower(Integer(lower));
        property.setUpper(UnlimitedNatural(upper));
        return property;
    }
};

TEST_F(Queries, TakeOneForABoundThatIsNotSet) {
    Property const property = range(0, 0);
    EXPECT_TRUE(property.hasLower());
    EXPECT_EQ(0, property.lowerBound());
    EXPECT_EQ(UnlimitedNatural(0U), property.upperBound());
    property.removeLower();
    property.removeUpper();
    EXPECT_EQ(1, property.lowerBound());
    EXPECT_EQ(UnlimitedNatural(1U), property.upperBound());
}

TEST_F(Queries, CompareUpperBoundsWithUnlimitedAsTheLargest) {
    std::tuple<int, std::uint32_t, bool, int, bool> const rows[] = {
        {1, 1, false, 1, true},           {0, 0, false, 0, true},          {0, 3, true, 5, false},
        {2, kUnlimited, true, 5, true},   {2, kUnlimited, true, 1, false}, {0, kUnlimited, true, 2147483647, true},
        {-3, kUnlimited, true, -1, true}, {-3, 5, true, -1, false},
    };
    for (auto const & [lower, upper, isMultivalued, cardinality, includes] : rows) {
        Property const property = range(lower, upper);
        EXPECT_EQ(isMultivalued, bool(property.isMultivalued())) << lower << ".." << upper;
        EXPECT_EQ(includes, bool(property.includesCardinality(Integer(cardinality))))
            << lower << ".." << upper << " " << cardinality;
    }
    EXPECT_TRUE(range(0, kUnlimited).includesMultiplicity(range(1, kUnlimited)));
    EXPECT_TRUE(range(0, kUnlimited).includesMultiplicity(range(0, 7)));
    EXPECT_FALSE(range(0, 7).includesMultiplicity(range(0, kUnlimited)));
    EXPECT_FALSE(range(1, 7).includesMultiplicity(range(0, 7)));
}

TEST_F(Queries, QualifyNamesByPackagesAlone) {
    Package const outer = factory.createPackage(String("Q"));
    Package const inner = factory.createPackage(String("P"));
    Class const object = factory.createClass();
    Property const property = factory.createProperty();
    object.setName(String("C"));
    property.setName(String("p"));
    EXPECT_EQ("C", object.getQualifiedName().str());
    inner.setNestingPackage(outer);
    object.setPackage(inner);
    property.setClass(object);
    EXPECT_EQ("Q.P.C", object.getQualifiedName().str());
    EXPECT_EQ("Q::P::C", object.getQualifiedNameWithSeperator(String("::")).str());
    EXPECT_EQ("Q.P", inner.getQualifiedName().str());
    EXPECT_EQ("p", property.getQualifiedName().str());
    EXPECT_EQ("p", property.getQualifiedNameWithSeperator(String("::")).str());
    EXPECT_EQ("::", object.separator().str());
    EXPECT_TRUE(object.hasQualifiedName());
    EXPECT_FALSE(factory.createClass().hasQualifiedName());
    // The class of the metamodel takes its name from its first base.
    Operation const operation = factory.createOperation();
    operation.setName(String("o"));
    operation.setClass(object);
    EXPECT_EQ("o", operation.getQualifiedName().str());
}

TEST_F(Queries, QualifyNamesInPackagesNestedDeeply) {
    constexpr int levels = 100000;
    Package innermost;
    for (int level = 0; level < levels; ++level) {
        Package const inner = factory.createPackage(String("p"));
        inner.setNestingPackage(innermost);
        innermost = inner;
    }
    EXPECT_EQ(2 * levels - 1, static_cast<int>(innermost.getQualifiedName().size()));
}

TEST_F(Queries, EndInPackagesThatHaveCombinedToARing) {
    Package const a = factory.createPackage(String("a"));
    Package const b = factory.createPackage(String("b"));
    model.commitTransaction();
    MetaModel const draft = model.createDeviantWithName("draft");
    draft.beginTransaction();
    a.getImplementation()->setOnlyContainerZEL(draft.getDeviant(), b.asDeviant(draft));
    draft.commitTransaction();
    model.beginTransaction();
    b.getImplementation()->setOnlyContainerZEL(model.getDeviant(), a);
    draft.assignToRoot();
    ASSERT_EQ(b, a.getNestingPackage());
    ASSERT_EQ(a, b.getNestingPackage());
    EXPECT_LT(a.getQualifiedName().size(), 20U);
}

TEST_F(Queries, SayThatPackagesNeedNoOwner) {
    EXPECT_TRUE(factory.createClass().mustBeOwned());
    EXPECT_FALSE(factory.createPackage().mustBeOwned());
    EXPECT_FALSE(factory.createProfile().mustBeOwned());
}

TEST_F(Queries, ThatAreNotYetImplementedSaySo) {
    Class const object = factory.createClass();
    Operation const operation = factory.createOperation();
    Property const property = factory.createProperty();
    Package const package = factory.createPackage();
    ElementImport const import = factory.createElementImport();
    DataType const dataType = factory.createDataType();
    NSInterface::FactoryObjectIntf & base = *factory.getImplementation();
    Deviant const deviant = model.getDeviant();
    NamedCall const rows[] = {
        {"BehavioralFeature.isDistinguishableFrom",
         [&] { return operation.isDistinguishableFrom(NamedElement(), Namespace()); }},
        {"Class.inherit", [&] { return object.inherit(Sequence<NamedElement>()); }},
        {"Classifier.allFeatures", [&] { return dataType.allFeatures(); }},
        {"Classifier.allParents", [&] { return dataType.allParents(); }},
        {"Classifier.conformsToClass", [&] { return dataType.conformsToClass(Classifier()); }},
        {"Classifier.conformsToClass", [&] { return dataType.conformsTo(Type()); }},
        {"Classifier.conformsToClass", [&] { return dataType.conformsTo(object); }},
        {"Classifier.general", [&] { return dataType.general(); }},
        {"Classifier.hasVisibilityOf", [&] { return dataType.hasVisibilityOf(NamedElement()); }},
        {"Classifier.inheritableMembers", [&] { return dataType.inheritableMembers(Classifier()); }},
        {"Classifier.maySpecializeType", [&] { return dataType.maySpecializeType(Classifier()); }},
        {"Classifier.parents", [&] { return dataType.parents(); }},
        {"DataType.inherit", [&] { return dataType.inherit(Sequence<NamedElement>()); }},
        {"Element.allOwnedElements", [&] { return package.allOwnedElements(); }},
        {"ElementImport.getName", [&] { return import.getName(); }},
        {"FactoryObject.createFromString",
         [&] { return base.FactoryObjectIntf::createFromString(deviant, String("ZEL.Class")); }},
        {"FactoryObject.createFromString",
         [&] { return base.FactoryObjectIntf::createFromString(deviant, String("ZEL.Integer"), String("1")); }},
        {"FactoryObject.createFromString",
         [&] { return base.FactoryObjectIntf::createFromString(deviant, String("ZEL.Class"), Integer(9)); }},
        {"NamedElement.allNamespaces", [&] { return package.allNamespaces(); }},
        {"NamedElement.isDistinguishableFrom",
         [&] { return package.isDistinguishableFrom(NamedElement(), Namespace()); }},
        {"Namespace.excludeCollisions", [&] { return package.excludeCollisions(Sequence<PackageableElement>()); }},
        {"Namespace.getNamesOfMember", [&] { return package.getNamesOfMember(NamedElement()); }},
        {"Namespace.importMembers", [&] { return package.importMembers(Sequence<PackageableElement>()); }},
        {"Namespace.membersAreDistinguishable", [&] { return package.membersAreDistinguishable(); }},
        {"Operation.isConsistentWith", [&] { return operation.isConsistentWith(RedefinableElement()); }},
        {"Operation.returnResult", [&] { return operation.returnResult(); }},
        {"Package.makesVisible", [&] { return package.makesVisible(NamedElement()); }},
        {"Package.visibleMembers", [&] { return package.visibleMembers(); }},
        {"Property.isAttribute", [&] { return property.isAttribute(Property()); }},
        {"Property.isConsistentWith", [&] { return property.isConsistentWith(RedefinableElement()); }},
        {"Property.isNavigable", [&] { return property.isNavigable(); }},
        {"Property.subsettingContext", [&] { return property.subsettingContext(); }},
        {"RedefinableElement.isRedefinitionContextValid",
         [&] { return property.isRedefinitionContextValid(RedefinableElement()); }},
        {"Type.isInstance", [&] { return object.isInstance(Object()); }},
    };
    for (auto const & row : rows) {
        EXPECT_RAISES("The " + std::string(row.name) + " operation is not yet implemented!", row.call());
        EXPECT_TRUE(isUnimplemented(row.call)) << row.name;
    }
}

TEST_F(Queries, DerivedPropertiesThatAreNotYetImplementedSaySo) {
    Association const association = factory.createAssociation();
    Class const object = factory.createClass();
    Operation const operation = factory.createOperation();
    NSInterface::OperationIntf & body = *operation.getImplementation();
    Deviant const d = model.getDeviant();
    NamedCall const rows[] = {
        {"Association.endType", [&] { return association.getEndTypes(); }},
        {"Association.endType", [&] { return association.getImplementation()->getEndTypesWithoutAssociation(d); }},
        {"Association.endType", [&] { return association.get(String("endType")); }},
        {"Classifier.inheritedMember", [&] { return object.getInheritedMembers(); }},
        {"Classifier.inheritedMember", [&] { return object.has(String("inheritedMember")); }},
        {"Namespace.importedMember", [&] { return object.getImportedMembers(); }},
        {"Namespace.importedMember", [&] { object.setOrAdd(String("importedMember"), object); }},
        {"Operation.booleanIsOrdered", [&] { body.setBooleanIsOrdered(d, Boolean(true)); }},
        {"Operation.booleanIsOrdered", [&] { body.removeBooleanIsOrdered(d); }},
        {"Operation.booleanIsOrdered", [&] { operation.setIsOrdered(Boolean(true)); }},
        {"Operation.booleanIsUnique", [&] { body.setBooleanIsUnique(d, Boolean(true)); }},
        {"Operation.booleanIsUnique", [&] { body.removeBooleanIsUnique(d); }},
        {"Operation.integerLower", [&] { body.setIntegerLower(d, Integer(1)); }},
        {"Operation.integerLower", [&] { body.removeIntegerLower(d); }},
        {"Operation.integerLower", [&] { operation.setOrAdd(String("lower"), operation.getOne(String("lower"))); }},
        {"Operation.unlimitedNaturalUpper", [&] { body.setUnlimitedNaturalUpper(d, UnlimitedNatural(1U)); }},
        {"Operation.unlimitedNaturalUpper", [&] { body.removeUnlimitedNaturalUpper(d); }},
        {"Operation.typeType", [&] { return body.getTypeType(d); }},
        {"Operation.typeType", [&] { return operation.getType(); }},
        {"Operation.typeType", [&] { body.setTypeType(d, Type()); }},
        {"Operation.typeType", [&] { body.setOnlyTypeType(d, Type()); }},
        {"Operation.typeType", [&] { body.removeTypeType(d); }},
        {"Operation.typeType", [&] { body.removeOnlyTypeType(d); }},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_RAISES("The " + std::string(row.name) + " derived property is not yet implemented!", row.call());
        EXPECT_TRUE(isUnimplemented(row.call)) << row.name;
    }
    EXPECT_FALSE(operation.getBooleanIsOrdered());
    EXPECT_TRUE(operation.getBooleanIsUnique());
    EXPECT_EQ(1, operation.getIntegerLower());
    EXPECT_EQ(UnlimitedNatural(1U), operation.getUnlimitedNaturalUpper());
    EXPECT_TRUE(operation.isUnique());
    EXPECT_FALSE(operation.isMultivalued());
}

TEST_F(Queries, ReadOnlyDerivedPropertiesRefuseToBeWritten) {
    Class const object = factory.createClass();
    NSInterface::ClassIntf & body = *object.getImplementation();
    Deviant const d = model.getDeviant();
    std::string const set = " is a read-only derived property so you cannot use the set property method!";
    std::string const setEnd = " is a read-only derived property so you cannot use the set_end property method!";
    std::string const remove = " is a derived property and thus cannot have the remove method implemented";
    struct {
        std::string text;
        std::function<void()> call;
    } const rows[] = {
        {"rootModel" + set, [&] { body.setRootModel(d, model); }},
        {"rootModel" + set, [&] { object.setOrAdd(String("rootModel"), model); }},
        {"rootModel" + setEnd, [&] { body.setOnlyRootModel(d, model); }},
        {"rootModel" + setEnd, [&] { object.setOrAddOnly(String("rootModel"), model); }},
        {"rootModel" + remove, [&] { body.removeRootModel(d); }},
        {"rootModel" + remove, [&] { body.removeOnlyRootModel(d); }},
        {"siid" + set, [&] { object.setSiid(String("x")); }},
        {"siid" + remove, [&] { object.removeSiid(); }},
        {"stringSiid" + set, [&] { model.setStringSiid(String("x")); }},
        {"stringSiid" + set, [&] { model.setSiid(String("_zel_x")); }},
        {"stringSiid" + remove, [&] { model.removeStringSiid(); }},
        {"qualifiedName" + set, [&] { object.setQualifiedName(String("x")); }},
        {"qualifiedName" + remove, [&] { object.removeOne(String("qualifiedName")); }},
    };
    for (auto const & row : rows) {
        EXPECT_RAISES(row.text, row.call());
        EXPECT_EQ(row.text.ends_with(remove), isUnimplemented(row.call)) << row.text;
    }
    EXPECT_TRUE(object.hasRootModel());
    EXPECT_EQ(model, object.getRootModel());
    EXPECT_TRUE(object.hasSiid());
}

TEST_F(Queries, ShowDerivedPropertiesOverTheStoredOnes) {
    Package const package = factory.createPackage();
    Class const object = factory.createClass();
    Property const attribute = factory.createProperty();
    Operation const operation = factory.createOperation();
    ElementImport const import = factory.createElementImport(object, package);
    package.getPackagedElements().push_back(object);
    object.getOwnedAttributes().push_back(attribute);
    object.getOwnedOperations().push_back(operation);
    EXPECT_THAT(package.getOwnedTypes(), ElementsAre(object));
    EXPECT_THAT(package.getNestedPackages(), ElementsAre());
    EXPECT_THAT(object.getAttributes(), ElementsAre(attribute));
    EXPECT_THAT(object.getFeatures(), ElementsAre(attribute, operation));
    EXPECT_THAT(attribute.getFeaturingClassifiers(), ElementsAre(object));
    EXPECT_EQ(object, attribute.getNamespace());
    EXPECT_EQ(object, attribute.getOwner());
    EXPECT_THAT(object.getOwnedMembers(), ElementsAre(attribute, operation));
    EXPECT_EQ(attribute, object.getMembers().at(0));
    EXPECT_THAT(import.getSources(), ElementsAre(package));
    EXPECT_THAT(import.getTargets(), ElementsAre(object));
    EXPECT_THAT(import.getRelatedElements(), ElementsAre(package, object));

    Property const redefined = factory.createProperty();
    attribute.getRedefinedProperties().push_back(redefined);
    EXPECT_THAT(attribute.getRedefinedElements(), ElementsAre(redefined));
    EXPECT_THAT(attribute.getRedefinitionContexts(), ElementsAre(object));

    DataType const dataType = factory.createDataType();
    dataType.getFeatures().push_back(operation);
    EXPECT_EQ(dataType, operation.getDatatype());
    EXPECT_FALSE(operation.hasClass());
    EXPECT_THAT(object.getFeatures(), ElementsAre(attribute));
}

} // namespace
} // namespace ZEL::tests
