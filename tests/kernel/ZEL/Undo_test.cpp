#include "support/TestObjects.h"

#include <ZEL/Deviant.h>
#include <ZEL/DeviantManagerHelper.h>
#include <ZEL/StateMap.h>

#include <functional>
#include <stdexcept>

namespace ZEL {
namespace {

using testsupport::raisedBy;
using testsupport::Thing;

class UndoTest : public testsupport::DeviantFixture {
protected:
    UndoTest() { root.clearUndoStack(); }

    /// Lengths of the undo and the redo side, and the level.
    struct Stack {
        int undo;
        int redo;
        int level;
        bool operator==(Stack const &) const = default;
        friend std::ostream & operator<<(std::ostream & out, Stack const & stack) {
            return out << '(' << stack.undo << ", " << stack.redo << ", " << stack.level << ')';
        }
    };
    [[nodiscard]] Stack stack() const {
        return {root.getUndoStackLength(), root.getRedoStackLength(), root.getCurrentChangeLevel()};
    }
    void commit(char const * name, int value) { commitValue(root, thing, value, name); }

    Thing & thing = make(root, 0); // level 2
};

TEST_F(UndoTest, LevelsAreSwappedWithTheEntriesAndNeverGivenOutTwice) {
    commit("A", 1);
    commit("B", 2);
    EXPECT_EQ((Stack{2, 0, 4}), stack());
    EXPECT_EQ(3, root.getUndoChangeLevelAt(0));
    EXPECT_EQ(2, root.getUndoChangeLevelAt(1));
    root.undo();
    EXPECT_EQ((Stack{1, 1, 3}), stack());
    EXPECT_EQ("A", root.getUndoNameAt(0));
    EXPECT_EQ("B", root.getRedoNameAt(0));
    EXPECT_EQ(4, root.getRedoChangeLevelAt(0));
    EXPECT_EQ(1, thing.valueIn(root));
    root.redo();
    EXPECT_EQ((Stack{2, 0, 4}), stack());
    EXPECT_EQ(2, thing.valueIn(root));
    root.undo();
    commit("C", 3);
    EXPECT_EQ((Stack{2, 0, 5}), stack());
    EXPECT_EQ("C", root.getUndoNameAt(0));
    root.undo();
    EXPECT_EQ((Stack{1, 1, 3}), stack());
}

TEST_F(UndoTest, NothingToUndoOrRedoIsSilent) {
    root.undo();
    root.redo();
    EXPECT_EQ((Stack{0, 0, 2}), stack());
}

TEST_F(UndoTest, PlacesOutsideTheStackAnswerNeutrally) {
    commit("A", 1);
    commit("B", 2);
    root.undo();
    for (int const index : {-1, 1, 100}) {
        EXPECT_EQ("", root.getUndoNameAt(index));
        EXPECT_EQ(-1, root.getUndoChangeLevelAt(index));
        EXPECT_EQ("", root.getRedoNameAt(index));
        EXPECT_EQ(-1, root.getRedoChangeLevelAt(index));
    }
}

TEST_F(UndoTest, OperationsAreRefusedWithinATransactionAndBelowTheRoot) {
    Deviant const a = createDeviant("a");
    struct Case {
        std::string name;
        std::function<void(Deviant)> action;
    };
    Case const cases[] = {
        {"undo", [](Deviant d) { d.undo(); }},
        {"redo", [](Deviant d) { d.redo(); }},
        {"undoToChangeLevel", [](Deviant d) { d.undoToChangeLevel(1); }},
        {"redoToChangeLevel", [](Deviant d) { d.redoToChangeLevel(1); }},
        {"setMaximumUndoStackLength", [](Deviant d) { d.setMaximumUndoStackLength(1); }},
    };
    for (Case const & each : cases) {
        EXPECT_EQ(each.name + " on non-root deviant", raisedBy([&] { each.action(a); }));
        a.beginTransaction();
        root.beginTransaction();
        EXPECT_EQ("cannot " + each.name + " within a transaction", raisedBy([&] { each.action(root); }));
        EXPECT_EQ("cannot " + each.name + " within a transaction", raisedBy([&] { each.action(a); }));
        root.commitTransaction();
        a.commitTransaction();
    }
}

TEST_F(UndoTest, JumpsGoToALevelOfTheirSideOrFailWithoutAStep) {
    for (int value = 1; value <= 4; ++value) {
        commit("step", value);
    }
    root.undoToChangeLevel(3);
    EXPECT_EQ((Stack{1, 3, 3}), stack());
    EXPECT_EQ(1, thing.valueIn(root));
    root.undoToChangeLevel(3);
    root.redoToChangeLevel(3);
    EXPECT_EQ("invalid change level for undoToChangeLevel", raisedBy([&] { root.undoToChangeLevel(5); }));
    EXPECT_EQ("invalid change level for redoToChangeLevel", raisedBy([&] { root.redoToChangeLevel(2); }));
    EXPECT_EQ((Stack{1, 3, 3}), stack());
    root.redoToChangeLevel(6);
    EXPECT_EQ((Stack{4, 0, 6}), stack());
    EXPECT_EQ(4, thing.valueIn(root));
    root.undoToChangeLevel(2);
    EXPECT_EQ(0, thing.valueIn(root));
}

TEST_F(UndoTest, UndoAndRedoOfCreationAndDeletionKeepTheBody) {
    Thing & created = make(root, 5);
    root.undo();
    EXPECT_FALSE(created.deviant_isValid(root));
    EXPECT_EQ(Deviant::InvalidObject, created.internal_getDeviation(root));
    root.redo();
    EXPECT_EQ(5, created.valueIn(root));
    root.beginTransaction("end");
    created.set(root, 6);
    created.end(root);
    root.commitTransaction();
    EXPECT_FALSE(created.deviant_isValid(root));
    root.undo();
    EXPECT_EQ(5, created.valueIn(root));
    root.redo();
    EXPECT_FALSE(created.deviant_isValid(root));
}

TEST_F(UndoTest, TheOldestEntriesGoWhenTheStackIsFull) {
    EXPECT_EQ(50, root.getMaximumUndoStackLength());
    root.setMaximumUndoStackLength(2);
    commit("A", 1);
    commit("B", 2);
    commit("C", 3);
    EXPECT_EQ((Stack{2, 0, 5}), stack());
    EXPECT_EQ("C", root.getUndoNameAt(0));
    EXPECT_EQ("B", root.getUndoNameAt(1));
}

TEST_F(UndoTest, TrimmingDoesNotShiftTheDivider) {
    commit("A", 1);
    commit("B", 2);
    commit("C", 3);
    root.undo();
    root.undo();
    ASSERT_EQ((Stack{1, 2, 3}), stack());
    root.setMaximumUndoStackLength(2); // A goes
    EXPECT_EQ((Stack{1, 1, 3}), stack());
    EXPECT_EQ("B", root.getUndoNameAt(0));
    root.setMaximumUndoStackLength(-5);
    EXPECT_EQ((Stack{0, 0, 3}), stack());
    EXPECT_EQ(0, root.getMaximumUndoStackLength());
    EXPECT_FALSE(root.hasUndoStack());
}

TEST_F(UndoTest, ClearingWorksOnBothSidesAndAlsoWithinATransaction) {
    commit("A", 1);
    commit("B", 2);
    root.undo();
    root.clearRedoStack();
    EXPECT_EQ((Stack{1, 0, 3}), stack());
    root.redo();
    EXPECT_EQ(1, thing.valueIn(root));
    root.beginTransaction();
    thing.set(root, 5);
    root.clearUndoStack();
    root.cancelTransaction();
    EXPECT_EQ((Stack{0, 0, 3}), stack());
    EXPECT_EQ(1, thing.valueIn(root));
    commit("C", 2);
    root.disableUndo();
    EXPECT_EQ((Stack{0, 0, 5}), stack());
    EXPECT_FALSE(root.hasUndoStack());
    root.setMaximumUndoStackLength(3);
    commit("D", 3);
    EXPECT_EQ(1, root.getUndoStackLength());
    Deviant const a = createDeviant("a");
    a.clearUndoStack();
    a.clearRedoStack();
    a.disableUndo();
    EXPECT_FALSE(a.hasUndoStack());
}

TEST_F(UndoTest, OtherDeviantsAreIsolatedFromUndoAndRedo) {
    commit("A", 1);
    Deviant const a = createDeviant("a");
    root.undo();
    EXPECT_EQ(0, thing.valueIn(root));
    EXPECT_EQ(1, thing.valueIn(a));
    EXPECT_EQ(1u, a.getObjectsDeviatingFromRoot()->size());
    root.redo();
    EXPECT_EQ(1, thing.valueIn(a));
}

TEST_F(UndoTest, AFailingHelperLeavesTheStackAndTheObjectsAsTheyWere) {
    struct Failing : DeviantManagerHelper {
        void undo(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) override {
            doTheJob(report);
            throw std::runtime_error("undo");
        }
        void redo(ReportOfChanges<ClassObject, FALSE_TYPE> const &) override { throw std::runtime_error("redo"); }
    };
    commit("A", 1);
    commit("B", 2);
    root.undo();
    manager->setHelper(new Failing);
    EXPECT_EQ("undo", raisedBy([&] { root.undo(); }));
    EXPECT_EQ("redo", raisedBy([&] { root.redo(); }));
    EXPECT_EQ((Stack{1, 1, 3}), stack());
    EXPECT_FALSE(root.isWithinTransactionUndoOrRedo());
    EXPECT_EQ(1, thing.valueIn(root));
    manager->setHelper(nullptr);
    root.undo();
    EXPECT_EQ(0, thing.valueIn(root));
    root.redo();
    EXPECT_EQ(1, thing.valueIn(root));
}

} // namespace
} // namespace ZEL
