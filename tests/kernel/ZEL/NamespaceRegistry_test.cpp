#include <ZEL/NamespaceRegistry.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

namespace ZEL {
namespace {

TEST(NamespaceRegistry, PairsUrisWithPrefixes) {
    NamespaceRegistry & registry = *NamespaceRegistry::instance();
    EXPECT_EQ(&registry, NamespaceRegistry::instance());
    EXPECT_EQ("", registry.getPrefixFromMetaUri("test:b"));
    EXPECT_EQ("", registry.getMetaUri("tst"));

    registry.bindMetaUriToPrefix("test:b", "old");
    registry.bindMetaUriToPrefix("test:b", "tst");
    registry.bindMetaUriToPrefix("test:a", "tst");
    EXPECT_EQ("tst", registry.getPrefixFromMetaUri("test:b"));
    EXPECT_EQ("", registry.getMetaUri("old"));
    EXPECT_EQ("test:a", registry.getMetaUri("tst")) << "the smaller of two";
    auto const mappings = registry.getMetaUriMappings();
    EXPECT_TRUE(std::is_sorted(mappings.begin(), mappings.end()));
    EXPECT_EQ(1, std::count(mappings.begin(), mappings.end(), std::pair<std::string, std::string>("test:b", "tst")));

    registry.unbindPrefixMetaUri("test:a");
    registry.unbindPrefixMetaUri("test:a");
    EXPECT_EQ("test:b", registry.getMetaUri("tst"));
    registry.unbindPrefixMetaUri("test:b");
    EXPECT_EQ("", registry.getPrefixFromMetaUri("test:b"));
}

} // namespace
} // namespace ZEL
