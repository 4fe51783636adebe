#include <hasp_util/GList.h>

#include <gmock/gmock.h>

namespace HASP::tests {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using List = GList<int>;

TEST(GList, ChangesInEveryPlace) {
    List list;
    list.append(2);
    list.prepend(1);
    list.insert(1, 5);
    list.insert(3, 9);
    EXPECT_THAT(list, ElementsAre(1, 5, 2, 9));
    list.erase(1);
    list.set(0, 7);
    EXPECT_THAT(list, ElementsAre(7, 2, 9));
    list.clear();
    EXPECT_THAT(list, IsEmpty());
}

TEST(GList, ACopySharesUntilOneOfBothChanges) {
    List const original{1, 2};
    List copy = original;
    EXPECT_EQ(copy.begin(), original.begin());
    copy.append(3);
    EXPECT_FALSE(copy.isSharedWith(original));
    EXPECT_THAT(original, ElementsAre(1, 2));
    EXPECT_THAT(copy, ElementsAre(1, 2, 3));
    int const * const before = copy.begin();
    copy.detach();
    EXPECT_EQ(copy.begin(), before) << "it is on its own already";
}

TEST(GList, EqualityIsThatOfElements) {
    EXPECT_EQ(List({1, 2}), List({1, 2}));
    EXPECT_NE(List({1, 2}), List({2, 1}));
    List emptied{1};
    emptied.erase(0);
    EXPECT_EQ(emptied, List());
}

} // namespace
} // namespace HASP::tests
