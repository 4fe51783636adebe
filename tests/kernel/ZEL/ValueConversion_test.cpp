#include "support/ValueTypes.h"

#include <ZEL/Exception.h>

#include <gtest/gtest.h>

#include <limits>
#include <locale>
#include <string>
#include <type_traits>
#include <unordered_set>
#include <vector>

namespace ZEL {
namespace {

using Test::raisedText;

constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
UnlimitedNatural const unlimited(0xFFFFFFFFu);

TEST(Value, IsAsSmallAsWhatItHolds) {
    EXPECT_EQ(sizeof(bool), sizeof(Boolean));
    EXPECT_EQ(4u, sizeof(Integer));
    EXPECT_EQ(4u, sizeof(UnlimitedNatural));
    EXPECT_EQ(4u, sizeof(Single));
    EXPECT_EQ(8u, sizeof(Real));
    EXPECT_EQ(8u, sizeof(Double));
    EXPECT_EQ(4u, sizeof(VisibilityKind));
}

TEST(Value, IsZeroOrEmptyByDefaultAndAlwaysValid) {
    EXPECT_FALSE(Boolean().getValue());
    EXPECT_EQ(0, Integer().getValue());
    EXPECT_EQ(0u, UnlimitedNatural().getValue());
    EXPECT_EQ(0.0, Real().getValue());
    EXPECT_EQ(0.0f, Single().getValue());
    EXPECT_EQ(0.0, Double().getValue());
    EXPECT_EQ("", String().str());
    EXPECT_TRUE(Integer().isValid() && String().isValid() && VisibilityKind().isValid());
}

TEST(Value, NamesItsType) {
    EXPECT_EQ("ZEL.Boolean", Boolean::getTypeName());
    EXPECT_EQ("ZEL.Integer", Integer::getTypeName());
    EXPECT_EQ("ZEL.UnlimitedNatural", UnlimitedNatural::getTypeName());
    EXPECT_EQ("ZEL.Real", Real::getTypeName());
    EXPECT_EQ("ZEL.Single", Single::getTypeName());
    EXPECT_EQ("ZEL.Double", Double::getTypeName());
    EXPECT_EQ("ZEL.String", String::getTypeName());
    EXPECT_EQ("ZEL.Argument", Argument::getTypeName());
}

TEST(Value, ConvertsToOtherNumbers) {
    EXPECT_EQ(1, Integer(Boolean(true)).getValue());
    EXPECT_EQ(1.0, Double(Boolean(true)).getValue());
    EXPECT_TRUE(Boolean(Integer(-3)).getValue());
    EXPECT_FALSE(Boolean(Integer(0)).getValue());
    EXPECT_TRUE(Boolean(Double(0.1)).getValue());
    EXPECT_FALSE(Boolean(Double(0.0)).getValue());
    EXPECT_EQ(-7.0, Double(Integer(-7)).getValue());
    EXPECT_EQ(4294967295.0, Double(unlimited).getValue());
    EXPECT_EQ(4294967295.0, Double(4294967295u).getValue());
    EXPECT_EQ(-1, Integer(unlimited).getValue());
    EXPECT_TRUE(UnlimitedNatural(Integer(-1)).isUnlimited());
    EXPECT_EQ(0.5, Double(Single(0.5f)).getValue());
    EXPECT_EQ(0.1f, Single(Double(0.1)).getValue());
    EXPECT_EQ(0.1, Real(Double(0.1)).getValue());
    EXPECT_EQ(0.1, Double(Real(0.1)).getValue());
}

TEST(Value, ConvertsImplicitlyToItsNeighbours) {
    Integer const integer = unlimited;
    UnlimitedNatural const natural = integer;
    Double const number = Single(1.5f);
    Boolean const truth = number;
    int const native = integer;
    EXPECT_TRUE(natural.isUnlimited() && truth);
    EXPECT_EQ(-1, native);
    EXPECT_FALSE((std::is_convertible_v<char const *, Boolean>)) << "a pointer is no truth value";
    EXPECT_FALSE((std::is_constructible_v<String, void *>));
}

TEST(UnlimitedNatural, IsUnlimitedForItsGreatestValueOnly) {
    EXPECT_EQ(0xFFFFFFFFu, UnlimitedNatural::GetUnlimitedValue());
    EXPECT_TRUE(UnlimitedNatural(0xFFFFFFFFu).isUnlimited());
    EXPECT_TRUE(UnlimitedNatural(-1).isUnlimited());
    EXPECT_FALSE(UnlimitedNatural(0xFFFFFFFEu).isUnlimited());
}

struct Truncation {
    double from;
    int toInteger;
    unsigned toNatural;
};

TEST(Double, IsTruncatedTowardZeroAndNeverOutOfRange) {
    Truncation const rows[] = {
        {3.7, 3, 3},
        {-3.7, -3, 0},
        {2147483647.0, 2147483647, 2147483647u},
        {2147483648.0, 2147483647, 2147483648u},
        {-2147483648.5, -2147483647 - 1, 0},
        {-1e300, -2147483647 - 1, 0},
        {4294967295.0, 2147483647, 0xFFFFFFFFu},
        {4294967296.0 + 5, 2147483647, 5}, // the lower half of 64 bits
        {1e300, 2147483647, 0xFFFFFFFFu},
        {infinite, 2147483647, 0xFFFFFFFFu},
        {-infinite, -2147483647 - 1, 0},
        {notANumber, 0, 0},
    };
    for (Truncation const & row : rows) {
        EXPECT_EQ(row.toInteger, Integer(Double(row.from)).getValue()) << row.from;
        EXPECT_EQ(row.toInteger, Integer(row.from).getValue()) << row.from;
        EXPECT_EQ(row.toNatural, UnlimitedNatural(Double(row.from)).getValue()) << row.from;
    }
    EXPECT_TRUE(Boolean(Double(notANumber)).getValue());
}

TEST(String, PrintsNativeNumbersAsAStreamDoes) {
    EXPECT_EQ("1", String(true));
    EXPECT_EQ("0", String(false));
    EXPECT_EQ("-42", String(-42));
    EXPECT_EQ("4294967295", String(4294967295u));
    EXPECT_EQ("0.333333", String(1.0 / 3.0));
    EXPECT_EQ("0.1", String(0.1f));
    EXPECT_EQ("1e+06", String(1000000.0));
    EXPECT_EQ("123457", String(123456.7));
    EXPECT_EQ("1e-05", String(0.00001));
    EXPECT_EQ("-0", String(-0.0));
    EXPECT_EQ("3", String(3.0));
    EXPECT_EQ("inf", String(infinite));
    EXPECT_EQ("nan", String(notANumber));
}

template <class V> std::string implicitText(V const & value) {
    String const text = value;
    return text.str();
}

TEST(Value, PrintsDigitsWhenConvertedAndWordsWhenAskedByName) {
    EXPECT_EQ("1", implicitText(Boolean(true)));
    EXPECT_EQ("4294967295", implicitText(unlimited));
    EXPECT_EQ("-5", implicitText(Integer(-5)));
    EXPECT_EQ("0.333333", implicitText(Double(1.0 / 3.0)));
    EXPECT_EQ("0.333333", implicitText(Real(1.0 / 3.0)));
    EXPECT_EQ("0.333333", implicitText(Single(1.0f / 3.0f)));
    EXPECT_EQ("1", Boolean(true).operator String());

    EXPECT_EQ("true", String(Boolean(true)));
    EXPECT_EQ("*", String(unlimited));
    EXPECT_EQ("-5", String(Integer(-5)));

    EXPECT_EQ("true", Boolean(true).toString());
    EXPECT_EQ("false", Boolean().toString());
    EXPECT_EQ("*", unlimited.toString());
    EXPECT_EQ("4294967294", UnlimitedNatural(0xFFFFFFFEu).toString());
    EXPECT_EQ("-2147483648", Integer(-2147483647 - 1).toString());
    EXPECT_EQ("0.333333", Double(1.0 / 3.0).toString());
    EXPECT_EQ("1e+20", Real(1e20).toString());
    EXPECT_EQ("0.333333", Single(1.0f / 3.0f).toString());
    EXPECT_EQ("text", String("text").toString());
}

/// What a text reads as, by way of its own plain text; the text raised if it cannot be read.
template <class V> std::string readAs(char const * text) {
    try {
        V const value{String(text)};
        return implicitText(value);
    } catch (Exception const & failure) {
        return failure.GetMessageTxt();
    }
}

struct Reading {
    char const * text;
    char const * expected; ///< null where reading fails
};

template <class V> void expectReadings(std::vector<Reading> const & rows, char const * nativeType) {
    for (Reading const & row : rows) {
        std::string const failure = std::string("Unable to convert from string to ") + nativeType + "!";
        EXPECT_EQ(row.expected != nullptr ? row.expected : failure, readAs<V>(row.text)) << "'" << row.text << "'";
    }
}

TEST(Value, ReadsTextAsAStreamDoes) {
    expectReadings<Boolean>({{"1", "1"},
                             {" 0", "0"},
                             {"1x", "1"},
                             {"+1", "1"},
                             {"2", nullptr},
                             {"-1", nullptr},
                             {"true", nullptr},
                             {"", nullptr}},
                            "bool");
    expectReadings<Integer>({{"12", "12"},
                             {"\t\n -12abc", "-12"},
                             {"+7", "7"},
                             {"0x10", "0"},
                             {"3.9", "3"},
                             {"007", "7"},
                             {"2147483647", "2147483647"},
                             {"-2147483648", "-2147483648"},
                             {"2147483648", nullptr},
                             {"99999999999999999999999", nullptr},
                             {"", nullptr},
                             {"  ", nullptr},
                             {"-", nullptr},
                             {"+-1", nullptr},
                             {"- 1", nullptr},
                             {"abc", nullptr}},
                            "INT32_T");
    expectReadings<UnlimitedNatural>({{"12", "12"},
                                      {"4294967295", "4294967295"},
                                      {"-1", "4294967295"},
                                      {"-5", "4294967291"},
                                      {"4294967296", nullptr},
                                      {"*", nullptr},
                                      {"", nullptr}},
                                     "UINT32_T");
    std::vector<Reading> const floating{{"1.5", "1.5"},   {" -2.5e3x", "-2500"}, {".5", "0.5"},   {"5.", "5"},
                                        {"1.2.3", "1.2"}, {"", nullptr},         {"x", nullptr},  {"nan", nullptr},
                                        {"inf", nullptr}, {"1e", nullptr},       {"e5", nullptr}, {"1e999", nullptr}};
    expectReadings<Double>(floating, "double");
    expectReadings<Real>(floating, "double");
    expectReadings<Single>(floating, "float");
    EXPECT_EQ("Unable to convert from string to float!", readAs<Single>("1e39")) << "too great for a float";
    EXPECT_EQ("1e+39", readAs<Double>("1e39"));
}

TEST(Value, TextDoesNotDependOnTheLocaleOfTheProcess) {
    struct Comma : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
        char do_thousands_sep() const override { return '.'; }
    };
    std::locale const former = std::locale::global(std::locale(std::locale::classic(), new Comma));
    std::string const printed = String(12345.5).str() + " " + Integer(1234567).toString().str();
    double const read = Double(String("1.5")).getValue();
    std::locale::global(former);
    EXPECT_EQ("12345.5 1234567", printed);
    EXPECT_EQ(1.5, read);
}

TEST(String, IsMadeOfAndComparesWithPlainTexts) {
    char const * const null = nullptr;
    EXPECT_TRUE(String(null).empty());
    EXPECT_EQ(3u, String("abc").size());
    EXPECT_STREQ("abc", String(std::string_view("abcdef").substr(0, 3)).c_str());
    std::string const copied = String(std::string("a\0b", 3));
    EXPECT_EQ(std::string("a\0b", 3), copied);

    String const text("m");
    EXPECT_TRUE(text == std::string("m") && std::string("m") == text && text == "m" && text != "n");
    EXPECT_TRUE(text < std::string("n") && text > std::string("l") && text <= "m" && text >= String("m"));
    EXPECT_TRUE(std::string("l") < text && "n" > text);
    EXPECT_TRUE(std::unordered_set<String>({"a", "m"}).count(text) == 1);
}

} // namespace
} // namespace ZEL
