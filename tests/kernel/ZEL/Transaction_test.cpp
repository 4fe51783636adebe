#include "support/TestObjects.h"

#include <ZEL/DeviantAssertions.h>
#include <ZEL/StateMap.h>
#include <ZEL/Transaction.h>

namespace ZEL {
namespace {

using testsupport::asState;
using testsupport::raisedBy;
using testsupport::Thing;
using testsupport::ThingState;

class TransactionTest : public testsupport::DeviantFixture {
protected:
    ~TransactionTest() override { DeviantAssertions::enableAssertions(true); }

    Thing & thing = make(root, 1);
    Deviant a = createDeviant("a");
};

TEST_F(TransactionTest, NestedTransactionsMakeOneEntryWithTheOuterName) {
    int const before = root.getUndoStackLength();
    root.beginTransaction("a");
    root.beginTransaction("b");
    thing.set(root, 2);
    root.commitTransaction();
    EXPECT_TRUE(root.isWithinTransaction());
    root.commitTransaction();
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ(before + 1, root.getUndoStackLength());
    EXPECT_EQ("a", root.getUndoNameAt(0));
}

TEST_F(TransactionTest, AnEmptyTransactionLeavesNothingButTheFlag) {
    int const entries = root.getUndoStackLength();
    int const level = root.getCurrentChangeLevel();
    EXPECT_FALSE(root.isWithinTransactionUndoOrRedo());
    root.beginTransaction();
    EXPECT_TRUE(root.isWithinTransactionUndoOrRedo());
    root.commitTransaction();
    EXPECT_TRUE(root.isWithinTransactionUndoOrRedo());
    EXPECT_EQ(entries, root.getUndoStackLength());
    EXPECT_EQ(level, root.getCurrentChangeLevel());
    commitValue(root, thing, 2);
    EXPECT_FALSE(root.isWithinTransactionUndoOrRedo());
    EXPECT_EQ(level + 1, root.getCurrentChangeLevel());
}

TEST_F(TransactionTest, CommitNeedsATransactionAndCancelDoesNot) {
    EXPECT_EQ("transaction not started", raisedBy([&] { root.commitTransaction(); }));
    root.cancelTransaction();
    for (int depth = 0; depth < 3; ++depth) {
        root.beginTransaction();
    }
    thing.set(root, 2);
    root.cancelTransaction();
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ(1, thing.valueIn(root));
    EXPECT_TRUE(root.isWithinTransactionUndoOrRedo());
    EXPECT_EQ("transaction not started", raisedBy([&] { root.commitTransaction(); }));
}

TEST_F(TransactionTest, CancelFailsWithoutAnUndoStackOnlyInsideATransaction) {
    root.disableUndo();
    root.cancelTransaction();
    root.beginTransaction();
    EXPECT_EQ("cancelTransaction on deviant without undo stack", raisedBy([&] { root.cancelTransaction(); }));
    EXPECT_TRUE(root.isWithinTransaction());
    root.commitTransaction();
}

TEST_F(TransactionTest, TheLiveStateOfTheRootKeepsItsAddress) {
    NSInterface::ObjectIntf const * const state = thing.internal_getDeviation(root);
    root.beginTransaction();
    thing.set(root, 2);
    EXPECT_EQ(state, thing.internal_getDeviation(root));
    EXPECT_NE(state, root.getSavedOldStateOfObject(&thing));
    root.commitTransaction();
    EXPECT_EQ(nullptr, root.getSavedOldStateOfObject(&thing));
}

TEST_F(TransactionTest, ATransactionCostsOneCopyPerObject) {
    root.beginTransaction();
    thing.set(root, 2);
    int const states = ThingState::numberAlive;
    for (int i = 0; i < 10; ++i) {
        thing.set(root, i);
    }
    EXPECT_EQ(states, ThingState::numberAlive);
    root.cancelTransaction();
    EXPECT_EQ(states - 1, ThingState::numberAlive);
}

TEST_F(TransactionTest, EachOutermostBeginHasANumberOfItsOwn) {
    EXPECT_EQ(0u, root.getIdentity()->openTransaction);
    EXPECT_FALSE(root.getIdentity()->savedStatesVisible);
    root.beginTransaction();
    auto const first = root.getIdentity()->openTransaction;
    root.beginTransaction();
    EXPECT_EQ(first, root.getIdentity()->openTransaction);
    EXPECT_TRUE(root.getIdentity()->savedStatesVisible);
    a.beginTransaction();
    EXPECT_NE(first, a.getIdentity()->openTransaction);
    root.cancelTransaction();
    EXPECT_EQ(0u, root.getIdentity()->openTransaction);
    root.beginTransaction();
    EXPECT_LT(first, root.getIdentity()->openTransaction);
    root.commitTransaction();
    a.commitTransaction();
    commitValue(root, thing, 2);
    EXPECT_FALSE(root.getIdentity()->savedStatesVisible);
}

// --- other deviants --------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, ARootCommitLeavesOthersWithTheFormerState) {
    commitValue(root, thing, 2);
    EXPECT_EQ(1, thing.valueIn(a));
    EXPECT_EQ(1u, a.getObjectsDeviatingFromRoot()->size());
    commitValue(root, thing, 3);
    EXPECT_EQ(1, thing.valueIn(a));
    EXPECT_EQ(2, thing.valueIn(root) - 1);
}

TEST_F(TransactionTest, TheFirstDeviantThatIsWritingTheObjectIsTheLastToBeServed) {
    Deviant const b = createDeviant("b");
    Deviant const c = createDeviant("c");
    b.beginTransaction();
    thing.set(b, 5);
    EXPECT_EQ(Deviant::FallbackToRoot, b.getSavedOldStateOfObject(&thing));
    commitValue(root, thing, 2);
    EXPECT_EQ(1, thing.valueIn(a));
    EXPECT_EQ(5, thing.valueIn(b));
    EXPECT_EQ(2, thing.valueIn(c)) << "the walk over the deviants has ended at b";
    b.cancelTransaction();
    EXPECT_EQ(1, thing.valueIn(b)) << "b's history has taken the state before the root's commit";
}

TEST_F(TransactionTest, CommitInANamedDeviantKeepsNoHistory) {
    int const level = a.getCurrentChangeLevel();
    commitValue(a, thing, 2);
    EXPECT_EQ(0, a.getUndoStackLength());
    EXPECT_TRUE(a.hasUndoStack());
    EXPECT_EQ(1, a.getMaximumUndoStackLength());
    EXPECT_EQ(level + 1, a.getCurrentChangeLevel());
}

TEST_F(TransactionTest, CancelInANamedDeviantMakesTheObjectFollowTheRootAgain) {
    a.beginTransaction();
    thing.set(a, 2);
    a.cancelTransaction();
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty());
    EXPECT_EQ(1, thing.valueIn(a));
    commitValue(a, thing, 3);
    a.beginTransaction();
    thing.set(a, 4);
    a.cancelTransaction();
    EXPECT_EQ(3, thing.valueIn(a));
}

TEST_F(TransactionTest, CancelOfADeletionInANamedDeviantMakesTheObjectFollowTheRootAgain) {
    a.beginTransaction();
    thing.end(a);
    EXPECT_FALSE(thing.deviant_isValid(a));
    EXPECT_TRUE(thing.deviant_isValid(root));
    a.cancelTransaction();
    EXPECT_EQ(1, thing.valueIn(a));
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty());
    commitValue(root, thing, 2);
    EXPECT_EQ(1, thing.valueIn(a));
}

TEST_F(TransactionTest, CancelBringsCreatedAndDeletedObjectsToWhatTheyWere) {
    for (Deviant const deviant : {root, a}) {
        commitValue(deviant, thing, 7);
        deviant.beginTransaction();
        Thing & created = make(deviant, 5);
        thing.set(deviant, 8);
        thing.end(deviant);
        deviant.cancelTransaction();
        EXPECT_EQ(7, thing.valueIn(deviant));
        EXPECT_EQ(Deviant::InvalidObject, created.internal_getDeviation(deviant));
    }
}

TEST_F(TransactionTest, AnObjectMadeAndEndedInOneTransactionWasNever) {
    root.beginTransaction();
    Thing & brief = make(root, 1);
    brief.end(root);
    root.cancelTransaction();
    EXPECT_FALSE(brief.deviant_isValid(root));
    root.beginTransaction();
    EXPECT_EQ(" Deviant 'root deviant' : \n", raisedBy([&] { brief.set(root, 2); }));
    root.commitTransaction();
}

// --- without undo stack ----------------------------------------------------------------------------------------------

TEST_F(TransactionTest, WithoutUndoStackAWriteIsAnEmptyTransactionAndSeenByAll) {
    root.setMaximumUndoStackLength(0);
    int const level = root.getCurrentChangeLevel();
    root.beginTransaction();
    thing.set(root, 2);
    EXPECT_EQ(2, thing.valueIn(a));
    root.commitTransaction();
    EXPECT_EQ(level, root.getCurrentChangeLevel());
    EXPECT_EQ(2, thing.valueIn(a));
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty());
}

TEST_F(TransactionTest, WithoutUndoStackACreationMovesTheLevelAndKeepsNoEntry) {
    root.setMaximumUndoStackLength(0);
    int const level = root.getCurrentChangeLevel();
    make(root, 1);
    EXPECT_EQ(level + 1, root.getCurrentChangeLevel());
    EXPECT_EQ(0, root.getUndoStackLength());
}

// --- old states by hand ----------------------------------------------------------------------------------------------

TEST_F(TransactionTest, SavingByHandAnswersOnlyWithinATransaction) {
    EXPECT_EQ(nullptr, root.saveOldStateOfObject(&thing, asState(Deviant::InvalidObject)));
    root.beginTransaction();
    EXPECT_EQ(nullptr, root.saveOldStateOfObject(&thing, nullptr));
    EXPECT_EQ(Deviant::FallbackToRoot, root.getSavedOldStateOfObject(&thing));
    EXPECT_EQ(Deviant::FallbackToRoot, root.saveOldStateOfObject(&thing, asState(Deviant::InvalidObject)));
    EXPECT_EQ(Deviant::InvalidObject, root.getSavedOldStateOfObject(&thing));
    root.commitTransaction();
}

TEST_F(TransactionTest, NotificationsSaveTheStateWhateverWasSavedBefore) {
    struct Case {
        char const * name;
        void (Deviant::*notify)(NSInterface::ClassObjectIntf const *) const;
    };
    Case const cases[] = {
        {"notifyObjectIsAboutToChange", &Deviant::notifyObjectIsAboutToChange},
        {"notifyObjectIsAboutToBeDeleted", &Deviant::notifyObjectIsAboutToBeDeleted},
        {"notifyObjectHasBeenAdded", &Deviant::notifyObjectHasBeenAdded},
    };
    for (Case const & each : cases) {
        a.beginTransaction();
        EXPECT_EQ(std::string(each.name) + " on non root deviant", raisedBy([&] { (a.*each.notify)(&thing); }));
        a.commitTransaction();
        DeviantAssertions::enableAssertions(false);
        if (each.notify != &Deviant::notifyObjectHasBeenAdded) {
            (root.*each.notify)(&thing); // saves nothing, and makes no copy that nobody would own
        }
        DeviantAssertions::enableAssertions(true);
    }
    root.beginTransaction();
    thing.set(root, 2);
    root.notifyObjectIsAboutToChange(&thing);
    thing.set(root, 3);
    root.cancelTransaction();
    EXPECT_EQ(2, thing.valueIn(root));

    Thing & foreign = makeBody();
    root.beginTransaction();
    root.notifyObjectHasBeenAdded(&foreign);
    foreign.internal_createDeviation(root);
    EXPECT_EQ(Deviant::InvalidObject, root.getSavedOldStateOfObject(&foreign));
    EXPECT_EQ(Deviant::InvalidObject, foreign.internal_getDeviation(a));
    root.cancelTransaction();
    EXPECT_FALSE(foreign.deviant_isValid(root));
}

// --- the guard -------------------------------------------------------------------------------------------------------

TEST_F(TransactionTest, TheGuardCancelsUnlessCommitted) {
    {
        Transaction const transaction(root, "lost");
        thing.set(root, 2);
    }
    EXPECT_EQ(1, thing.valueIn(root));
    {
        Transaction transaction(root, "kept");
        thing.set(root, 2);
        transaction.commit();
        EXPECT_EQ("transaction not started", raisedBy([&] { transaction.commit(); }));
    }
    EXPECT_EQ(2, thing.valueIn(root));
    EXPECT_EQ("kept", root.getUndoNameAt(0));
}

TEST_F(TransactionTest, AnInnerGuardThatIsNotCommittedEndsAllLevels) {
    Transaction outer(root);
    thing.set(root, 2);
    { Transaction const inner(root); }
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ("transaction not started", raisedBy([&] { outer.commit(); }));
    root.beginTransaction();
    EXPECT_EQ("transaction not started", raisedBy([&] { outer.commit(); })) << "that is another transaction";
    root.commitTransaction();
}

TEST_F(TransactionTest, TheGuardLeavesNothingOpenWithoutUndoStackOrManager) {
    root.disableUndo();
    {
        Transaction const transaction(root);
        thing.set(root, 2);
    }
    EXPECT_FALSE(root.isWithinTransaction());
    Transaction const transaction(root);
    endAll();
}

} // namespace
} // namespace ZEL
