#include "support/ValueTypes.h"

#include <ZEL/metamodel/PropertyStorageType.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/IteratorType.h>
#include <ZEL/sequences/SequenceType.h>
#include <ZEL/values/ValueTypeInfo.h>

#include <hasp_util/ErrorHolder.h>

#include <memory>

namespace ZEL::tests {
namespace {

using Texts = std::vector<std::string>;

/// What the texts are printed as when they have been read.
Texts readAs(HASP::TypeInfo const & info, Texts const & texts) {
    Texts result;
    for (std::string const & text : texts) {
        HASP::ErrorHolder errors;
        HASP::any const value = info.convertFromString(text, errors);
        result.push_back(errors.hasError() ? errors.getMessage() : info.convertToString(value));
    }
    return result;
}

void expectRefusals(HASP::TypeInfo const & info, Texts const & texts, std::string const & nativeType, char const * file,
                    int line) {
    for (std::string const & text : texts) {
        HASP::ErrorHolder errors;
        EXPECT_TRUE(info.convertFromString(text, errors).empty()) << text;
        ASSERT_TRUE(errors.hasError()) << text;
        EXPECT_EQ("Can't convert string '" + text + "' to " + nativeType, errors.getMessage());
        EXPECT_EQ(file, errors.getError()->getLocation().getFile());
        EXPECT_EQ(line, errors.getError()->getLocation().getLine());
    }
}

TEST(TypeInfo, ReadsPrintsAndTellsWhatItCannotRead) {
    auto const boolean = BooleanTypeInfo::Create();
    EXPECT_EQ((Texts{"true", "false"}), readAs(boolean, {"true", "false"}));
    expectRefusals(boolean, {"1", "True", " true", ""}, "bool", "kernel/ZEL/Boolean", 32);
    auto const integer = IntegerTypeInfo::Create();
    EXPECT_EQ((Texts{"12", "-7"}), readAs(integer, {"12abc", " -7"}));
    expectRefusals(integer, {"2147483648", "x", ""}, "INT32_T", "kernel/ZEL/Integer", 33);
    auto const natural = UnlimitedNaturalTypeInfo::Create();
    EXPECT_EQ((Texts{"*", "*", "*", "4294967294", "5"}),
              readAs(natural, {"*", "-1", "4294967295", "4294967294", "5x"}));
    expectRefusals(natural, {"*1", ""}, "UINT32_T", "kernel/ZEL/UnlimitedNatural", 34);
    EXPECT_EQ((Texts{"0.333333", "1000"}), readAs(DoubleTypeInfo::Create(), {"0.33333333", "1e3x"}));
    expectRefusals(DoubleTypeInfo::Create(), {"x"}, "double", "kernel/ZEL/Double", 33);
    EXPECT_EQ((Texts{"-1.23457e+06"}), readAs(RealTypeInfo::Create(), {"-1234567"}));
    expectRefusals(RealTypeInfo::Create(), {""}, "double", "kernel/ZEL/Real", 31);
    EXPECT_EQ((Texts{"0.1"}), readAs(SingleTypeInfo::Create(), {"0.1"}));
    expectRefusals(SingleTypeInfo::Create(), {"1e39"}, "float", "kernel/ZEL/Single", 31);
    EXPECT_EQ((Texts{" any text ", ""}), readAs(StringTypeInfo::Create(), {" any text ", ""}));
}

TEST(TypeInfo, MakesDefaultValuesAndRaisesForOtherTypesAndForAHolderWithAnError) {
    HASP::TypeInfo const all[] = {
        BooleanTypeInfo::Create(), IntegerTypeInfo::Create(),  UnlimitedNaturalTypeInfo::Create(),
        DoubleTypeInfo::Create(),  RealTypeInfo::Create(),     SingleTypeInfo::Create(),
        StringTypeInfo::Create(),  ArgumentTypeInfo::Create(), PropertyStorageType::Create()};
    for (HASP::TypeInfo const & info : all) {
        SCOPED_TRACE(&info - all);
        EXPECT_TRUE(info.isValid(info.defaultConstruct()));
        EXPECT_THROW((void)info.convertToString(HASP::any('c')), HASP::bad_any_cast);
        HASP::ErrorHolder errors;
        errors.setError({"first", HASP::CodeLocation("file", 1)});
        EXPECT_RAISES(kInternalError, info.convertFromString("true", errors));
        EXPECT_EQ("first", errors.getMessage());
    }
    EXPECT_TRUE(HASP::any_cast<Double>(DoubleTypeInfo::Create().defaultConstruct()) == 0.0);
    EXPECT_TRUE(HASP::any_cast<Argument>(ArgumentTypeInfo::Create().defaultConstruct()) == Argument());
}

TEST(TypeInfo, IsToldFromOthersByClass) {
    HASP::TypeInfo const integer = IntegerTypeInfo::Create();
    EXPECT_TRUE(IntegerTypeInfo::Is(integer));
    EXPECT_FALSE(RealTypeInfo::Is(integer));
    EXPECT_FALSE(IntegerTypeInfo::Is(HASP::TypeInfo()));
    ASSERT_NE(nullptr, IntegerTypeInfo::GetType(integer));
    EXPECT_EQ(nullptr, RealTypeInfo::GetType(integer));
    std::unique_ptr<IntegerTypeInfo> const copy(IntegerTypeInfo::GetType(integer)->clone());
    EXPECT_TRUE(IntegerTypeInfo::Is(copy.get()));
}

TEST(TypeInfo, OfAPropertyStorageKnowsTheNullHandleOnly) {
    HASP::TypeInfo const info = PropertyStorageType::Create();
    HASP::ErrorHolder errors;
    EXPECT_EQ("", info.convertToString(info.convertFromString("anything", errors)));
    EXPECT_FALSE(errors.hasError());
    EXPECT_EQ("", info.convertToString(info.defaultConstruct()));
}

TEST(TypeInfo, OfACollectionKeepsItsElementTypeAndConvertsNothing) {
    HASP::TypeInfo const iterator = IteratorType::Create(Type());
    ASSERT_TRUE(IteratorType::Is(iterator));
    EXPECT_FALSE(IteratorType::GetType(iterator)->getElementType().isValid());
    SequenceType const type{ImmutableObject()};
    HASP::ErrorHolder errors;
    EXPECT_RAISES("Not Implemented yet", type.convertFromString("", errors));
    EXPECT_RAISES("Not Implemented yet", type.convertToString(HASP::any()));
    EXPECT_RAISES("Not Implemented yet", type.defaultConstruct());
}

} // namespace
} // namespace ZEL::tests
