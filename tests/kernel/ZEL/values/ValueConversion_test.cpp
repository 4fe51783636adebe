#include "support/ValueTypes.h"

#include <limits>
#include <locale>
#include <tuple>
#include <type_traits>
#include <unordered_set>

namespace ZEL::tests {
namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();
UnlimitedNatural const unlimited(0xFFFFFFFFu);

template <class V> void expectZero(std::size_t size) {
    SCOPED_TRACE(V::getTypeName());
    EXPECT_EQ(size, sizeof(V));
    EXPECT_TRUE(V().isValid());
    EXPECT_EQ(0, V().getValue());
}

TEST(Value, IsAsSmallAsWhatItHoldsAndZeroOrEmptyByDefault) {
    expectZero<Boolean>(sizeof(bool));
    expectZero<Integer>(4);
    expectZero<UnlimitedNatural>(4);
    expectZero<Single>(4);
    expectZero<Real>(8);
    expectZero<Double>(8);
    expectZero<VisibilityKind>(4);
    EXPECT_TRUE(String().isValid() && String().empty());
}

TEST(Value, ConvertsToOtherNumbers) {
    EXPECT_EQ(1, Integer(Boolean(true)).getValue());
    EXPECT_EQ(1.0, Double(Boolean(true)).getValue());
    EXPECT_TRUE(Boolean(Integer(-3)).getValue());
    EXPECT_TRUE(Boolean(VisibilityKind::Private).getValue());
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

TEST(Double, IsTruncatedTowardZeroAndNeverOutOfRange) {
    std::tuple<double, int, unsigned> const rows[] = {
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
        {kNaN, 0, 0},
    };
    for (auto const & [from, toInteger, toNatural] : rows) {
        EXPECT_EQ(toInteger, Integer(Double(from)).getValue()) << from;
        EXPECT_EQ(toInteger, Integer(from).getValue()) << from;
        EXPECT_EQ(toNatural, UnlimitedNatural(Double(from)).getValue()) << from;
    }
    EXPECT_TRUE(Boolean(Double(kNaN)).getValue());
}

TEST(String, PrintsNativeNumbersAsAStreamDoes) {
    std::pair<char const *, String> const rows[] = {
        {"1", String(true)},
        {"0", String(false)},
        {"-42", String(-42)},
        {"0.1", String(0.1f)},
        {"0.333333", String(1.0 / 3.0)},
        {"1e+06", String(1000000.0)},
        {"123457", String(123456.7)},
        {"1e-05", String(0.00001)},
        {"-0", String(-0.0)},
        {"3", String(3.0)},
        {"inf", String(infinite)},
        {"nan", String(kNaN)},
        {"4294967295", String(4294967295u)},
    };
    for (auto const & [expected, printed] : rows) {
        EXPECT_EQ(expected, printed);
    }
}

template <class V> std::string implicitText(V const & value) {
    String const text = value;
    return text.str();
}

template <class V> void expectTexts(V const & value, char const * converted, char const * byName) {
    EXPECT_EQ(converted, implicitText(value));
    EXPECT_EQ(converted, value.operator String());
    EXPECT_EQ(byName, String(value));
    EXPECT_EQ(byName, value.toString());
}

TEST(Value, PrintsDigitsWhenConvertedAndWordsWhenAskedByName) {
    expectTexts(Boolean(true), "1", "true");
    expectTexts(Boolean(), "0", "false");
    expectTexts(unlimited, "4294967295", "*");
    expectTexts(UnlimitedNatural(0xFFFFFFFEu), "4294967294", "4294967294");
    expectTexts(Integer(-2147483647 - 1), "-2147483648", "-2147483648");
    expectTexts(Double(1.0 / 3.0), "0.333333", "0.333333");
    expectTexts(Real(1e20), "1e+20", "1e+20");
    expectTexts(Single(1.0f / 3.0f), "0.333333", "0.333333");
    EXPECT_EQ("text", String("text").toString());
}

using Texts = std::vector<std::string>;

/// What the texts read as, in plain text; for one that cannot be read, the text of the exception.
template <class V> Texts readAs(Texts const & texts) {
    Texts result;
    for (std::string const & text : texts) {
        std::string const raised = raisedText([&] { result.push_back(implicitText(V(String(text)))); });
        if (raised != "(nothing)") {
            result.push_back(raised);
        }
    }
    return result;
}

template <class V> void expectRefusals(char const * nativeType, Texts const & texts) {
    std::string const refusal = std::string("Unable to convert from string to ") + nativeType + "!";
    EXPECT_EQ(Texts(texts.size(), refusal), readAs<V>(texts));
}

template <class V> void expectFloatingReadings(char const * nativeType) {
    EXPECT_EQ((Texts{"1.5", "-2500", "0.5", "5", "1.2"}), readAs<V>({"1.5", " -2.5e3x", ".5", "5.", "1.2.3"}));
    expectRefusals<V>(nativeType, {"", "x", "nan", "inf", "1e", "e5", "1e999"});
}

TEST(Value, ReadsTextAsAStreamDoes) {
    EXPECT_EQ((Texts{"1", "0", "1", "1"}), readAs<Boolean>({"1", " 0", "1x", "+1"}));
    expectRefusals<Boolean>("bool", {"2", "-1", "true", ""});
    EXPECT_EQ((Texts{"12", "-12", "7", "0", "3", "7", "2147483647", "-2147483648"}),
              readAs<Integer>({"12", "\t\n -12abc", "+7", "0x10", "3.9", "007", "2147483647", "-2147483648"}));
    expectRefusals<Integer>("INT32_T", {"2147483648", "99999999999999999999999", "", "  ", "-", "+-1", "- 1", "abc"});
    EXPECT_EQ((Texts{"12", "4294967295", "4294967295", "4294967291"}),
              readAs<UnlimitedNatural>({"12", "4294967295", "-1", "-5"}));
    expectRefusals<UnlimitedNatural>("UINT32_T", {"4294967296", "*", ""});
    expectFloatingReadings<Double>("double");
    expectFloatingReadings<Real>("double");
    expectFloatingReadings<Single>("float");
    expectRefusals<Single>("float", {"1e39"}); // too great for a float
    EXPECT_EQ((Texts{"1e+39"}), readAs<Double>({"1e39"}));
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
} // namespace ZEL::tests
