#include <ZEL/Exception.h>

#include <libvx/StringObjectOutput.h>

#include <gtest/gtest.h>

#include <functional>

namespace ZEL {
namespace {

TEST(Exception, HasTheCommonIdentifierUnlessGivenAnother) {
    EXPECT_EQ("fen:zel:assertion", Exception("x").GetID());
    EXPECT_EQ("fen:zel:assertion", Exception(std::string("x")).GetID());
    EXPECT_EQ("y", Exception("x", "y").GetID());
    EXPECT_EQ("y", Exception(std::string("x"), std::string("y")).GetID());
}

TEST(Exception, WritesItsTextAndALineEndToTheHost) {
    Quillon::System::StringObjectOutput out;
    Exception("text", "id").writeExternal(out);
    EXPECT_EQ("text\n", out.text());
}

TEST(Exception, ACopyKeepsTextAndIdentifier) {
    Exception const original("text", "id");
    Exception const copy(original);
    EXPECT_EQ("text", copy.GetMessageTxt());
    EXPECT_EQ("id", copy.GetID());
}

TEST(Exception, IsCaughtUnderAllItsFaces) {
    auto const throwing = [] { raiseInternalError("text"); };
    EXPECT_THROW(throwing(), Exception);
    EXPECT_THROW(throwing(), Quillon::System::UserException);
    EXPECT_THROW(throwing(), Quillon::System::IUserException);
    try {
        throwing();
    } catch (std::exception const & failure) {
        EXPECT_STREQ("text", failure.what());
    }
}

TEST(Exception, RaisingFunctionsThrowTheirTextByValue) {
    struct Case {
        std::function<void()> raise;
        std::string text;
        bool unimplemented;
    };
    std::string const own = "own text";
    Case const cases[] = {
        {[&] { raiseInternalError(own); }, "own text", false},
        {[] { raiseInternalError("literal"); }, "literal", false},
        {[] { raiseAnInternalError(); }, "An Internal Error has occurred", false},
        {[] { raiseNullReference(); }, "Cannot access NULL ref. Use isValid() before calling methods", false},
        {[] { raiseUnimplemented("The x operation is not yet implemented!"); },
         "The x operation is not yet implemented!", true},
    };
    for (Case const & each : cases) {
        try {
            each.raise();
            ADD_FAILURE() << each.text << " was not raised";
        } catch (Exception const & failure) {
            EXPECT_EQ(each.text, failure.GetMessageTxt());
            EXPECT_EQ("fen:zel:assertion", failure.GetID());
            EXPECT_EQ(each.unimplemented, dynamic_cast<UnImplementedException const *>(&failure) != nullptr);
        }
    }
}

} // namespace
} // namespace ZEL
