#include <ZEL/serializer/ObjectId.h>

#include <gtest/gtest.h>

namespace ZEL::tests {
namespace {

TEST(ObjectId, IsTakenApartOnlyIfItIsWellFormed) {
    // The head is that of what can be a place in an array.
    std::tuple<char const *, int, char const *, char const *> const rows[] = {
        {"_zel_5376c05e-df72-49a6-85e0-5388c3fca417_14", 14, "5376c05e-df72-49a6-85e0-5388c3fca417",
         "_zel_5376c05e-df72-49a6-85e0-5388c3fca417_"},
        {"_zel_u_2147483647", 2147483647, "u", "_zel_u_"},
        {"_zel_u_007", 7, "u", ""},
        {"_zel_u_1_2", 0, "u", "_zel_u_1_"},
        {"_zel_", 0, "", ""},
        {"_zel_5", 0, "5", "_zel_"},
        {"x_zel_u_14", 0, "zel", "x_zel_u_"},
        {"zel_u_14", 0, "u", "zel_u_"},
        {"a__b", 0, "b", ""},
        {"a", 0, "", ""},
        {"", 0, "", ""},
        {"_zel_u", 0, "u", ""},
    };
    for (auto const & [text, number, uuid, head] : rows) {
        EXPECT_EQ(number, getIdValue(text).getValue()) << text;
        EXPECT_EQ(uuid, getUuidValue(text)) << text;
        EXPECT_EQ(head, ObjectId(text).head()) << text;
    }
    for (char const * const number : {"2147483648", "99999999999", "-5", "+5", "0", "12x", " 12", ""}) {
        std::string const text = getPrefixedId(std::string("u_") + number);
        EXPECT_EQ("_zel_u_" + std::string(number), text);
        EXPECT_EQ(0, getIdValue(text).getValue()) << text;
        EXPECT_FALSE(ObjectId(text).isRegular()) << text;
    }
}

} // namespace
} // namespace ZEL::tests
