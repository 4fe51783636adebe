#include "kernel/ZEL/metamodel/ModelFixture.h"

namespace ZEL::tests {
namespace {

class DeviantAssertionsTest : public testing::Test {
protected:
    [[nodiscard]] Comment makeComment() const {
        model.beginTransaction();
        Comment const comment = Factory(model.getFactory()).createComment();
        model.commitTransaction();
        return comment;
    }

    MetaModel model = Factory::createNewModel();
    Comment comment = makeComment();
};

TEST_F(DeviantAssertionsTest, AWriteOutsideOfATransactionNamesTheObject) {
    std::string const text = " Deviant 'root deviant' not opened for transactions.\nAttempt to modify object of type "
                             "'ZEL.Comment' [id = 2 ] ";
    EXPECT_EQ(text, raisedText([&] { comment.removeBody(); }));
    // Whether the write would change anything, or could, is not asked first.
    EXPECT_EQ(text, raisedText([&] { comment.getAnnotatedElements().clear(); }));
    EXPECT_EQ(text, raisedText([&] { comment.getAnnotatedElements().pop_back(); }));
    EXPECT_EQ(text, raisedText([&] { comment.getAnnotatedElements().insert(5, comment); }));
}

TEST_F(DeviantAssertionsTest, AnAbsentObjectIsNamedAndReadsComeBeforeTheLookAtTheTransaction) {
    Deviant const deviant = model.createDeviantWithName("a").getDeviant();
    Comment const late = makeComment();
    late.setDeviant(deviant);
    std::string const absent = " Deviant 'a' : \n object of type 'ZEL.Comment' [id = 3 ] is not present";
    EXPECT_EQ(absent, raisedText([&] { static_cast<void>(late.getBody()); }));
    EXPECT_EQ(absent, raisedText([&] { late.setBody("x"); }));
    EXPECT_EQ(" Deviant 'a' not opened for transactions.\nAttempt to modify object of type 'ZEL.Comment' [id = 3 ] ",
              raisedText([&] { late.removeBody(); }));
    deviant.beginTransaction();
    EXPECT_EQ(absent, raisedText([&] { late.removeBody(); }));
    deviant.commitTransaction();
}

TEST_F(DeviantAssertionsTest, AnObjectCreatedTwiceAndADeadModelHaveTextsOfTheirOwn) {
    static_cast<void>(model.createDeviantWithName("a"));
    Comment const late = makeComment();
    EXPECT_EQ(" Deviant 'root deviant' : \n object of type 'ZEL.Comment' [id = 3 ] has already been created",
              raisedText([&] { model.getDeviant().markObjectCreated(late.getImplementation()); }));
    EXPECT_EQ("Attempt to access object of type 'ZEL.Comment' [id = 2 ] after its model has been destroyed",
              raisedText([&] { DeviantAssertions::assertThatModelHasBeenDestroyed(comment.getImplementation()); }));
    EXPECT_EQ("An Internal Error has occurred",
              raisedText([&] { DeviantAssertions::assertThatModelHasBeenDestroyed(nullptr); }));
}

} // namespace
} // namespace ZEL::tests
