#include <hasp_util/GList.h>

#include <gtest/gtest.h>

#include <vector>

namespace {

using List = HASP::GList<int>;

std::vector<int> elements(List const & list) { return {list.begin(), list.end()}; }

TEST(GList, ChangesInEveryPlace) {
    List list;
    list.append(2);
    list.prepend(1);
    list.insert(1, 5);
    list.insert(3, 9);
    EXPECT_EQ(elements(list), (std::vector{1, 5, 2, 9}));
    list.erase(1);
    list.set(0, 7);
    EXPECT_EQ(elements(list), (std::vector{7, 2, 9}));
    list.clear();
    EXPECT_TRUE(list.empty());
    EXPECT_EQ(elements(list), std::vector<int>{});
}

TEST(GList, ACopySharesUntilOneOfBothChanges) {
    List const original{1, 2};
    List copy = original;
    EXPECT_TRUE(copy.isSharedWith(original));
    EXPECT_EQ(copy.begin(), original.begin());
    copy.append(3);
    EXPECT_FALSE(copy.isSharedWith(original));
    EXPECT_EQ(elements(original), (std::vector{1, 2}));
    EXPECT_EQ(elements(copy), (std::vector{1, 2, 3}));
}

TEST(GList, AListOfItsOwnDoesNotMoveWhenDetached) {
    List list{1};
    int const * const before = list.begin();
    list.detach();
    EXPECT_EQ(list.begin(), before);
}

TEST(GList, EqualityIsThatOfElements) {
    EXPECT_EQ(List({1, 2}), List({1, 2}));
    EXPECT_NE(List({1, 2}), List({2, 1}));
    List emptied{1};
    emptied.erase(0);
    EXPECT_EQ(emptied, List());
}

} // namespace
