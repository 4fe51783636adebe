#include "kernel/ZEL/metamodel/ExpectedMetaModel.h"
#include "support/ExpectRaises.h"

#include <ZEL/GlobalXMIIdToObjectMap.h>
#include <ZEL/TypeInfoRegistry.h>
#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Enumeration.h>
#include <ZEL/metamodel/EnumerationLiteral.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PrimitiveType.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/Stereotype.h>

#include <gmock/gmock.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <map>
#include <memory>
#include <set>
#include <string>

namespace ZEL {
namespace {

using Test::ExpectedClass;
using Test::expectedClasses;
using Test::expectedProperties;
using Test::ExpectedProperty;
using testing::ElementsAre;

char const kUri[] = "http://schema.omg.org/spec/MOF/2.0";
char const kCmofUri[] = "http://schema.omg.org/spec/MOF/2.0/cmof.xml";
char const kEmofUri[] = "http://schema.omg.org/spec/MOF/2.0/emof.xml";

Object byKey(std::string const & key) {
    auto const & map = GlobalXMIIdToObjectMap::getMap();
    auto const found = map.find(key);
    return found == map.end() ? Object() : found->second;
}

ImmutableMetaModel metaModel() { return ImmutableMetaModel(MetaModel::MetaClass()); }

ImmutableClass classNamed(std::string const & name) { return ImmutableClass(byKey("ZEL." + name)); }

std::string nameOf(ImmutableNamedElement const & element) {
    return element.isValid() ? element.getName().str() : "(invalid)";
}

template <class Sequence> std::vector<std::string> namesOf(Sequence const & elements) {
    std::vector<std::string> names;
    for (auto const & element : elements) {
        names.push_back(element.getName().str());
    }
    return names;
}

std::string multiplicityOf(ImmutableProperty const & property) {
    return property.getLower().toString().str() + ".." +
           (property.getUpper() == UnlimitedNatural(0xFFFFFFFFU) ? "*" : property.getUpper().toString().str());
}

std::string flagsOf(ImmutableProperty const & property) {
    std::string flags;
    auto const add = [&flags](bool isSet, char const * flag) {
        if (isSet) {
            flags += (flags.empty() ? "" : " ") + std::string(flag);
        }
    };
    add(property.isReadOnly(), "RO");
    add(property.isDerived(), "D");
    add(property.isComposite(), "CP");
    add(property.isOrdered(), "O");
    add(!property.isUnique(), "nonunique");
    return flags;
}

/// What the other member end is: a property of a class with its class, or the name of an end that the association owns.
std::string otherEndOf(ImmutableProperty const & property, ImmutableAssociation const & association) {
    for (ImmutableProperty const end : association.getMemberEnds()) {
        if (end != property) {
            return end.hasOwningAssociation() ? end.getName().str()
                                              : nameOf(end.getClass()) + "." + end.getName().str();
        }
    }
    return "(none)";
}

ExpectedProperty const * expected(std::string const & owner, std::string const & name) {
    for (ExpectedProperty const & row : expectedProperties()) {
        if (owner == row.owner && name == row.name) {
            return &row;
        }
    }
    return nullptr;
}

int upperIsOne() {
    int count = 0;
    for (ExpectedProperty const & row : expectedProperties()) {
        count += std::string(row.multiplicity).back() == '1' ? 1 : 0;
    }
    return count;
}

TEST(MetaModelClasses, StandWithTheirFlagsSuperClassesAndPropertiesAsDeclared) {
    int own = 0;
    int cloned = 0;
    ASSERT_EQ(42U, expectedClasses().size());
    for (ExpectedClass const & row : expectedClasses()) {
        SCOPED_TRACE(row.name);
        ImmutableClass const object = classNamed(row.name);
        ASSERT_TRUE(object.isValid());
        EXPECT_EQ(row.name, object.getName().str());
        EXPECT_EQ(row.isAbstract, bool(object.isAbstract()));
        EXPECT_EQ(row.builtAs, object.getMetaClass().getName().str());
        std::vector<std::string> const superClasses(row.superClasses.begin(), row.superClasses.end());
        EXPECT_EQ(superClasses, namesOf(object.getSuperClasses()));

        auto const properties = object.getOwnedAttributes();
        ASSERT_EQ(row.ownProperties + row.clonedProperties, properties.size());
        for (int i = 0; i < properties.size(); ++i) {
            bool const isOwn = expected(row.name, properties.at(i).getName().str()) != nullptr;
            EXPECT_EQ(i < row.ownProperties, isOwn) << properties.at(i).getName().str();
            EXPECT_EQ(object, properties.at(i).getClass());
        }
        own += row.ownProperties;
        cloned += row.clonedProperties;
    }
    EXPECT_EQ(121, own);
    EXPECT_EQ(723, cloned);
}

TEST(MetaModelClasses, KnowTheirSubClasses) {
    std::map<std::string, std::set<std::string>> subClasses;
    for (ExpectedClass const & row : expectedClasses()) {
        for (char const * const superClass : row.superClasses) {
            subClasses[superClass].insert(row.name);
        }
    }
    for (ExpectedClass const & row : expectedClasses()) {
        auto const names = namesOf(classNamed(row.name).getSubClasses());
        EXPECT_EQ(subClasses[row.name], std::set<std::string>(names.begin(), names.end())) << row.name;
        EXPECT_EQ(subClasses[row.name].size(), names.size()) << row.name;
    }
}

TEST(MetaModelProperties, HaveTheDataOfTheirRows) {
    for (ExpectedProperty const & row : expectedProperties()) {
        SCOPED_TRACE(std::string(row.owner) + "." + row.name);
        ImmutableProperty const property = classNamed(row.owner).getProperty(String(row.name));
        ASSERT_TRUE(property.isValid());
        EXPECT_EQ(row.type, nameOf(property.getType()));
        EXPECT_EQ(row.multiplicity, multiplicityOf(property));
        EXPECT_EQ(row.flags, flagsOf(property));
        EXPECT_EQ(row.defaultValue, property.getDefault().str());
        EXPECT_EQ(*row.defaultValue != '\0', bool(property.hasDefault()));
        EXPECT_EQ(row.persistence, property.getPersistence().toString().str());
        EXPECT_FALSE(property.isDerivedUnion());
        EXPECT_FALSE(property.isID());
        EXPECT_FALSE(property.hasVisibility());
        EXPECT_EQ(row.association, property.hasAssociation() ? nameOf(property.getAssociation()) : "");
        if (property.hasAssociation()) {
            EXPECT_EQ(2, property.getAssociation().getMemberEnds().size());
            EXPECT_EQ(row.otherEnd, otherEndOf(property, property.getAssociation()));
            bool const isNamed = std::string(row.otherEnd).find('.') != std::string::npos;
            EXPECT_EQ(isNamed, bool(property.hasOpposite()));
            EXPECT_EQ(isNamed ? 0 : 1, property.getAssociation().getOwnedEnds().size());
        }
    }
    EXPECT_EQ(69, upperIsOne());
}

TEST(MetaModelProperties, AreClonedWithAllTheirDataAndShareTheirStorage) {
    std::set<void const *> storages;
    for (ExpectedClass const & row : expectedClasses()) {
        for (ImmutableProperty const clone : classNamed(row.name).getOwnedAttributes()) {
            SCOPED_TRACE(row.name + std::string("::") + clone.getName().str());
            ASSERT_TRUE(clone.getStorage().isValid());
            storages.insert(clone.getStorage().getImplementationWithoutAssert());
            // The definer is the only own property with the same storage.
            ImmutableProperty definer;
            for (ExpectedProperty const & candidate : expectedProperties()) {
                if (clone.getName() == candidate.name) {
                    ImmutableProperty const own = classNamed(candidate.owner).getProperty(String(candidate.name));
                    if (own.getStorage() == clone.getStorage()) {
                        EXPECT_FALSE(definer.isValid());
                        definer = own;
                    }
                }
            }
            ASSERT_TRUE(definer.isValid());
            EXPECT_EQ(definer.getType(), clone.getType());
            EXPECT_EQ(multiplicityOf(definer), multiplicityOf(clone));
            EXPECT_EQ(flagsOf(definer), flagsOf(clone));
            EXPECT_EQ(definer.getDefault(), clone.getDefault());
            EXPECT_EQ(definer.getPersistence(), clone.getPersistence());
            ASSERT_EQ(definer.getOwnedComments().size(), clone.getOwnedComments().size());
            if (!clone.getOwnedComments().empty()) {
                ImmutableComment const comment = clone.getOwnedComments().at(0);
                EXPECT_EQ(definer.getOwnedComments().at(0).getBody(), comment.getBody());
                ASSERT_EQ(1, comment.getAnnotatedElements().size());
                EXPECT_EQ(clone, comment.getAnnotatedElements().at(0));
                EXPECT_EQ(clone, comment.getOwner());
            }
            ASSERT_EQ(definer.hasAssociation(), clone.hasAssociation());
            if (definer.hasAssociation() && definer != clone) {
                EXPECT_NE(definer.getAssociation(), clone.getAssociation());
                EXPECT_EQ(definer.getAssociation().getName(), clone.getAssociation().getName());
                EXPECT_EQ(otherEndOf(definer, definer.getAssociation()), otherEndOf(clone, clone.getAssociation()));
            }
        }
    }
    EXPECT_EQ(121U, storages.size());
}

TEST(MetaModelProperties, CarryDescriptionsUnlessTheLibraryAddsThem) {
    std::set<std::string> const without{"Property.isID",
                                        "Package.uri",
                                        "ClassObject.appliedStereotypeInstance",
                                        "ClassObject.modelZEL",
                                        "ClassObject.id",
                                        "ClassObject.siid",
                                        "Model.siid",
                                        "Model.factory",
                                        "Model.uri",
                                        "MetaModel.topPackage",
                                        "MetaModel.factory",
                                        "StereotypeObject.baseElement",
                                        "Stereotype.profile",
                                        "ExtensionEnd.type",
                                        "ExtensionEnd.isRequired",
                                        "Factory.metaModel",
                                        "FactoryObject.model",
                                        "Profile.ownedStereotype",
                                        "Class.ownedExtension",
                                        "Class.subClass",
                                        "Constraint.context",
                                        "Namespace.ownedRule",
                                        "Operation.precondition",
                                        "Operation.postcondition",
                                        "Operation.bodyCondition",
                                        "PackageMerge.mergeType"};
    for (ExpectedProperty const & row : expectedProperties()) {
        std::string const name = std::string(row.owner) + "." + row.name;
        ImmutableProperty const property = classNamed(row.owner).getProperty(String(row.name));
        EXPECT_EQ(without.count(name) == 0 ? 1 : 0, property.getOwnedComments().size()) << name;
    }
    struct {
        char const * owner;
        char const * name;
        char const * text;
    } const rows[] = {
        {"Property", "isComposite",
         "If isComposite is true, the object containing the attribute is a container for the object or value contained "
         "in "
         "the attribute."},
        {"ClassObject", "containerZEL", "The ClassObject that contains this element."},
        {"MultiplicityElement", "isUnique",
         "For a multivalued multiplicity, this attributes specifies whether the values in an instantiation of this "
         "element "
         "are unique."},
        {"Comment", "annotatedElement", "References the Element(s) being commented."},
        {"PackageMerge", "mergedPackage",
         "References the Package that is to be merged with the receiving package of the PackageMerge."},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(row.text,
                  classNamed(row.owner).getProperty(String(row.name)).getOwnedComments().at(0).getBody().str());
    }
}

TEST(MetaModelProperties, AreFoundByNameInEachClassThatHasThem) {
    ImmutableProperty const name = Package::MetaClass().getProperty(String("name"));
    EXPECT_EQ(Package::MetaClass(), name.getClass());
    EXPECT_FALSE(Comment::MetaClass().getProperty(String("name")).isValid());
    // Redefined under the same name, and under another one.
    struct {
        char const * owner;
        char const * name;
        bool isThere;
    } const rows[] = {
        {"Class", "general", false},     {"Stereotype", "general", false}, {"MetaModel", "general", false},
        {"Class", "superClass", true},   {"DataType", "general", true},    {"Association", "general", true},
        {"Factory", "model", false},     {"Factory", "metaModel", true},   {"Stereotype", "package", false},
        {"Stereotype", "profile", true}, {"Class", "package", true},       {"Operation", "lower", true},
        {"Object", "id", false},         {"Comment", "id", true},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(row.isThere, classNamed(row.owner).getProperty(String(row.name)).isValid()) << row.owner << row.name;
    }
    EXPECT_EQ("Stereotype", nameOf(classNamed("ExtensionEnd").getProperty(String("type")).getType()));
    EXPECT_EQ("Factory", nameOf(classNamed("MetaModel").getProperty(String("factory")).getType()));
}

TEST(MetaModelEnumerations, HaveTheirLiteralsInTheOrderOfTheirValues) {
    auto const literals = [](char const * key) {
        return namesOf(ImmutableEnumeration(byKey(std::string("ZEL.") + key)).getOwnedLiterals());
    };
    EXPECT_THAT(literals("PersistenceKind"), ElementsAre("default", "transient", "extension"));
    EXPECT_THAT(literals("PackageMergeKind"), ElementsAre("exdend", "define"));
    EXPECT_THAT(literals("ParameterDirectionKind"), ElementsAre("in", "inout", "out", "return"));
    EXPECT_THAT(literals("VisibilityKind"), ElementsAre("public", "private", "protected", "package"));
}

TEST(MetaModelKeys, LeadToClassesByFourNames) {
    for (ExpectedClass const & row : expectedClasses()) {
        for (std::string const & key :
             {std::string("ZEL.") + row.name, std::string(kUri) + "#" + row.name,
              std::string(kCmofUri) + "#" + row.name, std::string(kEmofUri) + "#" + row.name}) {
            EXPECT_EQ(row.name, nameOf(ImmutableNamedElement(byKey(key)))) << key;
            EXPECT_EQ(classNamed(row.name), byKey(key)) << key;
        }
    }
}

TEST(MetaModelKeys, HaveIrregularFormsForTheLibrarysOwnProperties) {
    struct {
        char const * key;
        char const * owner;
        char const * name;
    } const rows[] = {
        {"ClassObject-container", "ClassObject", "containerZEL"},
        {"ClassObject-containee", "ClassObject", "containeeZEL"},
        {"ClassObject-model", "ClassObject", "modelZEL"},
        {"ClassObject_Id", "ClassObject", "id"},
        {"ClassObject_siid", "ClassObject", "siid"},
        {"ClassObject_appliedStereotypeInstance", "ClassObject", "appliedStereotypeInstance"},
        {"MetaModel_topModel", "MetaModel", "topPackage"},
        {"Class_ownedExtensionEnd", "Class", "ownedExtension"},
        {"Class_superClass", "Class", "superClass"},
        {"Class_subClass", "Class", "subClass"},
        {"Model_siid", "Model", "siid"},
        {"Model_uri", "Model", "uri"},
        {"Model-unparented", "Model", "unparented"},
        {"Model_factory", "Model", "factory"},
        {"FactoryObject_model", "FactoryObject", "model"},
        {"ExtensionEnd_isRequired", "ExtensionEnd", "isRequired"},
        {"ExtensionEnd_type", "ExtensionEnd", "type"},
        {"Profile_ownedStereotype", "Profile", "ownedStereotype"},
        {"Stereotype_profile", "Stereotype", "profile"},
        {"StereotypeObject_baseElement", "StereotypeObject", "baseElement"},
        {"NamedElement-qualifiedName", "NamedElement", "qualifiedName"},
    };
    std::set<std::string> irregular;
    for (auto const & row : rows) {
        std::string const key = "ZEL." + std::string(row.owner) + "::" + row.key;
        EXPECT_EQ(classNamed(row.owner).getProperty(String(row.name)), byKey(key)) << key;
        EXPECT_FALSE(byKey("ZEL." + std::string(row.owner) + "::ZEL." + row.owner + "." + row.name).isValid()) << key;
        irregular.insert(std::string(row.owner) + "." + row.name);
    }
    for (ExpectedProperty const & row : expectedProperties()) {
        ImmutableProperty const property = classNamed(row.owner).getProperty(String(row.name));
        for (char const * const uri : {kUri, kCmofUri, kEmofUri}) {
            EXPECT_EQ(property, byKey(std::string(uri) + "#" + row.owner + "-" + row.name)) << row.owner << row.name;
        }
        if (irregular.count(std::string(row.owner) + "." + row.name) == 0) {
            std::string const key = "ZEL." + std::string(row.owner) + "::ZEL." + row.owner + "." + row.name;
            EXPECT_EQ(property, byKey(key)) << key;
        }
    }
    EXPECT_EQ(Comment::MetaClass().getProperty(String("containerZEL")), byKey("ZEL.Comment::ClassObject-container"));
    EXPECT_EQ(Package::MetaClass().getProperty(String("qualifiedName")),
              byKey("ZEL.Package::NamedElement-qualifiedName"));
    EXPECT_EQ(Package::MetaClass().getProperty(String("name")), byKey("ZEL.Package::ZEL.NamedElement.name"));
    EXPECT_FALSE(byKey("ZEL.Class::ZEL.Classifier.general").isValid());
}

TEST(MetaModelKeys, LeadToTheEndsThatAssociationsOwn) {
    for (ExpectedProperty const & row : expectedProperties()) {
        if (*row.association == '\0' || std::string(row.otherEnd).find('.') != std::string::npos) {
            continue;
        }
        std::string const association = row.association;
        std::string const key = "InfrastructureLibrary.Core.Constructs." + association + "::Core-Constructs-" +
                                association + "-" + row.otherEnd;
        ImmutableProperty const end(byKey(key));
        ASSERT_TRUE(end.isValid()) << key;
        EXPECT_EQ(classNamed(row.owner).getProperty(String(row.name)).getAssociation(), end.getOwningAssociation())
            << key;
    }
}

TEST(MetaModelObject, IsAtOnceTheModelAndTheClassOfModels) {
    ImmutableMetaModel const model = metaModel();
    ASSERT_TRUE(model.isValid());
    EXPECT_EQ(model, MetaModel::MetaClass());
    EXPECT_EQ(model, model.getMetaClass());
    EXPECT_EQ(model, model.getModelZEL());
    EXPECT_EQ(model, Comment::MetaClass().getModelZEL());
    EXPECT_EQ("MetaModel", model.getQualifiedName().str());
    EXPECT_FALSE(model.getPackage().isValid());
    EXPECT_EQ("ZEL.Comment", Comment::MetaClass().getQualifiedName().str());
    EXPECT_EQ(kUri, model.getUri().str());
    EXPECT_EQ(0, model.getUndoStackLength());
    EXPECT_EQ(0, model.getMaximumUndoStackLength());
    EXPECT_EQ(Class::MetaClass(), Class::MetaClass().getMetaClass());
    EXPECT_EQ(Stereotype::MetaClass(), classNamed("StereotypeObject").getMetaClass());

    ImmutablePackage const top = model.getTopPackage();
    EXPECT_EQ("ZEL", top.getName().str());
    EXPECT_EQ(kUri, top.getUri().str());
    EXPECT_EQ(model, top.getContainerZEL());
    EXPECT_FALSE(top.getNestingPackage().isValid());
    int associations = 0;
    int others = 0;
    for (ImmutableType const type : top.getOwnedTypes()) {
        ImmutableAssociation(type).isValid() ? ++associations : ++others;
    }
    EXPECT_EQ(41 + 13, others);
    EXPECT_EQ(54 + 416, associations);
}

TEST(MetaModelObject, ContainsAllItsObjects) {
    ImmutableMetaModel const model = metaModel();
    EXPECT_EQ(0, model.getUnparented().size());
    int objects = 0;
    Model const writable(MetaModel(Object(byKey("ZEL.MetaModel"))));
    for (int id = 2; id < writable.getNextIdValue(); ++id) {
        ImmutableClassObject object = writable.getObjectById(Integer(id));
        ASSERT_TRUE(object.isValid()) << id;
        int steps = 0;
        while (object.hasContainerZEL() && steps < 20) {
            object = object.getContainerZEL();
            ++steps;
        }
        ASSERT_EQ(model, object) << id;
        ++objects;
    }
    // properties, associations, comments, classes, value types, literals, the package
    EXPECT_EQ(844 + 33 + 111 + 54 + 416 + 95 + 545 + 41 + 13 + 13 + 1, objects);
}

// Files refer to objects of the metamodel by these numbers.
TEST(MetaModelObject, NumbersItsObjectsAsFilesHaveThem) {
    struct {
        char const * key;
        int id;
    } const rows[] = {
        {"ZEL.MetaModel", 1},
        {"ZEL.PersistenceKind", 3},
        {"ZEL.Property", 7},
        {"ZEL.NamedElement", 75},
        {"ZEL.NamedElement::ZEL.NamedElement.name", 78},
        {"ZEL.Object", 315},
        {"ZEL.PropertyStorage", 686},
        {"ZEL.Boolean", 687},
        {"ZEL.String", 688},
        {"ZEL.Single", 689},
        {"ZEL.Double", 690},
        {"ZEL.Real", 691},
        {"ZEL.Integer", 692},
        {"ZEL.UnlimitedNatural", 693},
        {"ZEL.Argument", 694},
        {"ZEL.Comment", 1488},
        {"ZEL.ParameterDirectionKind", 1511},
        {"ZEL.VisibilityKind", 1516},
        {"ZEL.PackageMerge", 1521},
        {"ZEL.PackageMergeKind", 1551},
    };
    for (auto const & row : rows) {
        EXPECT_EQ(row.id, ImmutableClassObject(byKey(row.key)).getId()) << row.key;
    }
    EXPECT_EQ(2, metaModel().getTopPackage().getId());
}

std::string fingerprint() {
    std::uint32_t sum = 2166136261U;
    for (auto const & [key, object] : GlobalXMIIdToObjectMap::getMap()) {
        for (char const c : key + "=" + ImmutableClassObject(object).getSiid().str()) {
            sum = (sum ^ static_cast<unsigned char>(c)) * 16777619U;
        }
    }
    return std::to_string(sum);
}

/// Prints what another process has to find as well; run by the test below.
TEST(MetaModelObject, PrintsItsFingerprint) { std::printf("fingerprint=%s\n", fingerprint().c_str()); }

TEST(MetaModelObject, IsTheSameInEachProcess) {
    std::array<char, 4096> path{};
    ASSERT_GT(readlink("/proc/self/exe", path.data(), path.size() - 1), 0);
    std::string const command =
        "'" + std::string(path.data()) + "' --gtest_filter=MetaModelObject.PrintsItsFingerprint 2>/dev/null";
    std::unique_ptr<std::FILE, int (*)(std::FILE *)> const pipe(popen(command.c_str(), "r"), &pclose);
    ASSERT_NE(nullptr, pipe);
    std::string output;
    std::array<char, 256> line{};
    while (std::fgets(line.data(), line.size(), pipe.get()) != nullptr) {
        output += line.data();
    }
    EXPECT_THAT(output, testing::HasSubstr("fingerprint=" + fingerprint() + "\n"));
}

} // namespace
} // namespace ZEL
