#include <hasp_util/StringID.h>
#include <hasp_util/StringTokenizer.h>
#include <hasp_util/UUID.h>

#include <gmock/gmock.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

std::vector<std::string_view> tokens(HASP::StringTokenizer tokenizer) {
    std::vector<std::string_view> result;
    while (tokenizer.hasMoreTokens()) {
        result.push_back(tokenizer.nextToken());
    }
    EXPECT_THROW((void)tokenizer.nextToken(), std::out_of_range);
    return result;
}

TEST(StringTokenizer, GivesNoEmptyTokens) {
    using testing::ElementsAre;
    EXPECT_THAT(tokens(HASP::StringTokenizer("  _a1 \t_a2\n_a3 ")), ElementsAre("_a1", "_a2", "_a3"));
    EXPECT_THAT(tokens(HASP::StringTokenizer("one")), ElementsAre("one"));
    EXPECT_THAT(tokens(HASP::StringTokenizer(" ")), ElementsAre());
    EXPECT_THAT(tokens(HASP::StringTokenizer("")), ElementsAre());
    EXPECT_THAT(tokens(HASP::StringTokenizer(",a b,;c", ",;")), ElementsAre("a b", "c"));
}

TEST(StringID, EqualTextsAreOneId) {
    EXPECT_EQ(HASP::StringID("fName"), HASP::StringID(std::string("fName")));
    EXPECT_NE(HASP::StringID("fName"), HASP::StringID("fValue"));
    EXPECT_EQ(HASP::StringID(), HASP::StringID(""));
    EXPECT_EQ(HASP::StringID("fName").toString(), "fName");
}

TEST(UUID, IsFreshAndOfVersionFour) {
    std::string const id = HASP::UUID::createUuidAsString();
    EXPECT_EQ(id.size(), 36u);
    EXPECT_THAT(id, testing::MatchesRegex("[0-9a-f]+-[0-9a-f]+-4[0-9a-f]+-[89ab][0-9a-f]+-[0-9a-f]+"));
    EXPECT_NE(id, HASP::UUID::createUuidAsString());
}

} // namespace
