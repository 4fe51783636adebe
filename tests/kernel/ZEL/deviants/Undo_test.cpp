#include "DeviantTest.h"

#include <functional>
#include <stdexcept>

namespace ZEL::tests {
namespace {

struct UndoTest : OnBothKinds {
    /// Makes an entry of each letter and sets the thing to 2, 3 and so on.
    void commit(std::string const & names) {
        for (char const name : names) {
            commitValue(root, thing, ++last, std::string(1, name));
        }
    }

    int last = 1;
};

TEST_P(UndoTest, LevelsAreSwappedWithTheEntriesAndNeverGivenOutTwice) {
    root.undo();
    root.redo();
    EXPECT_EQ("|2|", history()) << "nothing to undo or redo is silent";
    commit("AB");
    EXPECT_EQ("A2 B3 |4|", history());
    Deviant const late = createDeviant("late");
    root.undo();
    EXPECT_EQ("A2 |3| B4", history());
    EXPECT_EQ(2, thing.valueIn(root));
    EXPECT_EQ(3, thing.valueIn(late)) << "other deviants are isolated";
    for (int const index : {-1, 1, 100}) {
        EXPECT_EQ("", root.getUndoNameAt(index));
        EXPECT_EQ(-1, root.getUndoChangeLevelAt(index));
        EXPECT_EQ("", root.getRedoNameAt(index));
        EXPECT_EQ(-1, root.getRedoChangeLevelAt(index));
    }
    root.redo();
    EXPECT_EQ("A2 B3 |4|", history());
    EXPECT_EQ(3, thing.valueIn(root));
    root.undo();
    commit("C");
    EXPECT_EQ("A2 C3 |5|", history());
    root.undo();
    EXPECT_EQ("A2 |3| C5", history());
}

TEST_P(UndoTest, OperationsAreRefusedWithinATransactionAndBelowTheRoot) {
    std::pair<std::string, std::function<void(Deviant)>> const operations[] = {
        {"undo", [](Deviant d) { d.undo(); }},
        {"redo", [](Deviant d) { d.redo(); }},
        {"undoToChangeLevel", [](Deviant d) { d.undoToChangeLevel(1); }},
        {"redoToChangeLevel", [](Deviant d) { d.redoToChangeLevel(1); }},
        {"setMaximumUndoStackLength", [](Deviant d) { d.setMaximumUndoStackLength(1); }},
    };
    for (auto const & each : operations) {
        EXPECT_RAISES(each.first + " on non-root deviant", each.second(a));
        for (Deviant const deviant : {root, a}) {
            deviant.beginTransaction();
            EXPECT_RAISES("cannot " + each.first + " within a transaction", each.second(deviant));
            deviant.commitTransaction();
        }
    }
}

TEST_P(UndoTest, JumpsGoToALevelOfTheirSideOrFailWithoutAStep) {
    commit("ABCD");
    root.undoToChangeLevel(3);
    EXPECT_EQ("A2 |3| B4 C5 D6", history());
    EXPECT_EQ(2, thing.valueIn(root));
    root.undoToChangeLevel(3);
    root.redoToChangeLevel(3);
    EXPECT_RAISES("invalid change level for undoToChangeLevel", root.undoToChangeLevel(5));
    EXPECT_RAISES("invalid change level for redoToChangeLevel", root.redoToChangeLevel(2));
    EXPECT_EQ("A2 |3| B4 C5 D6", history());
    root.redoToChangeLevel(6);
    EXPECT_EQ("A2 B3 C4 D5 |6|", history());
    EXPECT_EQ(5, thing.valueIn(root));
    root.undoToChangeLevel(2);
    EXPECT_EQ(1, thing.valueIn(root));
}

TEST_P(UndoTest, TheOldestEntriesGoWithoutAShiftOfTheDivider) {
    EXPECT_EQ(50, root.getMaximumUndoStackLength());
    root.setMaximumUndoStackLength(3);
    commit("ABCD");
    EXPECT_EQ("B3 C4 D5 |6|", history());
    root.undo();
    root.undo();
    EXPECT_EQ("B3 |4| C5 D6", history());
    root.setMaximumUndoStackLength(2);
    EXPECT_EQ("C5 |4| D6", history());
    root.setMaximumUndoStackLength(-5);
    EXPECT_EQ("|4|", history());
    EXPECT_EQ(0, root.getMaximumUndoStackLength());
    EXPECT_FALSE(root.hasUndoStack());
}

TEST_P(UndoTest, ClearingWorksOnBothSidesAndAlsoWithinATransaction) {
    commit("AB");
    root.undo();
    root.clearRedoStack();
    EXPECT_EQ("A2 |3|", history());
    root.beginTransaction();
    thing.set(root, 5);
    root.clearUndoStack();
    root.cancelTransaction();
    EXPECT_EQ("|3|", history());
    EXPECT_EQ(2, thing.valueIn(root));
    commit("C");
    root.disableUndo();
    EXPECT_EQ("|5|", history());
    EXPECT_FALSE(root.hasUndoStack());
    root.setMaximumUndoStackLength(3);
    commit("D");
    EXPECT_EQ("D5 |6|", history());
    a.clearUndoStack();
    a.clearRedoStack();
    a.disableUndo();
    EXPECT_FALSE(a.hasUndoStack());
}

TEST_P(UndoTest, AFailingHelperLeavesTheStackAndTheObjectsAsTheyWere) {
    struct Failing : DeviantManagerHelper {
        void undo(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) override {
            doTheJob(report);
            throw std::runtime_error("undo");
        }
        void redo(ReportOfChanges<ClassObject, FALSE_TYPE> const &) override { throw std::runtime_error("redo"); }
    };
    commit("AB");
    root.undo();
    manager->setHelper(new Failing);
    EXPECT_EQ("undo", raisedText([&] { root.undo(); }));
    EXPECT_EQ("redo", raisedText([&] { root.redo(); }));
    EXPECT_EQ("A2 |3| B4", history());
    EXPECT_FALSE(root.isWithinTransactionUndoOrRedo());
    EXPECT_EQ(2, thing.valueIn(root));
    manager->setHelper(nullptr);
    root.undo();
    EXPECT_EQ(1, thing.valueIn(root));
    root.redo();
    EXPECT_EQ(2, thing.valueIn(root));
}

INSTANTIATE_TEST_SUITE_P(On, UndoTest, bothKinds, testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests
