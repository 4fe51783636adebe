#include "kernel/ZEL/metamodel/ExpectedMetaModel.h"
#include "kernel/ZEL/metamodel/ModelFixture.h"
#include "support/RunAgain.h"

#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>
#include <ZEL/metamodel/PropertyStorage.h>

#include <algorithm>
#include <map>
#include <set>

namespace ZEL::tests {
namespace {

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

ImmutableProperty propertyNamed(std::string const & owner, std::string const & name) {
    return classNamed(owner).getProperty(String(name));
}

/// What the other member end is: a property of a class with its class, or the name of an end that the association owns.
std::string otherEndOf(ImmutableProperty const & property) {
    for (ImmutableProperty const end : property.getAssociation().getMemberEnds()) {
        if (end != property) {
            return end.hasOwningAssociation() ? end.getName().str()
                                              : nameOf(end.getClass()) + "." + end.getName().str();
        }
    }
    return "(none)";
}

/// The property in the words of `ExpectedProperty`.
std::string told(ImmutableProperty const & property) {
    bool const isUnlimited = property.getUpper() == UnlimitedNatural(0xFFFFFFFFU);
    std::string text = nameOf(property.getType()) + " " + property.getLower().toString().str() + ".." +
                       (isUnlimited ? "*" : property.getUpper().toString().str());
    auto const add = [&text](bool isSet, std::string const & word) { text += isSet ? " " + word : std::string(); };
    add(property.isReadOnly(), "RO");
    add(property.isDerived(), "D");
    add(property.isComposite(), "CP");
    add(property.isOrdered(), "O");
    add(!property.isUnique(), "nonunique");
    add(property.hasDefault(), "= " + property.getDefault().str());
    add(property.getPersistence() != PersistenceKind::Default, property.getPersistence().toString().str());
    add(property.getOwnedComments().empty(), "undescribed");
    if (property.hasAssociation()) {
        text += ", " + nameOf(property.getAssociation()) + " to " + otherEndOf(property);
    }
    return text;
}

bool hasNamedOpposite(ExpectedProperty const & row) {
    return row.told.substr(row.told.find(" to ") + 1).find('.') != std::string::npos;
}

TEST(MetaModelClasses, StandWithTheirFlagsSuperClassesAndPropertiesAsDeclared) {
    int own = 0;
    int cloned = 0;
    int generals = 0;
    int specials = 0;
    ASSERT_EQ(42U, expectedClasses().size());
    for (ExpectedClass const & row : expectedClasses()) {
        SCOPED_TRACE(row.name);
        ImmutableClass const object = classNamed(row.name);
        ASSERT_TRUE(object.isValid());
        EXPECT_EQ(row.name, object.getName().str());
        EXPECT_EQ(row.isAbstract, bool(object.isAbstract()));
        EXPECT_EQ(row.builtAs, object.getMetaClass().getName().str());
        EXPECT_EQ(row.superClasses, namesOf(object.getSuperClasses()));
        for (ImmutableClass const superClass : object.getSuperClasses()) {
            EXPECT_TRUE(superClass.getSubClasses().contains(object));
        }
        generals += object.getSuperClasses().size();
        specials += object.getSubClasses().size();

        auto const properties = object.getOwnedAttributes();
        ASSERT_EQ(row.ownProperties + row.clonedProperties, properties.size());
        for (int i = 0; i < properties.size(); ++i) {
            std::string const name = properties.at(i).getName().str();
            auto const isHere = [&](ExpectedProperty const & each) {
                return each.owner == row.name && each.name == name;
            };
            bool const isOwn = std::any_of(expectedProperties().begin(), expectedProperties().end(), isHere);
            EXPECT_EQ(i < row.ownProperties, isOwn) << name;
            EXPECT_EQ(object, properties.at(i).getClass());
        }
        own += row.ownProperties;
        cloned += row.clonedProperties;
    }
    EXPECT_EQ(121, own);
    EXPECT_EQ(723, cloned);
    EXPECT_EQ(generals, specials);
}

TEST(MetaModelProperties, HaveTheDataOfTheirRows) {
    for (ExpectedProperty const & row : expectedProperties()) {
        SCOPED_TRACE(row.owner + "." + row.name);
        ImmutableProperty const property = propertyNamed(row.owner, row.name);
        ASSERT_TRUE(property.isValid());
        EXPECT_EQ(row.told, told(property));
        EXPECT_FALSE(property.isDerivedUnion() || property.isID() || property.hasVisibility());
        if (property.hasAssociation()) {
            EXPECT_EQ(2, property.getAssociation().getMemberEnds().size());
            EXPECT_EQ(hasNamedOpposite(row), bool(property.hasOpposite()));
            EXPECT_EQ(hasNamedOpposite(row) ? 0 : 1, property.getAssociation().getOwnedEnds().size());
        }
    }
}

TEST(MetaModelProperties, AreClonedWithAllTheirDataAndShareTheirStorage) {
    std::map<PropertyStorage, ImmutableProperty> definers;
    for (ExpectedProperty const & row : expectedProperties()) {
        ImmutableProperty const definer = propertyNamed(row.owner, row.name);
        ASSERT_TRUE(definer.getStorage().isValid());
        EXPECT_TRUE(definers.emplace(definer.getStorage(), definer).second) << row.owner << row.name;
    }
    std::set<PropertyStorage> storages;
    for (ExpectedClass const & row : expectedClasses()) {
        for (ImmutableProperty const clone : classNamed(row.name).getOwnedAttributes()) {
            SCOPED_TRACE(row.name + std::string("::") + clone.getName().str());
            storages.insert(clone.getStorage());
            ASSERT_EQ(1U, definers.count(clone.getStorage()));
            ImmutableProperty const definer = definers.at(clone.getStorage());
            EXPECT_EQ(definer.getName(), clone.getName());
            EXPECT_EQ(definer.getType(), clone.getType());
            EXPECT_EQ(told(definer), told(clone));
            if (!clone.getOwnedComments().empty()) {
                ImmutableComment const comment = clone.getOwnedComments().at(0);
                EXPECT_EQ(definer.getOwnedComments().at(0).getBody(), comment.getBody());
                EXPECT_THAT(comment.getAnnotatedElements(), ElementsAre(clone));
                EXPECT_EQ(clone, comment.getOwner());
            }
            if (definer.hasAssociation() && definer != clone) {
                EXPECT_NE(definer.getAssociation(), clone.getAssociation());
            }
        }
    }
    EXPECT_EQ(121U, storages.size());
}

TEST(MetaModelProperties, CarryDescriptions) {
    std::tuple<char const *, char const *, char const *> const rows[] = {
        {"Property", "isComposite",
         "If isComposite is true, the object containing the attribute is a container for the object or value contained "
         "in the attribute."},
        {"ClassObject", "containerZEL", "The ClassObject that contains this element."},
        {"MultiplicityElement", "isUnique",
         "For a multivalued multiplicity, this attributes specifies whether the values in an instantiation of this "
         "element are unique."},
        {"Comment", "annotatedElement", "References the Element(s) being commented."},
        {"PackageMerge", "mergedPackage",
         "References the Package that is to be merged with the receiving package of the PackageMerge."},
    };
    for (auto const & [owner, name, text] : rows) {
        EXPECT_EQ(text, propertyNamed(owner, name).getOwnedComments().at(0).getBody().str());
    }
}

TEST(MetaModelProperties, AreFoundByNameInEachClassThatHasThem) {
    ImmutableProperty const name = Package::MetaClass().getProperty(String("name"));
    EXPECT_EQ(Package::MetaClass(), name.getClass());
    EXPECT_FALSE(Comment::MetaClass().getProperty(String("name")).isValid());
    // Redefined under the same name, and under another one.
    std::tuple<char const *, char const *, bool> const rows[] = {
        {"Class", "general", false},     {"Stereotype", "general", false}, {"MetaModel", "general", false},
        {"Class", "superClass", true},   {"DataType", "general", true},    {"Association", "general", true},
        {"Factory", "model", false},     {"Factory", "metaModel", true},   {"Stereotype", "package", false},
        {"Stereotype", "profile", true}, {"Class", "package", true},       {"Operation", "lower", true},
        {"Object", "id", false},         {"Comment", "id", true},
    };
    for (auto const & [owner, property, isThere] : rows) {
        EXPECT_EQ(isThere, propertyNamed(owner, property).isValid()) << owner << "." << property;
    }
    EXPECT_EQ("Stereotype", nameOf(propertyNamed("ExtensionEnd", "type").getType()));
    EXPECT_EQ("Factory", nameOf(propertyNamed("MetaModel", "factory").getType()));
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
    for (ExpectedProperty const & row : expectedProperties()) {
        std::string const name = row.owner + "." + row.name;
        SCOPED_TRACE(name);
        ImmutableProperty const property = propertyNamed(row.owner, row.name);
        for (char const * const uri : {kUri, kCmofUri, kEmofUri}) {
            EXPECT_EQ(property, byKey(std::string(uri) + "#" + row.owner + "-" + row.name)) << uri;
        }
        std::string const prefix = "ZEL." + row.owner + "::";
        std::string const regular = "ZEL." + name;
        EXPECT_EQ(property, byKey(prefix + (row.key.empty() ? regular : row.key)));
        EXPECT_EQ(row.key.empty(), byKey(prefix + regular).isValid());
    }
    EXPECT_EQ(Comment::MetaClass().getProperty(String("containerZEL")), byKey("ZEL.Comment::ClassObject-container"));
    EXPECT_EQ(Package::MetaClass().getProperty(String("qualifiedName")),
              byKey("ZEL.Package::NamedElement-qualifiedName"));
    EXPECT_EQ(Package::MetaClass().getProperty(String("name")), byKey("ZEL.Package::ZEL.NamedElement.name"));
    EXPECT_FALSE(byKey("ZEL.Class::ZEL.Classifier.general").isValid());
}

TEST(MetaModelKeys, LeadToTheEndsThatAssociationsOwn) {
    for (ExpectedProperty const & row : expectedProperties()) {
        std::size_t const comma = row.told.find(", ");
        if (comma == std::string::npos || hasNamedOpposite(row)) {
            continue;
        }
        std::size_t const to = row.told.find(" to ");
        std::string const association = row.told.substr(comma + 2, to - comma - 2);
        std::string const key = "InfrastructureLibrary.Core.Constructs." + association + "::Core-Constructs-" +
                                association + "-" + row.told.substr(to + 4);
        ImmutableProperty const end(byKey(key));
        ASSERT_TRUE(end.isValid()) << key;
        EXPECT_EQ(propertyNamed(row.owner, row.name).getAssociation(), end.getOwningAssociation()) << key;
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
    std::pair<char const *, int> const rows[] = {
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
    for (auto const & [key, id] : rows) {
        EXPECT_EQ(id, ImmutableClassObject(byKey(key)).getId()) << key;
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
    auto const run = runAgain("MetaModelObject.PrintsItsFingerprint");
    EXPECT_THAT(run.output, testing::HasSubstr("fingerprint=" + fingerprint() + "\n"));
}

} // namespace
} // namespace ZEL::tests
