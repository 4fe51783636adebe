#include "support/ValueTypes.h"

#include <ZEL/IntegerTypeInfo.h>
#include <ZEL/IteratorType.h>
#include <ZEL/TypeInfoRegistry.h>
#include <ZEL/metamodel/DataType.h>
#include <ZEL/metamodel/Type.h>

#include <gtest/gtest.h>

namespace ZEL {
namespace {

using Test::raisedText;

constexpr char internalError[] = "An Internal Error has occurred";
constexpr char name[] = "Test.Number";

class TypeInfoRegistryTest : public testing::Test {
protected:
    ~TypeInfoRegistryTest() override { TypeInfoRegistry::unregisterMetaType(name); }
    HASP::TypeInfo const info = IntegerTypeInfo::Create();
};

TEST_F(TypeInfoRegistryTest, KnowsWhatIsRegisteredUntilItIsUnregistered) {
    EXPECT_FALSE(TypeInfoRegistry::hasType(name));
    EXPECT_EQ(internalError, raisedText([] { (void)TypeInfoRegistry::getTypeInfo(name); }));
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());

    TypeInfoRegistry::registerTypeInfo(name, info);
    EXPECT_TRUE(TypeInfoRegistry::hasType(name));
    EXPECT_TRUE(TypeInfoRegistry::getTypeInfo(name) == info);
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());

    TypeInfoRegistry::unregisterTypeInfo(name);
    TypeInfoRegistry::unregisterTypeInfo(name);
    EXPECT_FALSE(TypeInfoRegistry::hasType(name));
}

TEST_F(TypeInfoRegistryTest, RefusesANameTwice) {
    TypeInfoRegistry::registerTypeInfo(name, info);
    EXPECT_EQ(internalError, raisedText([] { TypeInfoRegistry::registerTypeInfo(name, IntegerTypeInfo::Create()); }));
    EXPECT_TRUE(TypeInfoRegistry::getTypeInfo(name) == info) << "the first stays";
}

TEST_F(TypeInfoRegistryTest, RefusesAnInvalidMetaTypeAfterTheNameIsTaken) {
    EXPECT_EQ(internalError, raisedText([&] { TypeInfoRegistry::registerMetaType(name, info, ImmutableDataType()); }));
    EXPECT_TRUE(TypeInfoRegistry::hasType(name));
    EXPECT_FALSE(TypeInfoRegistry::getMetaType(name).isValid());
}

TEST_F(TypeInfoRegistryTest, CollectionTypesKeepTheirElementType) {
    HASP::TypeInfo const iterator = IteratorType::Create(Type());
    ASSERT_TRUE(IteratorType::Is(iterator));
    EXPECT_FALSE(IteratorType::GetType(iterator)->getElementType().isValid());
}

} // namespace
} // namespace ZEL
