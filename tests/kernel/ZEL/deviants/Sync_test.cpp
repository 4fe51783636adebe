#include "DeviantTest.h"

namespace ZEL::tests {
namespace {

struct SyncTest : OnBothKinds {
    void SetUp() override {
        Subject const alsoThere = make(root, 2);
        sync();
        commitValue(a, thing, 5);
        a.beginTransaction();
        alsoThere.end(a);
        a.commitTransaction();
        things = {thing, alsoThere, make(a, 6), make(root, 7)};
    }
    void sync() const {
        a.beginTransaction();
        a.syncFromRoot();
        a.commitTransaction();
    }
    /// What is seen of the things: one changed in `a`, one ended, one made, and one made in the root.
    [[nodiscard]] std::string allSeen() const {
        std::string text;
        for (Subject const each : things) {
            text += (text.empty() ? "" : ", ") + seen(each);
        }
        return text;
    }

    std::vector<Subject> things;
};

TEST_P(SyncTest, BothOperationsHaveTheirPreconditions) {
    EXPECT_RAISES("syncFromRoot on root deviant", root.syncFromRoot());
    EXPECT_RAISES("syncFromRoot outside a transaction", a.syncFromRoot());
    EXPECT_RAISES("assignToRoot on root deviant", root.assignToRoot());
    a.beginTransaction();
    EXPECT_RAISES("assignToRoot outside a transaction", a.assignToRoot()) << "the root's counts";
    a.commitTransaction();
}

TEST_P(SyncTest, AfterSyncTheDeviantFollowsTheRootUnlessItCancels) {
    EXPECT_EQ("1 5, 2 -, - 6, 7 -", allSeen());
    a.beginTransaction();
    a.syncFromRoot();
    EXPECT_EQ("1 1, 2 2, - -, 7 7", allSeen());
    thing.set(a, 8);
    a.cancelTransaction();
    EXPECT_EQ("1 5, 2 -, - 6, 7 -", allSeen());
    sync();
    EXPECT_EQ("1 1, 2 2, - -, 7 7", allSeen());
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty());
}

TEST_P(SyncTest, AssignmentMakesTheRootEqualToWhatTheDeviantHasCommitted) {
    commitValue(root, thing, 3, "before");
    a.beginTransaction();
    thing.set(a, 8);
    root.beginTransaction("assign");
    a.assignToRoot();
    root.commitTransaction();
    EXPECT_EQ("5 8, - -, 6 6, - -", allSeen());
    a.cancelTransaction();
    EXPECT_EQ("5 5, - -, 6 6, - -", allSeen());
    root.undo();
    EXPECT_EQ("3 5, 2 -, - 6, 7 -", allSeen());
    root.redo();
    EXPECT_EQ("5 5, - -, 6 6, - -", allSeen());
}

INSTANTIATE_TEST_SUITE_P(On, SyncTest, bothKinds, testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests
