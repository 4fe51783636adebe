#include "kernel/ZEL/metamodel/ExpectedMetaModel.h"
#include "support/ExpectRaises.h"

#include <ZEL/ZEL.h>
#include <ZEL/values/ValueTypeInfo.h>

#include <algorithm>
#include <map>
#include <set>

namespace ZEL::tests {
namespace {

constexpr char uri[] = "test://metamodel";

TEST(MetaModelRegistry, HoldsABoundModelUntilAnotherTakesItsPlace) {
    MetaModelRegistry & registry = *MetaModelRegistry::instance();
    Model const first = Factory::createNewModel();
    int const counts = first.getImplementation()->numRef();
    registry.bindUriToModel(uri, first);
    registry.bindUriToModel(uri, first);
    EXPECT_EQ(counts + 1, first.getImplementation()->numRef());
    EXPECT_TRUE(registry.getModelFromUri(uri) == first);

    Model const second = Factory::createNewModel();
    registry.bindUriToModel(uri, second);
    EXPECT_EQ(counts, first.getImplementation()->numRef());
    EXPECT_TRUE(registry.getModelFromUri(uri) == second);

    registry.unbindModelUri(uri);
    EXPECT_EQ(counts, second.getImplementation()->numRef());
    EXPECT_FALSE(registry.getModelFromUri(uri).isValid()) << "entered as an invalid handle";
    registry.unbindModelUri(uri);
}

TEST(FactoryRegistry, CallsTheCreatorOfTheUri) {
    FactoryRegistry & registry = *FactoryRegistry::instance();
    EXPECT_FALSE(registry.createModel(uri).isValid());
    EXPECT_FALSE(registry.createFactory(uri, Model()).isValid());

    int calls = 0;
    registry.registerModelCreator(uri, [] { return Model(); });
    registry.registerModelCreator(uri, [&calls] {
        ++calls;
        return Model(Factory::createNewModel());
    });
    Model const model = registry.createModel(uri);
    EXPECT_TRUE(model.isValid());
    EXPECT_EQ(1, calls) << "the later creator";

    Model seen;
    registry.registerFactoryCreator(uri, [&seen](Model const & given) {
        seen = given;
        return FactoryObject();
    });
    EXPECT_FALSE(registry.createFactory(uri, model).isValid());
    EXPECT_TRUE(seen == model);

    registry.unregisterModelCreator(uri);
    registry.unregisterFactoryCreator(uri);
    registry.unregisterFactoryCreator(uri);
    EXPECT_FALSE(registry.createModel(uri).isValid());
}

TEST(NamespaceRegistry, PairsUrisWithPrefixes) {
    NamespaceRegistry & registry = *NamespaceRegistry::instance();
    EXPECT_EQ(&registry, NamespaceRegistry::instance());
    EXPECT_EQ("", registry.getPrefixFromMetaUri("test:b"));
    EXPECT_EQ("", registry.getMetaUri("tst"));

    registry.bindMetaUriToPrefix("test:b", "old");
    registry.bindMetaUriToPrefix("test:b", "tst");
    registry.bindMetaUriToPrefix("test:a", "tst");
    EXPECT_EQ("tst", registry.getPrefixFromMetaUri("test:b"));
    EXPECT_EQ("", registry.getMetaUri("old"));
    EXPECT_EQ("test:a", registry.getMetaUri("tst")) << "the smaller of two";
    auto const mappings = registry.getMetaUriMappings();
    EXPECT_TRUE(std::is_sorted(mappings.begin(), mappings.end()));
    EXPECT_EQ(1, std::count(mappings.begin(), mappings.end(), std::pair<std::string, std::string>("test:b", "tst")));

    registry.unbindPrefixMetaUri("test:a");
    registry.unbindPrefixMetaUri("test:a");
    EXPECT_EQ("test:b", registry.getMetaUri("tst"));
    registry.unbindPrefixMetaUri("test:b");
    EXPECT_EQ("", registry.getPrefixFromMetaUri("test:b"));
}

TEST(TypeInfoRegistry, KnowsWhatIsRegisteredOnceUntilItIsUnregistered) {
    constexpr char name[] = "Test.Number";
    HASP::TypeInfo const info = IntegerTypeInfo::Create();
    EXPECT_FALSE(TypeInfoRegistry::hasType(name));
    EXPECT_RAISES(kInternalError, TypeInfoRegistry::getTypeInfo(name));
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());

    TypeInfoRegistry::registerTypeInfo(name, info);
    EXPECT_TRUE(TypeInfoRegistry::hasType(name));
    EXPECT_RAISES(kInternalError, TypeInfoRegistry::registerTypeInfo(name, IntegerTypeInfo::Create()));
    EXPECT_TRUE(TypeInfoRegistry::getTypeInfo(name) == info) << "the first stays";
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());
    TypeInfoRegistry::unregisterTypeInfo(name);
    TypeInfoRegistry::unregisterTypeInfo(name);
    EXPECT_FALSE(TypeInfoRegistry::hasType(name));

    EXPECT_RAISES(kInternalError, TypeInfoRegistry::registerMetaType(name, info, ImmutableDataType()));
    EXPECT_TRUE(TypeInfoRegistry::hasType(name)) << "an invalid metatype is refused after the name is taken";
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());
    TypeInfoRegistry::unregisterMetaType(name);
    EXPECT_FALSE(TypeInfoRegistry::hasType(name));
}

using TypeInfoMap = std::map<std::string, HASP::TypeInfo> & (*)();

// The registry has no listing, and no client needs one. An explicit instantiation may name what is private.
template <TypeInfoMap map> struct Listing {
    friend TypeInfoMap registeredTypes() { return map; }
};
TypeInfoMap registeredTypes();
template struct Listing<&TypeInfoRegistry::getTypeInfoMap>;

TEST(TypeInfoRegistry, HasFourHundredAndTwoNamesForTheBuiltInMetamodel) {
    std::set<std::string> expected{"ZEL.Factory"};
    for (char const * const value :
         {"Integer", "Single", "Real", "String", "Double", "Boolean", "UnlimitedNatural", "Argument", "PersistenceKind",
          "PackageMergeKind", "ParameterDirectionKind", "VisibilityKind", "PropertyStorage"}) {
        std::string const name = value;
        ImmutableDataType const type = TypeInfoRegistry::getMetaType("ZEL." + name);
        EXPECT_TRUE(type.isValid()) << name;
        EXPECT_TRUE(type.getDeviant() == MetaModel::MetaClass().getDeviant()) << name;
        for (std::string const & form :
             {name, name + "Iterator", name + "ImmutableIterator", "SequenceOf" + name, "ImmutableSequenceOf" + name}) {
            expected.insert("ZEL." + form);
        }
    }
    for (ExpectedClass const & row : expectedClasses()) {
        std::string const name = row.name;
        for (std::string const & element : {name, "Immutable" + name}) {
            for (std::string const & form : {element + "Iterator", element + "ImmutableIterator",
                                             "SequenceOf" + element, "ImmutableSequenceOf" + element}) {
                expected.insert("ZEL." + form);
            }
        }
    }
    EXPECT_EQ(402U, expected.size());

    std::set<std::string> registered;
    for (auto const & [name, info] : registeredTypes()()) {
        registered.insert(name);
    }
    EXPECT_EQ(expected, registered);
}

TEST(Registries, KnowTheDataTypeOfEachValueClass) {
    EXPECT_EQ("Boolean", Boolean::MetaDataType().getName());
    EXPECT_EQ("UnlimitedNatural", UnlimitedNatural().getMetaDataType().getName());
    EXPECT_EQ("VisibilityKind", VisibilityKind::MetaDataType().getName());
    ValueObject const boxed = Integer(1);
    EXPECT_TRUE(boxed.getMetaDataType() == TypeInfoRegistry::getMetaType("ZEL.Integer"));
    EXPECT_TRUE(Object(boxed).getMetaType() == Integer::MetaDataType());
}

/// A client's value class, whose type comes and goes.
struct Mark : ValueBase<Mark> {
    static std::string getTypeName() { return "tests.Mark"; }
    friend bool operator==(Mark const &, Mark const &) { return true; }
};

TEST(Registries, LeaveABoxedValueWhatItWasMadeWith) {
    std::string const name = Mark::getTypeName();
    EXPECT_FALSE(ValueObject(Mark()).isValid());
    TypeInfoRegistry::registerMetaType(name, Integer::getTypeInfo(), Integer::MetaDataType());
    ValueObject const first = Mark();
    TypeInfoRegistry::unregisterTypeInfo(name);
    EXPECT_FALSE(ValueObject(Mark()).isValid());
    EXPECT_FALSE(ValueObjectFactory::create(name, Mark()).isValid());

    TypeInfoRegistry::registerTypeInfo(name, String::getTypeInfo());
    ValueObject const second = Mark();
    TypeInfoRegistry::unregisterMetaType(name);
    TypeInfoRegistry::registerMetaType(name, String::getTypeInfo(), String::MetaDataType());
    ValueObject const third = ValueObjectFactory::create(name, Mark());
    TypeInfoRegistry::unregisterMetaType(name);
    EXPECT_FALSE(Object(Mark()).isValid());

    EXPECT_TRUE(first.getTypeInfo() == Integer::getTypeInfo());
    EXPECT_TRUE(first.getMetaDataType() == Integer::MetaDataType());
    EXPECT_TRUE(second.getTypeInfo() == String::getTypeInfo());
    EXPECT_TRUE(second.getMetaDataType() == Integer::MetaDataType()) << "it stayed when the type info went";
    EXPECT_TRUE(third.getMetaDataType() == String::MetaDataType());
}

} // namespace
} // namespace ZEL::tests
