#include "DeviantTest.h"

#include <ZEL/deviants/Transaction.h>

namespace ZEL::tests {
namespace {

struct TransactionTest : OnBothKinds {};

TEST_P(TransactionTest, TheOutermostCommitMakesOneEntryAndLeavesOthersWithTheFormerState) {
    root.beginTransaction("outer");
    root.beginTransaction("inner");
    thing.set(root, 2);
    root.commitTransaction();
    EXPECT_TRUE(root.isWithinTransaction());
    EXPECT_EQ("|2|", history());
    root.commitTransaction();
    EXPECT_FALSE(root.isWithinTransaction() || root.isWithinTransactionUndoOrRedo());
    EXPECT_EQ("outer2 |3|", history());
    EXPECT_EQ("2 1", seen(thing));

    root.beginTransaction();
    root.commitTransaction();
    EXPECT_EQ("outer2 |3|", history()) << "an empty transaction leaves nothing";
    EXPECT_TRUE(root.isWithinTransactionUndoOrRedo()) << "but the flag";

    commitValue(a, thing, 5);
    EXPECT_EQ("2 5", seen(thing));
    EXPECT_EQ(0, a.getUndoStackLength()) << "a named deviant keeps no history";
    EXPECT_TRUE(a.hasUndoStack() && a.getMaximumUndoStackLength() == 1);
}

TEST_P(TransactionTest, CancelEndsAllLevelsAndBringsObjectsToWhatTheyWere) {
    a.beginTransaction();
    thing.set(a, 2);
    thing.end(a);
    EXPECT_EQ("1 -", seen(thing));
    a.cancelTransaction();
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty()) << "the object follows the root again";
    for (Deviant const deviant : {root, a}) {
        SCOPED_TRACE(deviant.getName());
        deviant.cancelTransaction(); // needs no transaction
        EXPECT_RAISES("transaction not started", deviant.commitTransaction());
        commitValue(deviant, thing, 7);
        deviant.beginTransaction();
        deviant.beginTransaction();
        Subject const created = make(deviant, 5);
        Subject const brief = make(deviant, 6);
        brief.end(deviant);
        thing.set(deviant, 8);
        thing.end(deviant);
        deviant.cancelTransaction();
        EXPECT_FALSE(deviant.isWithinTransaction());
        EXPECT_EQ(7, thing.valueIn(deviant));
        EXPECT_EQ("- -", seen(created));
        EXPECT_EQ("- -", seen(brief));
        EXPECT_TRUE(deviant.isWithinTransactionUndoOrRedo());
        EXPECT_RAISES("transaction not started", deviant.commitTransaction());
    }
}

TEST_P(TransactionTest, WithoutUndoStackWritesAreSeenByAllAndCannotBeCancelled) {
    root.disableUndo();
    root.cancelTransaction();
    root.beginTransaction();
    thing.set(root, 2);
    EXPECT_EQ("2 2", seen(thing));
    EXPECT_RAISES("cancelTransaction on deviant without undo stack", root.cancelTransaction());
    EXPECT_TRUE(root.isWithinTransaction());
    root.commitTransaction();
    EXPECT_EQ("2 2", seen(thing));
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty());
    EXPECT_EQ("|2|", history());
    make(root, 1);
    EXPECT_EQ("|3|", history()) << "a creation is no empty transaction";
}

TEST_P(TransactionTest, EachOutermostBeginHasANumberOfItsOwn) {
    auto const & inRoot = *root.getIdentity();
    EXPECT_EQ(0u, inRoot.openTransaction);
    EXPECT_FALSE(inRoot.savedStatesVisible);
    root.beginTransaction();
    auto const first = inRoot.openTransaction;
    root.beginTransaction();
    EXPECT_EQ(first, inRoot.openTransaction);
    EXPECT_TRUE(inRoot.savedStatesVisible);
    a.beginTransaction();
    EXPECT_NE(first, a.getIdentity()->openTransaction);
    root.cancelTransaction();
    EXPECT_EQ(0u, inRoot.openTransaction);
    root.beginTransaction();
    EXPECT_LT(first, inRoot.openTransaction);
    root.commitTransaction();
    a.commitTransaction();
    commitValue(root, thing, 2);
    EXPECT_FALSE(inRoot.savedStatesVisible);
}

// --- old states by hand ----------------------------------------------------------------------------------------------

TEST_P(TransactionTest, SavingByHandAnswersOnlyWithinATransaction) {
    EXPECT_EQ(nullptr, root.saveOldStateOfObject(thing, asState(Deviant::InvalidObject)));
    root.beginTransaction();
    EXPECT_EQ(nullptr, root.saveOldStateOfObject(thing, nullptr));
    EXPECT_EQ(Deviant::FallbackToRoot, root.getSavedOldStateOfObject(thing));
    EXPECT_EQ(Deviant::FallbackToRoot, root.saveOldStateOfObject(thing, asState(Deviant::InvalidObject)));
    EXPECT_EQ(Deviant::InvalidObject, root.getSavedOldStateOfObject(thing));
    root.commitTransaction();
}

TEST_P(TransactionTest, NotificationsAreForTheRootAndSaveTheStateWhateverWasSavedBefore) {
    a.beginTransaction();
    EXPECT_RAISES("notifyObjectIsAboutToChange on non root deviant", a.notifyObjectIsAboutToChange(thing));
    EXPECT_RAISES("notifyObjectIsAboutToBeDeleted on non root deviant", a.notifyObjectIsAboutToBeDeleted(thing));
    EXPECT_RAISES("notifyObjectHasBeenAdded on non root deviant", a.notifyObjectHasBeenAdded(thing));
    a.commitTransaction();
    DeviantAssertions::enableAssertions(false);
    root.notifyObjectIsAboutToChange(thing); // saves nothing, and makes no copy that nobody would own
    root.notifyObjectIsAboutToBeDeleted(thing);
    DeviantAssertions::enableAssertions(true);

    root.beginTransaction();
    thing.set(root, 2);
    root.notifyObjectIsAboutToChange(thing);
    thing.set(root, 3);
    root.cancelTransaction();
    EXPECT_EQ(2, thing.valueIn(root));
    root.beginTransaction();
    root.notifyObjectIsAboutToChange(thing);
    int const counts = thing->numRef();
    thing.set(root, 4);
    EXPECT_EQ(counts, thing->numRef()) << "what is saved by hand is not saved again";
    root.cancelTransaction();
    EXPECT_EQ(2, thing.valueIn(root));

    Subject const foreign = makeBody();
    root.beginTransaction();
    root.notifyObjectHasBeenAdded(foreign);
    foreign->internal_createDeviation(root);
    EXPECT_EQ(Deviant::InvalidObject, root.getSavedOldStateOfObject(foreign));
    EXPECT_EQ(Deviant::InvalidObject, foreign->internal_getDeviation(a));
    root.cancelTransaction();
    EXPECT_EQ("- -", seen(foreign));
}

// --- the guard -------------------------------------------------------------------------------------------------------

TEST_P(TransactionTest, TheGuardCancelsUnlessCommitted) {
    {
        Transaction const transaction(root, "lost");
        thing.set(root, 2);
    }
    EXPECT_EQ(1, thing.valueIn(root));
    Transaction transaction(root, "kept");
    thing.set(root, 2);
    transaction.commit();
    EXPECT_RAISES("transaction not started", transaction.commit());
    EXPECT_EQ("kept2 |3|", history());
}

TEST_P(TransactionTest, AnInnerGuardEndsItsOwnLevelOnceAndAllLevelsUnlessCommitted) {
    Transaction outer(root);
    Transaction inner(root);
    inner.commit();
    EXPECT_RAISES("transaction not started", inner.commit());
    EXPECT_TRUE(root.isWithinTransaction());
    thing.set(root, 2);
    { Transaction const lost(root); }
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_RAISES("transaction not started", outer.commit());
    root.beginTransaction();
    EXPECT_RAISES("transaction not started", outer.commit()) << "that is another transaction";
    root.commitTransaction();
}

TEST_P(TransactionTest, TheGuardLeavesNothingOpenWithoutUndoStackOrManager) {
    root.disableUndo();
    {
        Transaction const transaction(root);
        thing.set(root, 2);
    }
    EXPECT_FALSE(root.isWithinTransaction());
    Transaction const openToTheEnd(root);
    endAll();
}

INSTANTIATE_TEST_SUITE_P(On, TransactionTest, bothKinds, testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests
