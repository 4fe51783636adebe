#include "family/Names.h"

#include <gtest/gtest.h>

#include <utility>

namespace zelgen::tests {
namespace {

TEST(Names, PluralsFollowTheEndOfTheWord) {
    std::pair<char const *, char const *> const rows[] = {
        {"OwnedComment", "OwnedComments"},
        {"RedefinedProperty", "RedefinedProperties"},
        {"Body", "Bodies"},
        {"SuperClass", "SuperClasses"},
        {"Alias", "Aliass"},
        {"ContaineeZEL", "ContaineeZELs"},
        {"Unparented", "Unparented"},
        {"Uri", "Uris"},
    };
    for (auto const & [singular, plural] : rows) {
        EXPECT_EQ(Names::plural(singular), plural);
    }
}

TEST(Names, OnlyAWordAfterIsMakesAFlag) {
    EXPECT_TRUE(Names::readsAsFlag("isReadOnly"));
    EXPECT_TRUE(Names::readsAsFlag("isID"));
    EXPECT_FALSE(Names::readsAsFlag("issue"));
    EXPECT_FALSE(Names::readsAsFlag("is"));
    EXPECT_FALSE(Names::readsAsFlag("booleanIsOrdered"));
}

TEST(Names, FieldsAndEnumeratorsAreNeverWordsOfTheLanguage) {
    EXPECT_EQ(Names::field("default"), "default_");
    EXPECT_EQ(Names::field("namespace"), "namespace_");
    EXPECT_EQ(Names::field("char8_t"), "char8_t_");
    EXPECT_EQ(Names::field("body"), "body");
    EXPECT_EQ(Names::enumerator("return"), "Return");
    EXPECT_EQ(Names::enumerator("in-out"), "In_out");
    EXPECT_EQ(Names::enumerator("3d"), "_3d");
}

TEST(Names, TheFunctionOfAConstraintIsNamedAfterItsWords) {
    EXPECT_EQ(Names::satisfies("lower_ge_0"), "satisfiesLowerGe0");
    EXPECT_EQ(Names::satisfies("_isFlat__"), "satisfiesIsFlat");
}

} // namespace
} // namespace zelgen::tests
