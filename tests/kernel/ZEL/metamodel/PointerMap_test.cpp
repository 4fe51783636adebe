#include <ZEL/metamodel/PointerMap.h>

#include <gtest/gtest.h>

namespace ZEL::tests {
namespace {

using internal::PointerMap;

TEST(PointerMap, KeepsTheFirstValueOfEachPointerInOrderWhereverItLies) {
    // Side by side, and all at the same place of their pages.
    for (std::size_t const stride : {8U, 64U, 4096U, 65536U}) {
        constexpr int kCount = 500;
        std::vector<char> const memory(stride * kCount);
        PointerMap<int> map;
        EXPECT_EQ(nullptr, map.find(memory.data()));
        for (int i = 0; i < kCount; ++i) {
            char const * const pointer = memory.data() + static_cast<std::size_t>(i) * stride;
            EXPECT_EQ(nullptr, map.find(pointer));
            EXPECT_TRUE(map.add(pointer, i));
            EXPECT_FALSE(map.add(pointer, -1));
        }
        ASSERT_EQ(static_cast<std::size_t>(kCount), map.entries().size());
        for (int i = 0; i < kCount; ++i) {
            void const * const pointer = memory.data() + static_cast<std::size_t>(i) * stride;
            ASSERT_NE(nullptr, map.find(pointer));
            EXPECT_EQ(i, *map.find(pointer));
            EXPECT_EQ(pointer, map.entries()[static_cast<std::size_t>(i)].pointer);
        }
    }
}

} // namespace
} // namespace ZEL::tests
