#include "support/ExpectRaises.h"

#include <ZEL/base/Exception.h>

#include <libvx/StringObjectOutput.h>

#include <functional>

namespace ZEL::tests {
namespace {

TEST(Exception, HasATextAndTheCommonIdentifierUnlessGivenAnother) {
    EXPECT_EQ("fen:zel:assertion", Exception("x").GetID());
    EXPECT_EQ("fen:zel:assertion", Exception(std::string("x")).GetID());
    EXPECT_EQ("y", Exception("x", "y").GetID());
    Exception const original(std::string("text"), std::string("id"));
    Exception const copy(original);
    EXPECT_EQ("text", copy.GetMessageTxt());
    EXPECT_EQ("id", copy.GetID());
    Quillon::System::StringObjectOutput out;
    copy.writeExternal(out);
    EXPECT_EQ("text\n", out.text());
}

TEST(Exception, RaisingFunctionsThrowTheirTextByValueUnderAllFaces) {
    std::pair<std::string, std::function<void()>> const cases[] = {
        {"own text", [] { raiseInternalError(std::string("own text")); }},
        {"literal", [] { raiseInternalError("literal"); }},
        {"An Internal Error has occurred", [] { raiseAnInternalError(); }},
        {"Cannot access NULL ref. Use isValid() before calling methods", [] { raiseNullReference(); }},
        {"The x operation is not yet implemented!",
         [] { raiseUnimplemented("The x operation is not yet implemented!"); }},
    };
    for (auto const & each : cases) {
        EXPECT_THROW(each.second(), Quillon::System::UserException);
        EXPECT_THROW(each.second(), Quillon::System::IUserException);
        EXPECT_EQ(each.first, raisedText(each.second)) << "as a standard exception";
        try {
            each.second();
        } catch (Exception const & failure) {
            EXPECT_EQ(each.first, failure.GetMessageTxt());
            EXPECT_EQ("fen:zel:assertion", failure.GetID());
            EXPECT_EQ(&each == std::end(cases) - 1, dynamic_cast<UnImplementedException const *>(&failure) != nullptr);
        }
    }
}

} // namespace
} // namespace ZEL::tests
