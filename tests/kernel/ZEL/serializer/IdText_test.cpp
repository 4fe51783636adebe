#include <ZEL/serializer/IdText.h>

#include <gtest/gtest.h>

#include <string>

namespace ZEL {
namespace {

TEST(IdText, BeginsWithThePrefix) {
    EXPECT_EQ("_zel_", getPrefixedId(""));
    EXPECT_EQ("_zel_5376c05e_14", getPrefixedId("5376c05e_14"));
}

TEST(IdText, GivesNumberAndUuidOfWellFormedTextsOnly) {
    struct Row {
        char const * text;
        int number;
        char const * uuid;
    };
    Row const rows[] = {
        {"_zel_5376c05e-df72-49a6-85e0-5388c3fca417_14", 14, "5376c05e-df72-49a6-85e0-5388c3fca417"},
        {"_zel_u_2147483647", 2147483647, "u"},
        {"_zel_", 0, ""},
        {"x_zel_u_14", 0, "zel"},
        {"a__b", 0, "b"},
        {"a", 0, ""},
        {"", 0, ""},
    };
    for (Row const & row : rows) {
        EXPECT_EQ(row.number, getIdValue(row.text).getValue()) << row.text;
        EXPECT_EQ(row.uuid, getUuidValue(row.text)) << row.text;
    }
    for (char const * const text : {"_zel_u_2147483648", "_zel_u_99999999999", "_zel_u_-5", "_zel_u_+5", "_zel_u_0",
                                    "_zel_u_12x", "_zel_u_ 12", "_zel_u_1_2", "_zel_u_", "_zel_u", "zel_u_14"}) {
        EXPECT_EQ(0, getIdValue(text).getValue()) << text;
        EXPECT_EQ("u", getUuidValue(text)) << text;
    }
}

} // namespace
} // namespace ZEL
