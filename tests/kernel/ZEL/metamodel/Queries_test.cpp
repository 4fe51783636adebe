#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "support/ExpectRaises.h"

#include <ZEL/ZEL.h>

#include <functional>

namespace ZEL {
namespace {

constexpr std::uint32_t kUnlimited = 0xFFFFFFFFU;

class Queries : public Test::ModelFixture {
protected:
    Queries() { open(); }

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
    struct {
        int lower;
        std::uint32_t upper;
        bool isMultivalued;
        int cardinality;
        bool includes;
    } const rows[] = {
        {1, 1, false, 1, true},           {0, 0, false, 0, true},          {0, 3, true, 5, false},
        {2, kUnlimited, true, 5, true},   {2, kUnlimited, true, 1, false}, {0, kUnlimited, true, 2147483647, true},
        {-3, kUnlimited, true, -1, true}, {-3, 5, true, -1, false},
    };
    for (auto const & row : rows) {
        Property const property = range(row.lower, row.upper);
        EXPECT_EQ(row.isMultivalued, bool(property.isMultivalued())) << row.lower << ".." << row.upper;
        EXPECT_EQ(row.includes, bool(property.includesCardinality(Integer(row.cardinality))))
            << row.lower << ".." << row.upper << " " << row.cardinality;
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
    Package innermost = factory.createPackage(String("p"));
    for (int level = 1; level < levels; ++level) {
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
    struct {
        char const * name;
        std::function<void()> call;
    } const rows[] = {
        {"BehavioralFeature.isDistinguishableFrom",
         [&] { static_cast<void>(operation.isDistinguishableFrom(NamedElement(), Namespace())); }},
        {"Class.inherit", [&] { static_cast<void>(object.inherit(Sequence<NamedElement>())); }},
        {"Classifier.allFeatures", [&] { static_cast<void>(dataType.allFeatures()); }},
        {"Classifier.allParents", [&] { static_cast<void>(dataType.allParents()); }},
        {"Classifier.conformsToClass", [&] { static_cast<void>(dataType.conformsToClass(Classifier())); }},
        {"Classifier.conformsToClass", [&] { static_cast<void>(dataType.conformsTo(Type())); }},
        {"Classifier.conformsToClass", [&] { static_cast<void>(dataType.conformsTo(object)); }},
        {"Classifier.general", [&] { static_cast<void>(dataType.general()); }},
        {"Classifier.hasVisibilityOf", [&] { static_cast<void>(dataType.hasVisibilityOf(NamedElement())); }},
        {"Classifier.inheritableMembers", [&] { static_cast<void>(dataType.inheritableMembers(Classifier())); }},
        {"Classifier.maySpecializeType", [&] { static_cast<void>(dataType.maySpecializeType(Classifier())); }},
        {"Classifier.parents", [&] { static_cast<void>(dataType.parents()); }},
        {"DataType.inherit", [&] { static_cast<void>(dataType.inherit(Sequence<NamedElement>())); }},
        {"Element.allOwnedElements", [&] { static_cast<void>(package.allOwnedElements()); }},
        {"ElementImport.getName", [&] { static_cast<void>(import.getName()); }},
        {"FactoryObject.createFromString",
         [&] { static_cast<void>(base.FactoryObjectIntf::createFromString(deviant, String("ZEL.Class"))); }},
        {"FactoryObject.createFromString",
         [&] {
             static_cast<void>(base.FactoryObjectIntf::createFromString(deviant, String("ZEL.Integer"), String("1")));
         }},
        {"FactoryObject.createFromString",
         [&] {
             static_cast<void>(base.FactoryObjectIntf::createFromString(deviant, String("ZEL.Class"), Integer(9)));
         }},
        {"NamedElement.allNamespaces", [&] { static_cast<void>(package.allNamespaces()); }},
        {"NamedElement.isDistinguishableFrom",
         [&] { static_cast<void>(package.isDistinguishableFrom(NamedElement(), Namespace())); }},
        {"Namespace.excludeCollisions",
         [&] { static_cast<void>(package.excludeCollisions(Sequence<PackageableElement>())); }},
        {"Namespace.getNamesOfMember", [&] { static_cast<void>(package.getNamesOfMember(NamedElement())); }},
        {"Namespace.importMembers", [&] { static_cast<void>(package.importMembers(Sequence<PackageableElement>())); }},
        {"Namespace.membersAreDistinguishable", [&] { static_cast<void>(package.membersAreDistinguishable()); }},
        {"Operation.isConsistentWith", [&] { static_cast<void>(operation.isConsistentWith(RedefinableElement())); }},
        {"Operation.returnResult", [&] { static_cast<void>(operation.returnResult()); }},
        {"Package.makesVisible", [&] { static_cast<void>(package.makesVisible(NamedElement())); }},
        {"Package.visibleMembers", [&] { static_cast<void>(package.visibleMembers()); }},
        {"Property.isAttribute", [&] { static_cast<void>(property.isAttribute(Property())); }},
        {"Property.isConsistentWith", [&] { static_cast<void>(property.isConsistentWith(RedefinableElement())); }},
        {"Property.isNavigable", [&] { static_cast<void>(property.isNavigable()); }},
        {"Property.subsettingContext", [&] { static_cast<void>(property.subsettingContext()); }},
        {"RedefinableElement.isRedefinitionContextValid",
         [&] { static_cast<void>(property.isRedefinitionContextValid(RedefinableElement())); }},
        {"Type.isInstance", [&] { static_cast<void>(object.isInstance(Object())); }},
    };
    for (auto const & row : rows) {
        EXPECT_RAISES("The " + std::string(row.name) + " operation is not yet implemented!", row.call());
        EXPECT_THROW(row.call(), UnImplementedException) << row.name;
    }
}

TEST_F(Queries, DerivedPropertiesThatAreNotYetImplementedSaySo) {
    Association const association = factory.createAssociation();
    Class const object = factory.createClass();
    Operation const operation = factory.createOperation();
    NSInterface::OperationIntf & body = *operation.getImplementation();
    Deviant const d = model.getDeviant();
    struct {
        char const * name;
        std::function<void()> call;
    } const rows[] = {
        {"Association.endType", [&] { static_cast<void>(association.getEndTypes()); }},
        {"Association.endType",
         [&] { static_cast<void>(association.getImplementation()->getEndTypesWithoutAssociation(d)); }},
        {"Association.endType", [&] { static_cast<void>(association.get(String("endType"))); }},
        {"Classifier.inheritedMember", [&] { static_cast<void>(object.getInheritedMembers()); }},
        {"Classifier.inheritedMember", [&] { static_cast<void>(object.has(String("inheritedMember"))); }},
        {"Namespace.importedMember", [&] { static_cast<void>(object.getImportedMembers()); }},
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
        {"Operation.typeType", [&] { static_cast<void>(body.getTypeType(d)); }},
        {"Operation.typeType", [&] { static_cast<void>(operation.getType()); }},
        {"Operation.typeType", [&] { body.setTypeType(d, Type()); }},
        {"Operation.typeType", [&] { body.setOnlyTypeType(d, Type()); }},
        {"Operation.typeType", [&] { body.removeTypeType(d); }},
        {"Operation.typeType", [&] { body.removeOnlyTypeType(d); }},
    };
    int index = 0;
    for (auto const & row : rows) {
        SCOPED_TRACE(index++);
        EXPECT_RAISES("The " + std::string(row.name) + " derived property is not yet implemented!", row.call());
        EXPECT_THROW(row.call(), UnImplementedException) << row.name;
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
        bool isUnimplemented = false;
        auto const call = [&] {
            try {
                row.call();
            } catch (UnImplementedException const &) {
                isUnimplemented = true;
                throw;
            }
        };
        EXPECT_RAISES(row.text, call());
        EXPECT_EQ(isUnimplemented, row.text.ends_with(remove)) << row.text;
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
    EXPECT_EQ(object, package.getOwnedTypes().at(0));
    EXPECT_EQ(0, package.getNestedPackages().size());
    EXPECT_EQ(attribute, object.getAttributes().at(0));
    ASSERT_EQ(2, object.getFeatures().size());
    EXPECT_EQ(attribute, object.getFeatures().at(0));
    EXPECT_EQ(operation, object.getFeatures().at(1));
    ASSERT_EQ(1, attribute.getFeaturingClassifiers().size());
    EXPECT_EQ(object, attribute.getFeaturingClassifiers().at(0));
    EXPECT_EQ(object, attribute.getNamespace());
    EXPECT_EQ(object, attribute.getOwner());
    ASSERT_EQ(2, object.getOwnedMembers().size());
    EXPECT_EQ(attribute, object.getMembers().at(0));
    EXPECT_EQ(package, import.getSources().at(0));
    EXPECT_EQ(object, import.getTargets().at(0));
    ASSERT_EQ(2, import.getRelatedElements().size());
    EXPECT_EQ(package, import.getRelatedElements().at(0));
    EXPECT_EQ(object, import.getRelatedElements().at(1));

    Property const redefined = factory.createProperty();
    attribute.getRedefinedProperties().push_back(redefined);
    EXPECT_EQ(redefined, attribute.getRedefinedElements().at(0));
    EXPECT_EQ(object, attribute.getRedefinitionContexts().at(0));

    DataType const dataType = factory.createDataType();
    dataType.getFeatures().push_back(operation);
    EXPECT_EQ(dataType, operation.getDatatype());
    EXPECT_FALSE(operation.hasClass());
    EXPECT_EQ(1, object.getFeatures().size());
}

} // namespace
} // namespace ZEL
