#include <hasp_util/ErrorHolder.h>
#include <hasp_util/SpecificEnumType.h>
#include <hasp_util/Type.h>
#include <hasp_util/TypeInfo.h>

#include <gtest/gtest.h>

#include <map>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace HASP::tests {
namespace {

class TextType final : public Type {
public:
    static TypeInfo Create() { return own(new TextType); }
    static TypeInfo own(Type * type) { return CreateTypeInfo(type); }

    ~TextType() override { ++gone; }

    any convertFromString(std::string const & text, ErrorHolder & errors) const override {
        if (text.empty()) {
            errors.setError({"no text", CodeLocation("Text", 7)});
            return {};
        }
        return text;
    }
    std::string convertToString(any const & value) const override { return any_cast<std::string>(value); }
    any defaultConstruct() const override { return std::string("none"); }
    TextType * clone() const override { return new TextType(*this); }

    inline static int gone = 0; ///< how many have been destroyed
};

TEST(TypeInfo, CopiesShareOneTypeObjectAndNullRaisesWhenUsed) {
    TypeInfo first = TextType::Create();
    TypeInfo const second = first;
    EXPECT_EQ(first, second);
    first = TypeInfo();
    EXPECT_NE(dynamic_cast<TextType *>(Type::GetBaseType(second)), nullptr);
    EXPECT_EQ(any_cast<std::string>(second.defaultConstruct()), "none");

    EXPECT_TRUE(first.isNull());
    EXPECT_EQ(Type::GetBaseType(first), nullptr);
    EXPECT_THROW((void)first.defaultConstruct(), std::logic_error);
}

TEST(TypeInfo, TheTypeGoesWithItsLastHandleAndACopyOfItHasItsOwn) {
    int const before = TextType::gone;
    TypeInfo first = TextType::Create();
    TypeInfo second = first;
    TypeInfo third = std::move(second);
    second = third;
    TypeInfo const & same = second;
    second = same;
    {
        TypeInfo const copy = TextType::own(Type::GetBaseType(first)->clone());
        EXPECT_NE(copy, first);
    }
    EXPECT_EQ(TextType::gone, before + 1);
    first = TypeInfo();
    third = TypeInfo();
    EXPECT_EQ(TextType::gone, before + 1);
    second = TypeInfo();
    EXPECT_EQ(TextType::gone, before + 2);
}

TEST(Type, ReportsAFailedConversionInTheHolder) {
    ErrorHolder errors;
    EXPECT_TRUE(TextType::Create().convertFromString("", errors).empty());
    ASSERT_TRUE(errors.hasError());
    EXPECT_EQ(errors.getError()->getMessage(), "no text");
    EXPECT_EQ(errors.getError()->getLocation().getFile(), "Text");
    EXPECT_EQ(errors.getError()->getLocation().getLine(), 7);
    EXPECT_THROW(errors.setError({"another", CodeLocation("Text", 8)}), std::logic_error);
}

TEST(Type, OperationsThatAreNotOverriddenRestOnTheText) {
    TextType const type;
    ErrorHolder errors;
    any const a = std::string("a");
    any const b = std::string("b");
    EXPECT_EQ(type.convertToByteArray(a), std::vector<unsigned char>{'a'});
    EXPECT_EQ(type.convertFromByteArray({'b'}, errors), b);
    EXPECT_TRUE(type.isEqualTo(a, a));
    EXPECT_TRUE(type.isLessThan(a, b));
    EXPECT_FALSE(type.isLessThan(b, a));
    EXPECT_TRUE(type.isValid(a));
    EXPECT_FALSE(type.isValid(any(1)));
    EXPECT_FALSE(type.isValid(any()));
}

class Colour {
public:
    enum Value { Red, Green, Blue };
    Colour(Value value = Red) : fValue(value) {}
    friend bool operator==(Colour left, Colour right) { return left.fValue == right.fValue; }

private:
    Value fValue;
};

using ColourType = SpecificEnumType<Colour>;

TEST(EnumType, ConvertsInBothDirectionsByATableOfEither) {
    std::map<std::string, Colour::Value> const byText{
        {"red", Colour::Red}, {"green", Colour::Green}, {"blue", Colour::Blue}};
    std::map<Colour::Value, std::string> const byNumber{
        {Colour::Red, "red"}, {Colour::Green, "green"}, {Colour::Blue, "blue"}};
    for (TypeInfo const & type : {ColourType::Create(byText), ColourType::Create(byNumber)}) {
        ErrorHolder errors;
        EXPECT_EQ(any_cast<Colour>(type.convertFromString("blue", errors)), Colour(Colour::Blue));
        EXPECT_EQ(type.convertToString(Colour(Colour::Green)), "green");
        EXPECT_EQ(any_cast<Colour>(type.defaultConstruct()), Colour(Colour::Red));
        // By number, where the texts would say the opposite.
        EXPECT_TRUE(type.isLessThan(Colour(Colour::Red), Colour(Colour::Blue)));
        EXPECT_FALSE(errors.hasError());
        EXPECT_TRUE(type.convertFromString("Blue", errors).empty());
        EXPECT_TRUE(errors.hasError());
        EXPECT_THROW((void)type.convertFromString("blue", errors), std::logic_error);
        EXPECT_THROW((void)type.convertToString(any(1)), bad_any_cast);
    }
}

} // namespace
} // namespace HASP::tests
