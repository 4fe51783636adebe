#include "support/ValueTypes.h"

#include <cstdint>
#include <limits>

namespace ZEL::tests {
namespace {

/// The outcome of all six operators, and of `==` and `<` with the sides exchanged: "<", "=", ">" or "none"; anything
/// inconsistent is "?".
template <class L, class R> std::string compared(L const & left, R const & right) {
    bool const equal = left == right;
    bool const less = left < right;
    bool const greater = left > right;
    bool const consistent = (left != right) == !equal && (left <= right) == (less || equal) &&
                            (left >= right) == (greater || equal) && (right == left) == equal &&
                            (right > left) == less && (right < left) == greater;
    int const outcomes = equal + less + greater;
    if (!consistent || outcomes > 1) {
        return "?";
    }
    return equal ? "=" : less ? "<" : greater ? ">" : "none";
}

UnlimitedNatural const unlimited(0xFFFFFFFFu);
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

TEST(ValueComparison, OfLikeValuesIsThatOfTheirNumbers) {
    EXPECT_EQ("<", compared(Boolean(false), Boolean(true)));
    EXPECT_EQ("<", compared(Boolean(false), true));
    EXPECT_EQ("=", compared(Boolean(true), true));
    EXPECT_EQ("<", compared(Integer(-1), Integer(1)));
    EXPECT_EQ("<", compared(Integer(-1), 1));
    EXPECT_EQ(">", compared(unlimited, UnlimitedNatural(1)));
    EXPECT_EQ(">", compared(Real(0.2), 0.1));
    EXPECT_EQ("<", compared(Single(0.5f), 0.75f));
    EXPECT_EQ("=", compared(Double(3.5), 3.5));
    EXPECT_EQ("none", compared(Double(kNaN), kNaN));
    EXPECT_EQ("none", compared(Real(1.0), Real(kNaN)));
}

TEST(ValueComparison, OfAnIntegerReducesTheOtherSide) {
    EXPECT_EQ("=", compared(Integer(-1), 0xFFFFFFFFu)) << "unsigned";
    EXPECT_EQ(">", compared(Integer(-1), 5u));
    EXPECT_EQ("=", compared(unlimited, -1)) << "unsigned";
    EXPECT_EQ(">", compared(unlimited, 7));
    EXPECT_EQ("=", compared(Integer(3), true)) << "not 0";
    EXPECT_EQ("<", compared(Integer(0), true));
    EXPECT_EQ("=", compared(Integer(3), 3.7)) << "truncated";
    EXPECT_EQ("=", compared(Integer(-3), -3.7));
    EXPECT_EQ("<", compared(Integer(3), 4.0));
    EXPECT_EQ("=", compared(UnlimitedNatural(3), 3.7));
    EXPECT_EQ("=", compared(UnlimitedNatural(0), -3.7)) << "nearest value";
    EXPECT_EQ("=", compared(Integer(2147483647), 1e12)) << "nearest value";
    EXPECT_EQ("=", compared(Integer(0), kNaN));
    EXPECT_EQ("<", compared(Integer(5), std::uint64_t{1} << 40));
    EXPECT_EQ(">", compared(Integer(5), std::int64_t{-1} * (std::int64_t{1} << 40)));
}

TEST(ValueComparison, OfABooleanTakesNumbersAsNotZero) {
    EXPECT_EQ("=", compared(Boolean(true), 7));
    EXPECT_EQ(">", compared(Boolean(true), 0));
    EXPECT_EQ("<", compared(Boolean(false), -1));
    EXPECT_EQ("=", compared(Boolean(true), 0.5));
    EXPECT_EQ("=", compared(Boolean(false), 0.0));
    EXPECT_EQ("=", compared(Boolean(true), kNaN));
}

TEST(ValueComparison, OfAFloatingValueReducesByTheOtherSide) {
    EXPECT_EQ("=", compared(Double(3.7), 3)) << "truncated";
    EXPECT_EQ("=", compared(Double(3.7), 3u));
    EXPECT_EQ("=", compared(Double(-3.7), -3));
    EXPECT_EQ("=", compared(Double(-3.7), 0u)) << "nearest value";
    EXPECT_EQ("=", compared(Double(0.5), true));
    EXPECT_EQ("=", compared(Double(0.1), 0.1f)) << "narrowed";
    EXPECT_EQ("=", compared(Single(0.1f), 0.1)) << "narrowed";
    EXPECT_EQ(">", compared(Real(3.7), 3)) << "as floating numbers";
}

TEST(ValueComparison, OfTwoKindsOfValueLetsTheLeftDecideAndBothAgree) {
    EXPECT_EQ("=", compared(Integer(3), Double(3.7)));
    EXPECT_EQ("=", compared(Integer(-1), unlimited));
    EXPECT_EQ("=", compared(Integer(9), Boolean(true)));
    EXPECT_EQ("=", compared(Double(0.1), Single(0.1f)));
}

} // namespace
} // namespace ZEL::tests
