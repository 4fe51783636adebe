#include <ZEL/IdText.h>

#include <gtest/gtest.h>

#include <string>

namespace ZEL {
namespace {

TEST(IdText, BeginsWithThePrefix) {
    EXPECT_EQ("_zel_", getPrefixedId(""));
    EXPECT_EQ("_zel_5376c05e_14", getPrefixedId("5376c05e_14"));
}

struct Row {
    char const * text;
    int number;
    char const * uuid;
};

TEST(IdText, GivesNumberAndUuidOfWellFormedTextsOnly) {
    Row const rows[] = {
        {"_zel_5376c05e-df72-49a6-85e0-5388c3fca417_14", 14, "5376c05e-df72-49a6-85e0-5388c3fca417"},
        {"_zel_u_2147483647", 2147483647, "u"},
        {"_zel_u_2147483648", 0, "u"},
        {"_zel_u_99999999999", 0, "u"},
        {"_zel_u_-5", 0, "u"},
        {"_zel_u_+5", 0, "u"},
        {"_zel_u_0", 0, "u"},
        {"_zel_u_12x", 0, "u"},
        {"_zel_u_ 12", 0, "u"},
        {"_zel_u_1_2", 0, "u"},
        {"_zel_u_", 0, "u"},
        {"_zel_u", 0, "u"},
        {"_zel_", 0, ""},
        {"zel_u_14", 0, "u"},
        {"x_zel_u_14", 0, "zel"},
        {"a__b", 0, "b"},
        {"a", 0, ""},
        {"", 0, ""},
    };
    for (Row const & row : rows) {
        EXPECT_EQ(row.number, getIdValue(row.text).getValue()) << row.text;
        EXPECT_EQ(row.uuid, getUuidValue(row.text)) << row.text;
    }
}

} // namespace
} // namespace ZEL
