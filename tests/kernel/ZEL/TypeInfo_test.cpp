#include "support/ValueTypes.h"

#include <ZEL/ArgumentTypeInfo.h>
#include <ZEL/BooleanTypeInfo.h>
#include <ZEL/DoubleTypeInfo.h>
#include <ZEL/IntegerTypeInfo.h>
#include <ZEL/PropertyStorageType.h>
#include <ZEL/RealTypeInfo.h>
#include <ZEL/SequenceType.h>
#include <ZEL/SingleTypeInfo.h>
#include <ZEL/StringTypeInfo.h>
#include <ZEL/UnlimitedNaturalTypeInfo.h>

#include <hasp_util/ErrorHolder.h>

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace ZEL {
namespace {

using Test::raisedText;

struct Row {
    char const * text;
    char const * printed; ///< null where the text is no value
};

struct TypeRows {
    char const * name;
    HASP::TypeInfo info;
    std::vector<Row> rows;
    char const * nativeType;
    char const * file;
    int line;
};

std::vector<TypeRows> const & types() {
    static std::vector<TypeRows> const all{
        {"Boolean",
         BooleanTypeInfo::Create(),
         {{"true", "true"}, {"false", "false"}, {"1", nullptr}, {"True", nullptr}, {" true", nullptr}, {"", nullptr}},
         "bool",
         "kernel/ZEL/Boolean",
         32},
        {"Integer",
         IntegerTypeInfo::Create(),
         {{"12abc", "12"}, {" -7", "-7"}, {"2147483648", nullptr}, {"x", nullptr}, {"", nullptr}},
         "INT32_T",
         "kernel/ZEL/Integer",
         33},
        {"UnlimitedNatural",
         UnlimitedNaturalTypeInfo::Create(),
         {{"*", "*"},
          {"-1", "*"},
          {"4294967295", "*"},
          {"4294967294", "4294967294"},
          {"5x", "5"},
          {"*1", nullptr},
          {"", nullptr}},
         "UINT32_T",
         "kernel/ZEL/UnlimitedNatural",
         34},
        {"Double",
         DoubleTypeInfo::Create(),
         {{"0.33333333", "0.333333"}, {"1e3x", "1000"}, {"x", nullptr}},
         "double",
         "kernel/ZEL/Double",
         33},
        {"Real",
         RealTypeInfo::Create(),
         {{"-1234567", "-1.23457e+06"}, {"", nullptr}},
         "double",
         "kernel/ZEL/Real",
         31},
        {"Single", SingleTypeInfo::Create(), {{"0.1", "0.1"}, {"1e39", nullptr}}, "float", "kernel/ZEL/Single", 31},
        {"String", StringTypeInfo::Create(), {{" any text ", " any text "}, {"", ""}}, "", "", 0},
    };
    return all;
}

TEST(TypeInfo, ReadsPrintsAndTellsWhatItCannotRead) {
    for (TypeRows const & type : types()) {
        for (Row const & row : type.rows) {
            SCOPED_TRACE(std::string(type.name) + " '" + row.text + "'");
            HASP::ErrorHolder errors;
            HASP::any const value = type.info.convertFromString(row.text, errors);
            if (row.printed != nullptr) {
                ASSERT_FALSE(errors.hasError()) << errors.getMessage();
                EXPECT_EQ(row.printed, type.info.convertToString(value));
                continue;
            }
            EXPECT_TRUE(value.empty());
            ASSERT_TRUE(errors.hasError());
            EXPECT_EQ(std::string("Can't convert string '") + row.text + "' to " + type.nativeType,
                      errors.getMessage());
            EXPECT_EQ(type.file, errors.getError()->getLocation().getFile());
            EXPECT_EQ(type.line, errors.getError()->getLocation().getLine());
        }
    }
}

TEST(TypeInfo, RaisesWhenTheHolderHasAnErrorAlready) {
    std::vector<HASP::TypeInfo> infos{ArgumentTypeInfo::Create(), PropertyStorageType::Create()};
    for (TypeRows const & type : types()) {
        infos.push_back(type.info);
    }
    for (HASP::TypeInfo const & info : infos) {
        HASP::ErrorHolder errors;
        errors.setError({"first", HASP::CodeLocation("file", 1)});
        EXPECT_EQ("An Internal Error has occurred", raisedText([&] { (void)info.convertFromString("true", errors); }));
        EXPECT_EQ("first", errors.getMessage());
    }
}

TEST(TypeInfo, MakesDefaultValuesAndRefusesThoseOfOtherTypes) {
    for (TypeRows const & type : types()) {
        HASP::any const value = type.info.defaultConstruct();
        EXPECT_TRUE(type.info.isValid(value)) << type.name;
        EXPECT_THROW((void)type.info.convertToString(HASP::any('c')), HASP::bad_any_cast) << type.name;
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

TEST(TypeInfo, OfASequenceConvertsNothing) {
    SequenceType const type{ImmutableObject()};
    HASP::ErrorHolder errors;
    EXPECT_EQ("Not Implemented yet", raisedText([&] { (void)type.convertFromString("", errors); }));
    EXPECT_EQ("Not Implemented yet", raisedText([&] { (void)type.convertToString(HASP::any()); }));
    EXPECT_EQ("Not Implemented yet", raisedText([&] { (void)type.defaultConstruct(); }));
}

} // namespace
} // namespace ZEL
