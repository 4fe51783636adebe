#include "support/TestObjects.h"

#include <ZEL/Deviant.h>
#include <ZEL/DeviantManagerHelper.h>
#include <ZEL/ReportOfChanges.h>
#include <ZEL/StateMap.h>
#include <ZEL/metamodel/ClassObject.h>

namespace ZEL {
namespace {

using testsupport::asState;
using testsupport::raisedBy;
using testsupport::Thing;

class SyncTest : public testsupport::DeviantFixture {
protected:
    void assign() {
        root.beginTransaction("assign");
        a.assignToRoot();
        root.commitTransaction();
    }
    [[nodiscard]] std::size_t ownStates() const { return a.getObjectsDeviatingFromRoot()->size(); }

    Thing & thing = make(root, 1);
    Deviant a = createDeviant("a");
};

TEST_F(SyncTest, BothOperationsHaveTheirPreconditions) {
    EXPECT_EQ("syncFromRoot on root deviant", raisedBy([&] { root.syncFromRoot(); }));
    EXPECT_EQ("syncFromRoot outside a transaction", raisedBy([&] { a.syncFromRoot(); }));
    EXPECT_EQ("assignToRoot on root deviant", raisedBy([&] { root.assignToRoot(); }));
    a.beginTransaction();
    EXPECT_EQ("assignToRoot outside a transaction", raisedBy([&] { a.assignToRoot(); })) << "the root's counts";
    a.commitTransaction();
}

TEST_F(SyncTest, SyncWithNothingOfItsOwnIsAnEmptyTransaction) {
    int const level = a.getCurrentChangeLevel();
    a.beginTransaction();
    a.syncFromRoot();
    a.commitTransaction();
    EXPECT_EQ(level, a.getCurrentChangeLevel());
}

TEST_F(SyncTest, AfterSyncTheDeviantFollowsTheRoot) {
    commitValue(a, thing, 5);
    Thing & own = make(a, 6);
    Thing & late = make(root, 7);
    commitValue(root, thing, 2);
    ASSERT_EQ(3u, ownStates());
    EXPECT_FALSE(late.deviant_isValid(a));
    a.beginTransaction();
    a.syncFromRoot();
    EXPECT_EQ(2, thing.valueIn(a));
    a.commitTransaction();
    EXPECT_EQ(0u, ownStates());
    EXPECT_EQ(2, thing.valueIn(a));
    EXPECT_EQ(7, late.valueIn(a));
    EXPECT_FALSE(own.deviant_isValid(a));
}

TEST_F(SyncTest, ACancelledSyncPutsAllBack) {
    commitValue(a, thing, 5);
    Thing & own = make(a, 6);
    Thing & late = make(root, 7);
    a.beginTransaction();
    a.syncFromRoot();
    thing.set(a, 8);
    a.cancelTransaction();
    EXPECT_EQ(5, thing.valueIn(a));
    EXPECT_EQ(6, own.valueIn(a));
    EXPECT_FALSE(late.deviant_isValid(a));
    EXPECT_EQ(3u, ownStates());
}

TEST_F(SyncTest, SyncThenAWriteKeepsTheOldestState) {
    commitValue(a, thing, 5);
    a.beginTransaction();
    thing.set(a, 6);
    a.syncFromRoot();
    thing.set(a, 7);
    a.commitTransaction();
    EXPECT_EQ(7, thing.valueIn(a));
    EXPECT_EQ(1, thing.valueIn(root));
}

TEST_F(SyncTest, AssignmentMakesTheRootEqualToTheDeviant) {
    Thing & ended = make(root, 2);
    commitValue(a, thing, 5);
    Thing & created = make(a, 6);
    a.beginTransaction();
    ended.end(a);
    a.commitTransaction();
    assign();
    EXPECT_EQ(5, thing.valueIn(root));
    EXPECT_EQ(6, created.valueIn(root));
    EXPECT_FALSE(ended.deviant_isValid(root));
    EXPECT_EQ(5, thing.valueIn(a));
    root.undo();
    EXPECT_EQ(1, thing.valueIn(root));
    EXPECT_FALSE(created.deviant_isValid(root));
    EXPECT_EQ(2, ended.valueIn(root));
    root.redo();
    EXPECT_EQ(5, thing.valueIn(root));
    EXPECT_EQ(6, created.valueIn(root));
    EXPECT_FALSE(ended.deviant_isValid(root));
}

TEST_F(SyncTest, AssignmentTakesBackWhatTheRootHasDoneSince) {
    commitValue(root, thing, 2); // a is left with 1
    Thing & late = make(root, 3);
    assign();
    EXPECT_EQ(1, thing.valueIn(root));
    EXPECT_FALSE(late.deviant_isValid(root));
    root.undo();
    EXPECT_EQ(2, thing.valueIn(root));
    EXPECT_EQ(3, late.valueIn(root));
}

TEST_F(SyncTest, AnObjectEndedInTheRootComesBackFromTheDeviant) {
    commitValue(a, thing, 5);
    root.beginTransaction();
    thing.end(root);
    root.commitTransaction();
    EXPECT_EQ(5, thing.valueIn(a));
    assign();
    EXPECT_EQ(5, thing.valueIn(root));
}

TEST_F(SyncTest, WhatTheDeviantIsWritingNowStaysBehind) {
    commitValue(a, thing, 5);
    a.beginTransaction();
    thing.set(a, 6);
    Thing & unfinished = make(a, 7);
    assign();
    EXPECT_EQ(5, thing.valueIn(root));
    EXPECT_FALSE(unfinished.deviant_isValid(root));
    a.commitTransaction();
    EXPECT_EQ(6, thing.valueIn(a));
}

TEST_F(SyncTest, TheFirstSavedStatesOfARootTransactionCount) {
    commitValue(a, thing, 5);
    root.beginTransaction();
    thing.set(root, 2);
    a.assignToRoot();
    commitValue(a, thing, 6);
    a.assignToRoot();
    EXPECT_EQ(6, thing.valueIn(root));
    root.cancelTransaction();
    EXPECT_EQ(1, thing.valueIn(root));
}

TEST_F(SyncTest, TheHelperIsCalledWithAnEmptyReportToo) {
    struct Counting : DeviantManagerHelper {
        void assignToRoot(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) override {
            ++calls;
            objects += report.created.size() + report.deleted.size() + report.modified.size();
            target = report.getTargetDeviant();
            source = report.sourceDeviant.getName();
            sourceId = report.sourceDeviant.getDeviantId();
            doTheJob(report);
        }
        int calls = 0;
        int objects = 0;
        Deviant target;
        std::string source;
        int sourceId = 0;
    };
    auto * const helper = new Counting;
    manager->setHelper(helper);
    static_cast<void>(a.setStateOfObject(&thing, asState(Deviant::FallbackToRoot)));
    int const level = root.getCurrentChangeLevel();
    assign();
    EXPECT_EQ(1, helper->calls);
    EXPECT_EQ(0, helper->objects) << "an object that follows the root takes no part";
    EXPECT_EQ(root, helper->target);
    EXPECT_EQ("<internal: assignToRoot>", helper->source);
    EXPECT_EQ(-1 - a.getDeviantId(), helper->sourceId);
    EXPECT_EQ(level, root.getCurrentChangeLevel());
}

} // namespace
} // namespace ZEL
