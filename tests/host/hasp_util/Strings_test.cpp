#include <hasp_util/StringID.h>
#include <hasp_util/StringTokenizer.h>
#include <hasp_util/UUID.h>

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace HASP::tests {
namespace {

std::vector<std::string_view> tokens(StringTokenizer tokenizer) {
    std::vector<std::string_view> result;
    while (tokenizer.hasMoreTokens()) {
        result.push_back(tokenizer.nextToken());
    }
    EXPECT_THROW((void)tokenizer.nextToken(), std::out_of_range);
    return result;
}

TEST(StringTokenizer, GivesNoEmptyTokens) {
    using testing::ElementsAre;
    EXPECT_THAT(tokens(StringTokenizer("  _a1 \t_a2\n_a3 ")), ElementsAre("_a1", "_a2", "_a3"));
    EXPECT_THAT(tokens(StringTokenizer("one")), ElementsAre("one"));
    EXPECT_THAT(tokens(StringTokenizer(" ")), ElementsAre());
    EXPECT_THAT(tokens(StringTokenizer("")), ElementsAre());
    EXPECT_THAT(tokens(StringTokenizer(",a b,;c", ",;")), ElementsAre("a b", "c"));
}

TEST(StringID, EqualTextsAreOneId) {
    EXPECT_EQ(StringID("fName"), StringID(std::string("fName")));
    EXPECT_NE(StringID("fName"), StringID("fValue"));
    EXPECT_EQ(StringID(), StringID(""));
    EXPECT_EQ(StringID("fName").toString(), "fName");
}

TEST(UUID, IsFreshAndOfVersionFour) {
    std::string const id = UUID::createUuidAsString();
    EXPECT_EQ(id.size(), 36u);
    EXPECT_THAT(id, testing::MatchesRegex("[0-9a-f]+-[0-9a-f]+-4[0-9a-f]+-[89ab][0-9a-f]+-[0-9a-f]+"));
    EXPECT_NE(id, UUID::createUuidAsString());
}

} // namespace
} // namespace HASP::tests
