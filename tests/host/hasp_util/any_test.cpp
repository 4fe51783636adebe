#include <hasp_util/any.h>

#include <gtest/gtest.h>

#include <string>

namespace HASP::tests {
namespace {

TEST(Any, CastGivesTheValueOfItsExactTypeOnly) {
    any const value = std::string("x");
    EXPECT_EQ(any_cast<std::string>(value), "x");
    EXPECT_EQ(&any_cast<std::string const &>(value), value.get<std::string>());
    EXPECT_THROW((void)any_cast<char const *>(value), bad_any_cast);
    EXPECT_THROW((void)any_cast<int>(any()), std::bad_cast);
}

TEST(Any, EqualityIsThatOfTypeAndValue) {
    struct Incomparable {};

    EXPECT_EQ(any(3), any(3));
    EXPECT_NE(any(3), any(4));
    EXPECT_NE(any(3), any(3u));
    EXPECT_EQ(any(), any());
    EXPECT_NE(any(), any(0));
    any const incomparable = Incomparable();
    EXPECT_NE(incomparable, incomparable);
}

} // namespace
} // namespace HASP::tests
