#include "kernel/ZEL/metamodel/ModelFixture.h"

namespace ZEL::tests {
namespace {

struct DeviantAssertionsTest : ModelFixture {
    Comment comment = make<Comment>();
};

TEST_F(DeviantAssertionsTest, AWriteOutsideOfATransactionNamesTheObject) {
    std::string const text = " Deviant 'root deviant' not opened for transactions.\nAttempt to modify object of type "
                             "'ZEL.Comment' [id = 2 ] ";
    EXPECT_RAISES(text, comment.removeBody());
    // Whether the write would change anything, or could, is not asked first.
    EXPECT_RAISES(text, comment.getAnnotatedElements().clear());
    EXPECT_RAISES(text, comment.getAnnotatedElements().pop_back());
    EXPECT_RAISES(text, comment.getAnnotatedElements().insert(5, comment));
}

TEST_F(DeviantAssertionsTest, AnAbsentObjectIsNamedAndReadsComeBeforeTheLookAtTheTransaction) {
    Deviant const deviant = model.createDeviantWithName("a").getDeviant();
    Comment const late = make<Comment>();
    late.setDeviant(deviant);
    std::string const absent = " Deviant 'a' : \n object of type 'ZEL.Comment' [id = 3 ] is not present";
    EXPECT_RAISES(absent, late.getBody());
    EXPECT_RAISES(absent, late.setBody("x"));
    EXPECT_RAISES(
        " Deviant 'a' not opened for transactions.\nAttempt to modify object of type 'ZEL.Comment' [id = 3 ] ",
        late.removeBody());
    deviant.beginTransaction();
    EXPECT_RAISES(absent, late.removeBody());
    deviant.commitTransaction();
}

TEST_F(DeviantAssertionsTest, AnObjectCreatedTwiceAndADeadModelHaveTextsOfTheirOwn) {
    static_cast<void>(model.createDeviantWithName("a"));
    Comment const late = make<Comment>();
    EXPECT_RAISES(" Deviant 'root deviant' : \n object of type 'ZEL.Comment' [id = 3 ] has already been created",
                  model.getDeviant().markObjectCreated(late.getImplementation()));
    EXPECT_RAISES("Attempt to access object of type 'ZEL.Comment' [id = 2 ] after its model has been destroyed",
                  DeviantAssertions::assertThatModelHasBeenDestroyed(comment.getImplementation()));
    EXPECT_RAISES(kInternalError, DeviantAssertions::assertThatModelHasBeenDestroyed(nullptr));
}

} // namespace
} // namespace ZEL::tests
