#include "support/TestObjects.h"

#include <ZEL/DeviantManagerHelper.h>
#include <ZEL/ListenerHolder.h>
#include <ZEL/StateMap.h>
#include <ZEL/Transaction.h>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace ZEL {
namespace {

using testsupport::raisedBy;
using testsupport::SpecialThing;
using testsupport::Thing;

/// Writes down what it is called with; answers as it is told.
class Recorder : public ListenerBase {
public:
    Recorder(std::string name, std::vector<std::string> & calls) : fName(std::move(name)), fCalls(calls) {}

    void modifyOnCommit(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) { record("modify", report, onModify); }
    bool validateOnCommit(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        record("validate", report, onValidate);
        return agrees;
    }
    void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
        record("observe", report, onObserve);
    }
    void onDeviantDestroyed() override {
        fCalls.push_back(fName + " destroyed");
        if (onDestroyed) {
            onDestroyed();
        }
    }

    bool agrees = true;
    std::function<void(Deviant target, Deviant view)> onModify;
    std::function<void(Deviant target, Deviant view)> onValidate;
    std::function<void(Deviant target, Deviant view)> onObserve;
    std::function<void()> onDestroyed;

private:
    template <class Report> void record(char const * role, Report const & report, auto const & action) {
        fCalls.push_back(fName + ' ' + role + ' ' + std::to_string(report.created.size()) + ' ' +
                         std::to_string(report.deleted.size()) + ' ' + std::to_string(report.modified.size()));
        if (action) {
            action(report.getTargetDeviant(), report.sourceDeviant);
        }
    }

    std::string fName;
    std::vector<std::string> & fCalls;
};

using Calls = std::vector<std::string>;

class ListenerTest : public testsupport::DeviantFixture {
protected:
    ~ListenerTest() override { endAll(); } // before the listeners go

    [[nodiscard]] Calls takeCalls() { return std::exchange(calls, {}); }
    void set(int value) { commitValue(root, thing, value, "set"); }

    Calls calls;
    Recorder one{"one", calls};
    Recorder two{"two", calls};
    Recorder three{"three", calls};
    Thing & thing = make(root, 1);
};

// --- registration ----------------------------------------------------------------------------------------------------

/// A holder that tells of its end.
class CountedHolder : public internal::ListenerHolderBase {
public:
    CountedHolder(ListenerBase & listener, int & alive) : fListener(listener), fAlive(alive) { ++fAlive; }
    ~CountedHolder() override { --fAlive; }
    ListenerBase * getListener() override { return &fListener; }
    void reset(Deviant, Deviant) override {}
    void callModifier() override {}
    bool callValidator() override { return true; }
    void callObserver() override {}

private:
    ListenerBase & fListener;
    int & fAlive;
};

TEST_F(ListenerTest, EachListTakesAListenerOnce) {
    int alive = 0;
    root.registerModifierOnCommit(new CountedHolder(one, alive));
    root.registerObservingListener(new CountedHolder(one, alive));
    EXPECT_EQ("listener already registered with deviant",
              raisedBy([&] { root.registerObservingListener(new CountedHolder(one, alive)); }));
    EXPECT_EQ(2, alive) << "the refused holder is gone";
    EXPECT_EQ("listener not registered with deviant", raisedBy([&] { root.unregisterValidatorOnCommit(&one); }));
    EXPECT_EQ("cannot unregister null listener with deviant",
              raisedBy([&] { root.unregisterModifierOnCommit(nullptr); }));
    EXPECT_EQ("An Internal Error has occurred", raisedBy([&] { root.registerModifierOnCommit(nullptr); }));
    root.unregisterModifierOnCommit(&one);
    EXPECT_EQ("listener not registered with deviant", raisedBy([&] { root.unregisterModifierOnCommit(&one); }));
    EXPECT_EQ(1, alive);
    endAll();
    EXPECT_EQ(0, alive) << "the root's holders go with the manager";
    EXPECT_TRUE(calls.empty()) << "and nobody is told";
}

// --- the order of a commit -------------------------------------------------------------------------------------------

TEST_F(ListenerTest, AllModifiersThenAllValidatorsThenAllObserversInOrderOfRegistration) {
    for (Recorder * const each : {&two, &one}) {
        registerObservingListener(root, *each);
        registerValidatorOnCommit(root, *each);
        registerModifierOnCommit(root, *each);
    }
    registerModifierOnCommit(root, three);
    set(2);
    EXPECT_EQ((Calls{"two modify 0 0 1", "one modify 0 0 1", "three modify 0 0 1", "two validate 0 0 1",
                     "one validate 0 0 1", "two observe 0 0 1", "one observe 0 0 1"}),
              takeCalls());
    root.undo();
    EXPECT_EQ((Calls{"two observe 0 0 1", "one observe 0 0 1"}), takeCalls());
    root.redo();
    EXPECT_EQ((Calls{"two observe 0 0 1", "one observe 0 0 1"}), takeCalls());
    root.beginTransaction();
    thing.set(root, 5);
    root.cancelTransaction();
    root.beginTransaction();
    root.commitTransaction();
    EXPECT_EQ(Calls(), takeCalls());
    root.disableUndo();
    make(root, 1);
    EXPECT_EQ(Calls(), takeCalls()) << "no listener without undo stack";
}

TEST_F(ListenerTest, TheReportTellsCreatedDeletedAndModifiedObjectsInTheOrderOfTheirAddresses) {
    std::vector<Thing *> modified{&thing, &make(root, 1), &make(root, 1), &make(root, 1)};
    Thing & ended = make(root, 2);
    struct Listener : ListenerBase {
        void observeChanges(ReportOfChanges<ImmutableClassObject, TRUE_TYPE> const & report) {
            for (auto const * const sequence : {&report.created, &report.deleted, &report.modified}) {
                seen.emplace_back();
                for (ImmutableClassObject const & object : *sequence) {
                    seen.back().push_back(object.getImplementationWithoutAssert());
                    target = object.getDeviant();
                }
            }
            source = report.sourceDeviant;
            sourceName = source.getName();
        }
        std::vector<std::vector<NSInterface::ClassObjectIntf const *>> seen;
        Deviant target;
        Deviant source;
        std::string sourceName;
    } listener;
    registerObservingListener(root, listener);
    root.beginTransaction();
    Thing & created = make(root, 3);
    Thing & brief = make(root, 4);
    brief.end(root);
    ended.set(root, 5);
    ended.end(root);
    for (auto each = modified.rbegin(); each != modified.rend(); ++each) {
        (*each)->set(root, 6);
    }
    root.commitTransaction();
    ASSERT_EQ(3u, listener.seen.size());
    EXPECT_EQ((std::vector<NSInterface::ClassObjectIntf const *>{&created}), listener.seen[0]);
    EXPECT_EQ((std::vector<NSInterface::ClassObjectIntf const *>{&ended}), listener.seen[1]);
    std::vector<NSInterface::ClassObjectIntf const *> expected(modified.begin(), modified.end());
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(expected, listener.seen[2]);
    EXPECT_EQ(root, listener.target);
    EXPECT_EQ("<internal: transaction>", listener.sourceName);
    EXPECT_EQ(-1, listener.source.getDeviantId());
    EXPECT_FALSE(listener.source.isValid()) << "a view ends with the commit";
    EXPECT_EQ("object accessed after its deviant has been removed",
              raisedBy([&] { static_cast<void>(thing.valueIn(listener.source)); }));
    root.unregisterObservingListener(&listener);
}

TEST_F(ListenerTest, TheViewShowsTheStateBeforeAndCannotBeWrittenTo) {
    Deviant const a = createDeviant("a");
    int calledFor = 0;
    auto const check = [&](Deviant target, Deviant view) {
        ++calledFor;
        EXPECT_EQ(1, thing.valueIn(view));
        EXPECT_EQ(2, thing.valueIn(target));
        EXPECT_EQ(-1 - target.getDeviantId(), view.getDeviantId());
        EXPECT_FALSE(view.isRootDeviant());
        std::string const refusal = " Deviant '" + view.getName() + "' not opened for transactions.\n";
        EXPECT_EQ(refusal, raisedBy([&] { view.beginTransaction(); }));
        EXPECT_EQ(refusal, raisedBy([&] { thing.set(view, 3); }));
    };
    one.onModify = one.onValidate = one.onObserve = check;
    for (Deviant const deviant : {root, a}) {
        registerModifierOnCommit(deviant, one);
        registerValidatorOnCommit(deviant, one);
        registerObservingListener(deviant, one);
    }
    commitValue(a, thing, 2);
    EXPECT_EQ(3, calledFor);
    set(2);
    EXPECT_EQ(6, calledFor);
    one.onObserve = [&](Deviant target, Deviant view) {
        ++calledFor;
        EXPECT_EQ("<internal: undo/redo>", view.getName());
        EXPECT_EQ(1, thing.valueIn(target));
        EXPECT_EQ(2, thing.valueIn(view));
    };
    root.undo();
    EXPECT_EQ(7, calledFor);
    manager->removeDeviantWithName("a");
}

TEST_F(ListenerTest, StatesOfADeviantInTheSinglePhases) {
    int const level = root.getCurrentChangeLevel();
    int const entries = root.getUndoStackLength();
    auto const inTransaction = [&](Deviant target, Deviant) {
        EXPECT_TRUE(target.isWithinTransaction());
        EXPECT_TRUE(target.isWithinTransactionUndoOrRedo());
    };
    one.onModify = one.onValidate = inTransaction;
    one.onObserve = [&](Deviant target, Deviant) {
        EXPECT_FALSE(target.isWithinTransaction());
        EXPECT_FALSE(target.isWithinTransactionUndoOrRedo());
        EXPECT_EQ(level, target.getCurrentChangeLevel());
        EXPECT_EQ(entries, target.getUndoStackLength());
    };
    registerModifierOnCommit(root, one);
    registerValidatorOnCommit(root, one);
    registerObservingListener(root, one);
    set(2);
    EXPECT_EQ(level + 1, root.getCurrentChangeLevel());
    EXPECT_EQ(entries + 1, root.getUndoStackLength());
}

TEST_F(ListenerTest, AHolderCanBeRestrictedToClasses) {
    SpecialThing & special = make<SpecialThing>(root, 1);
    auto * const holder = new ListenerHolder<Recorder>(one);
    holder->handleOnly<SpecialThing>();
    root.registerObservingListener(holder);
    registerObservingListener(root, two);
    root.beginTransaction();
    thing.set(root, 2);
    special.set(root, 2);
    root.commitTransaction();
    set(3);
    EXPECT_EQ((Calls{"one observe 0 0 1", "two observe 0 0 2", "one observe 0 0 0", "two observe 0 0 1"}), takeCalls());
}

TEST_F(ListenerTest, AModifierWritesIntoTheTransactionAndGetsNoSecondTurn) {
    Thing & other = make(root, 1);
    one.onModify = [&](Deviant target, Deviant) { other.set(target, 9); };
    registerModifierOnCommit(root, one);
    registerModifierOnCommit(root, two);
    registerValidatorOnCommit(root, three);
    set(2);
    EXPECT_EQ((Calls{"one modify 0 0 1", "two modify 0 0 1", "three validate 0 0 2"}), takeCalls());
    root.undo();
    EXPECT_EQ(1, other.valueIn(root));
}

TEST_F(ListenerTest, ARefusingValidatorCancelsAndTheCommitReturns) {
    int const level = root.getCurrentChangeLevel();
    int const entries = root.getUndoStackLength();
    registerModifierOnCommit(root, one);
    registerValidatorOnCommit(root, one);
    registerValidatorOnCommit(root, two);
    registerObservingListener(root, three);
    one.agrees = false;
    set(2);
    EXPECT_EQ((Calls{"one modify 0 0 1", "one validate 0 0 1"}), takeCalls());
    EXPECT_EQ(1, thing.valueIn(root));
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ(level, root.getCurrentChangeLevel());
    EXPECT_EQ(entries, root.getUndoStackLength());
}

// --- listeners that change the lists ---------------------------------------------------------------------------------

TEST_F(ListenerTest, AListenerUnregisteredByAnEarlierOneIsNotCalled) {
    for (Recorder * const each : {&one, &two, &three}) {
        registerModifierOnCommit(root, *each);
        registerObservingListener(root, *each);
    }
    one.onModify = [&](Deviant target, Deviant) { target.unregisterModifierOnCommit(&two); };
    two.onObserve = [&](Deviant target, Deviant) { target.unregisterObservingListener(&one); };
    three.onObserve = [&](Deviant target, Deviant) {
        target.unregisterObservingListener(&three);
        target.unregisterObservingListener(&two);
    };
    set(2);
    EXPECT_EQ((Calls{"one modify 0 0 1", "three modify 0 0 1", "one observe 0 0 1", "two observe 0 0 1",
                     "three observe 0 0 1"}),
              takeCalls());
    one.onModify = nullptr;
    set(3);
    EXPECT_EQ((Calls{"one modify 0 0 1", "three modify 0 0 1"}), takeCalls());
}

TEST_F(ListenerTest, AListenerRegisteredDuringAPhaseIsCalledFromTheNextOn) {
    one.onObserve = [&](Deviant target, Deviant) {
        registerObservingListener(target, two);
        one.onObserve = nullptr;
    };
    registerObservingListener(root, one);
    set(2);
    set(3);
    EXPECT_EQ((Calls{"one observe 0 0 1", "one observe 0 0 1", "two observe 0 0 1"}), takeCalls());
}

TEST_F(ListenerTest, ARemovedDeviantTellsEachListenerOncePerList) {
    Deviant const a = createDeviant("a");
    registerObservingListener(a, one);
    registerValidatorOnCommit(a, two);
    registerModifierOnCommit(a, one);
    registerModifierOnCommit(a, three);
    registerModifierOnCommit(a, two);
    one.onDestroyed = [&] {
        one.onDestroyed = nullptr;
        a.unregisterModifierOnCommit(&one);
        a.unregisterModifierOnCommit(&three);
    };
    two.onDestroyed = [] { throw std::runtime_error("unwilling"); };
    EXPECT_EQ("unwilling", raisedBy([&] { manager->removeDeviantWithName("a"); }));
    EXPECT_EQ((Calls{"one destroyed", "two destroyed", "two destroyed", "one destroyed"}), takeCalls());
    EXPECT_FALSE(a.isValid());
    EXPECT_EQ(1u, manager->getDeviants().size());
    registerObservingListener(createDeviant("b"), one);
    endAll();
    EXPECT_EQ((Calls{"one destroyed"}), takeCalls());
}

TEST_F(ListenerTest, AnObserverMayRemoveItsDeviant) {
    Deviant const a = createDeviant("a");
    one.onObserve = [&](Deviant, Deviant) { manager->removeDeviantWithName("a"); };
    registerObservingListener(a, one);
    registerObservingListener(a, two);
    commitValue(a, thing, 2);
    EXPECT_EQ((Calls{"one observe 0 0 1", "one destroyed", "two destroyed"}), takeCalls());
    EXPECT_FALSE(a.isValid());
}

// --- listeners that end or open transactions -------------------------------------------------------------------------

TEST_F(ListenerTest, AListenerThatCancelsEndsTheCommit) {
    int const entries = root.getUndoStackLength();
    for (auto * const action : {&one.onModify, &one.onValidate}) {
        *action = [](Deviant target, Deviant) { target.cancelTransaction(); };
        registerModifierOnCommit(root, one);
        registerValidatorOnCommit(root, one);
        registerObservingListener(root, two);
        set(2);
        EXPECT_EQ(1, thing.valueIn(root));
        EXPECT_FALSE(root.isWithinTransaction());
        EXPECT_EQ(entries, root.getUndoStackLength());
        *action = nullptr;
        root.unregisterModifierOnCommit(&one);
        root.unregisterValidatorOnCommit(&one);
        root.unregisterObservingListener(&two);
    }
    EXPECT_EQ((Calls{"one modify 0 0 1", "one modify 0 0 1", "one validate 0 0 1"}), takeCalls());
}

TEST_F(ListenerTest, AListenerThatCommitsOnceTooOftenLeavesAUsableDeviant) {
    one.onModify = [&](Deviant target, Deviant) {
        one.onModify = nullptr;
        target.commitTransaction();
    };
    registerModifierOnCommit(root, one);
    set(2);
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ("set", root.getUndoNameAt(0));
    root.undo();
    EXPECT_EQ(1, thing.valueIn(root));
    set(3);
    EXPECT_EQ(3, thing.valueIn(root));
}

TEST_F(ListenerTest, AListenerThatLeavesATransactionOpenPutsTheCommitOff) {
    one.onModify = [&](Deviant target, Deviant) {
        one.onModify = nullptr;
        target.beginTransaction();
    };
    registerModifierOnCommit(root, one);
    registerObservingListener(root, two);
    set(2);
    EXPECT_EQ((Calls{"one modify 0 0 1"}), takeCalls());
    EXPECT_TRUE(root.isWithinTransaction());
    root.commitTransaction();
    EXPECT_EQ((Calls{"one modify 0 0 1", "two observe 0 0 1"}), takeCalls());
}

TEST_F(ListenerTest, AnObserverMayWorkInTheSameDeviantAndTheHistoryStaysInOrder) {
    Thing & other = make(root, 1);
    int const entries = root.getUndoStackLength();
    bool done = false;
    one.onObserve = [&](Deviant target, Deviant view) {
        if (!std::exchange(done, true)) {
            commitValue(target, other, 7, "answer");
            EXPECT_EQ(1, thing.valueIn(view)) << "the view of the outer commit still stands";
        }
    };
    registerObservingListener(root, one);
    registerObservingListener(root, two);
    set(2);
    EXPECT_EQ((Calls{"one observe 0 0 1", "one observe 0 0 1", "two observe 0 0 1", "two observe 0 0 1"}), takeCalls());
    EXPECT_EQ(entries + 2, root.getUndoStackLength());
    EXPECT_EQ("answer", root.getUndoNameAt(0));
    EXPECT_EQ("set", root.getUndoNameAt(1));
    root.undo();
    EXPECT_EQ(1, other.valueIn(root));
    EXPECT_EQ(2, thing.valueIn(root));
    root.undo();
    EXPECT_EQ(1, thing.valueIn(root));
    root.redo();
    root.redo();
    EXPECT_EQ(7, other.valueIn(root));
}

TEST_F(ListenerTest, AnObjectThatFollowsTheRootAgainIsModifiedForLateObserversToo) {
    Thing & other = make(root, 1);
    Deviant const draft = createDeviant("draft");
    commitValue(draft, thing, 5);
    bool done = false;
    one.onObserve = [&](Deviant target, Deviant) {
        if (!std::exchange(done, true)) {
            commitValue(target, other, 7);
        }
    };
    registerObservingListener(draft, one);
    registerObservingListener(draft, two);
    draft.beginTransaction("back to the root");
    draft.syncFromRoot();
    draft.commitTransaction();
    EXPECT_EQ((Calls{"one observe 0 0 1", "one observe 0 0 1", "two observe 0 0 1", "two observe 0 0 1"}), takeCalls());
    EXPECT_EQ(nullptr, draft.getStateOfObject(&thing)) << "and leaves no marker";
}

TEST_F(ListenerTest, AnObserverOfAReplayMayCommitOrClear) {
    Thing & other = make(root, 1);
    registerObservingListener(root, one);
    using Action = std::function<void(Deviant)>;
    struct Case {
        char const * name;
        Action action;
        int undo;
        int redo;
    };
    root.setMaximumUndoStackLength(2);
    Case const cases[] = {
        {"commit", [&](Deviant target) { commitValue(target, other, 5, "answer"); }, 2, 0},
        {"clear all", [](Deviant target) { target.clearUndoStack(); }, 0, 0},
        {"clear redo", [](Deviant target) { target.clearRedoStack(); }, 1, 0},
        {"maximum", [](Deviant target) { target.setMaximumUndoStackLength(0); }, 0, 0},
        {"undo", [](Deviant target) { target.undo(); }, 0, 2},
    };
    for (Case const & each : cases) {
        SCOPED_TRACE(each.name);
        one.onObserve = nullptr;
        root.setMaximumUndoStackLength(2);
        set(2);
        set(3);
        one.onObserve = [&](Deviant target, Deviant) {
            one.onObserve = nullptr;
            each.action(target);
        };
        root.undo();
        EXPECT_EQ(each.undo, root.getUndoStackLength());
        EXPECT_EQ(each.redo, root.getRedoStackLength());
    }
    root.setMaximumUndoStackLength(2);
    root.redo();
    set(2);
    set(3);
    root.undo();
    one.onObserve = [&](Deviant target, Deviant) {
        one.onObserve = nullptr;
        commitValue(target, other, 6, "answer");
    };
    root.redo();
    EXPECT_EQ("answer", root.getUndoNameAt(0));
    EXPECT_EQ(2, root.getUndoStackLength());
    root.undo();
    EXPECT_EQ(3, thing.valueIn(root));
}

TEST_F(ListenerTest, AJumpThatObserversHinderEnds) {
    root.clearUndoStack();
    int const level = root.getCurrentChangeLevel();
    Thing & other = make(root, 0);
    set(2);
    int answers = 0;
    registerObservingListener(root, one);
    bool busy = false;
    one.onObserve = [&](Deviant target, Deviant) {
        if (!std::exchange(busy, true)) {
            commitValue(target, other, ++answers);
            busy = false;
        }
    };
    EXPECT_EQ("invalid change level for undoToChangeLevel", raisedBy([&] { root.undoToChangeLevel(level); }));
}

// --- listeners that throw --------------------------------------------------------------------------------------------

TEST_F(ListenerTest, WhatAModifierOrValidatorThrowsLeavesTheTransactionOpen) {
    auto const fail = [](Deviant, Deviant) { throw std::runtime_error("failed"); };
    for (auto * const action : {&one.onModify, &one.onValidate}) {
        registerModifierOnCommit(root, one);
        registerValidatorOnCommit(root, one);
        *action = fail;
        root.beginTransaction();
        thing.set(root, 2);
        EXPECT_EQ("failed", raisedBy([&] { root.commitTransaction(); }));
        EXPECT_TRUE(root.isWithinTransaction());
        EXPECT_EQ(2, thing.valueIn(root));
        root.cancelTransaction();
        EXPECT_EQ(1, thing.valueIn(root));
        {
            Transaction transaction(root);
            thing.set(root, 3);
            EXPECT_EQ("failed", raisedBy([&] { transaction.commit(); }));
        }
        EXPECT_EQ(1, thing.valueIn(root));
        *action = nullptr;
        root.unregisterModifierOnCommit(&one);
        root.unregisterValidatorOnCommit(&one);
    }
}

TEST_F(ListenerTest, WhatAnObserverThrowsComesOutOfAFinishedOperation) {
    int const entries = root.getUndoStackLength();
    int const level = root.getCurrentChangeLevel();
    one.onObserve = [](Deviant, Deviant) { throw std::runtime_error("failed"); };
    registerObservingListener(root, one);
    registerObservingListener(root, two);
    EXPECT_EQ("failed", raisedBy([&] { set(2); }));
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ(entries + 1, root.getUndoStackLength());
    EXPECT_EQ(level + 1, root.getCurrentChangeLevel());
    EXPECT_EQ("failed", raisedBy([&] { root.undo(); }));
    EXPECT_EQ(1, thing.valueIn(root));
    EXPECT_EQ(entries, root.getUndoStackLength());
    EXPECT_EQ(level, root.getCurrentChangeLevel());
    EXPECT_EQ("failed", raisedBy([&] { root.redo(); }));
    EXPECT_EQ(level + 1, root.getCurrentChangeLevel());
    EXPECT_EQ((Calls{"one observe 0 0 1", "one observe 0 0 1", "one observe 0 0 1"}), takeCalls());
}

TEST_F(ListenerTest, TheManagerEndsWhateverListenersDo) {
    Deviant const a = createDeviant("a");
    for (Deviant const each : {root, a}) {
        registerModifierOnCommit(each, one);
        registerValidatorOnCommit(each, two);
        registerObservingListener(each, three);
        each.beginTransaction();
        each.beginTransaction();
        thing.set(each, 2);
    }
    one.onModify = [](Deviant target, Deviant) { target.beginTransaction(); };
    three.onDestroyed = [] { throw std::runtime_error("failed"); };
    endAll();
    EXPECT_EQ((Calls{"one modify 0 0 1", "one destroyed", "two destroyed", "three destroyed", "one modify 0 0 1"}),
              takeCalls());
}

// --- replay ----------------------------------------------------------------------------------------------------------

TEST_F(ListenerTest, AClientsHelperIsCalledByTheKindOfTheReplay) {
    struct Helper : DeviantManagerHelper {
        using Report = ReportOfChanges<ClassObject, FALSE_TYPE>;
        explicit Helper(Calls & calls) : fCalls(calls) {}
        void cancelTransaction(Report const & report) override { record("cancel", report); }
        void undo(Report const & report) override { record("undo", report); }
        void redo(Report const & report) override { record("redo", report); }
        void record(std::string const & kind, Report const & report) {
            fCalls.push_back(kind + ' ' + std::to_string(report.created.size()) + ' ' +
                             std::to_string(report.deleted.size()) + ' ' + std::to_string(report.modified.size()) +
                             ' ' + report.sourceDeviant.getName());
            doTheJob(report);
        }
        Calls & fCalls;
    };
    manager->setHelper(new Helper(calls));
    root.beginTransaction();
    make(root, 1);
    thing.set(root, 2);
    root.cancelTransaction();
    root.beginTransaction();
    root.cancelTransaction();
    Thing & other = make(root, 1);
    root.beginTransaction();
    other.end(root);
    thing.set(root, 2);
    root.commitTransaction();
    root.undo();
    root.redo();
    EXPECT_EQ((Calls{"cancel 0 1 1 <internal: cancelTransaction>", "cancel 0 0 0 <internal: cancelTransaction>",
                     "undo 1 0 1 <internal: undo/redo>", "redo 0 1 1 <internal: undo/redo>"}),
              takeCalls());
}

TEST_F(ListenerTest, AReportOfNothingChangesNothing) {
    struct Helper : DeviantManagerHelper {
        void undo(ReportOfChanges<ClassObject, FALSE_TYPE> const & report) override {
            auto const nothing = internal::makeWritableReport({}, report.getTargetDeviant(), report.sourceDeviant);
            doTheJob(nothing);
        }
    };
    set(2);
    manager->setHelper(new Helper);
    root.undo();
    EXPECT_EQ(2, thing.valueIn(root));
}

TEST(ChangeReport, TheRulesOfReports) {
    using internal::Change;
    testsupport::ThingState stateObject;
    NSInterface::ObjectIntf * const real = &stateObject;
    NSInterface::ObjectIntf * const invalid = testsupport::asState(Deviant::InvalidObject);
    NSInterface::ObjectIntf * const fallback = testsupport::asState(Deviant::FallbackToRoot);
    struct Case {
        NSInterface::ObjectIntf * wanted;
        NSInterface::ObjectIntf * present;
        Change change;
        Change assignment;
    };
    Case const cases[] = {
        {real, real, Change::Modified, Change::Modified},   {real, fallback, Change::Modified, Change::Modified},
        {real, invalid, Change::Created, Change::Created},  {real, nullptr, Change::Created, Change::Modified},
        {fallback, real, Change::Modified, Change::None},   {fallback, fallback, Change::Modified, Change::None},
        {fallback, invalid, Change::Created, Change::None}, {fallback, nullptr, Change::Created, Change::None},
        {nullptr, real, Change::Deleted, Change::None},     {nullptr, fallback, Change::Modified, Change::None},
        {nullptr, invalid, Change::None, Change::None},     {nullptr, nullptr, Change::None, Change::None},
        {invalid, real, Change::Deleted, Change::Deleted},  {invalid, fallback, Change::Deleted, Change::Deleted},
        {invalid, invalid, Change::None, Change::None},     {invalid, nullptr, Change::None, Change::None},
    };
    for (Case const & each : cases) {
        auto const number = &each - cases;
        EXPECT_EQ(each.change, internal::classifyChange(each.present, each.wanted)) << number;
        EXPECT_EQ(each.assignment, internal::classifyAssignment(each.present, each.wanted)) << number;
    }
}

} // namespace
} // namespace ZEL
