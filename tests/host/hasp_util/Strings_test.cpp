#include <hasp_util/StringID.h>
#include <hasp_util/StringTokenizer.h>
#include <hasp_util/UUID.h>

#include <gmock/gmock.h>

#include <set>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::MatchesRegex;

std::vector<std::string> tokens(HASP::StringTokenizer tokenizer) {
    std::vector<std::string> result;
    while (tokenizer.hasMoreTokens()) {
        result.emplace_back(tokenizer.nextToken());
    }
    return result;
}

TEST(StringTokenizer, GivesNoEmptyTokens) {
    EXPECT_THAT(tokens(HASP::StringTokenizer("  _a1 \t_a2\n_a3 ")), ElementsAre("_a1", "_a2", "_a3"));
    EXPECT_THAT(tokens(HASP::StringTokenizer("one")), ElementsAre("one"));
    EXPECT_THAT(tokens(HASP::StringTokenizer(" ")), ElementsAre());
    EXPECT_THAT(tokens(HASP::StringTokenizer("")), ElementsAre());
    EXPECT_THAT(tokens(HASP::StringTokenizer(",a b,;c", ",;")), ElementsAre("a b", "c"));
}

TEST(StringTokenizer, RaisesBehindTheLastToken) {
    HASP::StringTokenizer tokenizer("a");
    EXPECT_EQ(tokenizer.nextToken(), "a");
    EXPECT_THROW((void)tokenizer.nextToken(), std::out_of_range);
}

TEST(StringID, EqualTextsAreOneId) {
    std::string const name = "fName";
    EXPECT_EQ(HASP::StringID("fName"), HASP::StringID(name));
    EXPECT_NE(HASP::StringID("fName"), HASP::StringID("fValue"));
    EXPECT_EQ(HASP::StringID(), HASP::StringID(""));
    EXPECT_EQ(HASP::StringID("fName").toString(), "fName");
}

TEST(UUID, IsFreshAndOfVersionFour) {
    std::set<std::string> seen;
    for (int i = 0; i < 1000; ++i) {
        std::string const id = HASP::UUID::createUuidAsString();
        ASSERT_EQ(id.size(), 36u);
        ASSERT_THAT(id, MatchesRegex("[0-9a-f]+-[0-9a-f]+-4[0-9a-f]+-[89ab][0-9a-f]+-[0-9a-f]+"));
        ASSERT_TRUE(seen.insert(id).second);
    }
}

} // namespace
