#include "DeviantTest.h"

#include <ZEL/deviants/Transaction.h>
#include <ZEL/metamodel/ListenerHolder.h>
#include <ZEL/metamodel/ProfileIntf.h>

#include <algorithm>
#include <functional>
#include <map>
#include <stdexcept>

namespace ZEL::tests {
namespace {

using Calls = std::vector<std::string>;
using Bodies = std::vector<NSInterface::ClassObjectIntf const *>;

/// "modify 0 0 1": how many objects have been created, deleted and modified.
template <class Report> std::string told(std::string const & role, Report const & report) {
    return role + ' ' + std::to_string(report.created.size()) + ' ' + std::to_string(report.deleted.size()) + ' ' +
           std::to_string(report.modified.size());
}

/// Writes down what it is called with, and does and answers what a test sets.
class Recorder : public ListenerBase {
public:
    using Action = std::function<void(Deviant target, Deviant view)>;

    Recorder(std::string name, Calls & calls) : fName(std::move(name)), fCalls(calls) {}

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
        onDestroyed();
    }

    bool agrees = true;
    Action onModify;
    Action onValidate;
    Action onObserve;
    std::function<void()> onDestroyed = [] {};
    std::vector<Bodies> bodies; ///< of the last report: created, deleted and modified

private:
    template <class Report> void record(char const * role, Report const & report, Action const & action) {
        fCalls.push_back(fName + ' ' + told(role, report));
        bodies.clear();
        for (auto const * const objects : {&report.created, &report.deleted, &report.modified}) {
            bodies.emplace_back();
            for (auto const & object : *objects) {
                EXPECT_EQ(report.getTargetDeviant(), object.getDeviant());
                bodies.back().push_back(object.getImplementationWithoutAssert());
            }
        }
        if (action) {
            action(report.getTargetDeviant(), report.sourceDeviant);
        }
    }

    std::string fName;
    Calls & fCalls;
};

struct ListenerTest : OnBothKinds {
    ~ListenerTest() override { endAll(); } // before the listeners go

    [[nodiscard]] Calls takeCalls() { return std::exchange(calls, {}); }
    void set(int value) { commitValue(root, thing, value, "set"); }
    static void listenInAllRoles(Deviant deviant, Recorder & listener) {
        registerObservingListener(deviant, listener);
        registerValidatorOnCommit(deviant, listener);
        registerModifierOnCommit(deviant, listener);
    }
    /// Does `action` at the first call only.
    static Recorder::Action once(std::function<void(Deviant target)> const & action) {
        return [action, done = false](Deviant target, Deviant) mutable {
            if (!std::exchange(done, true)) {
                action(target);
            }
        };
    }
    static void fail() { throw std::runtime_error("failed"); }

    Calls calls;
    Recorder one{"one", calls};
    Recorder two{"two", calls};
    Recorder three{"three", calls};
};

// --- registration ----------------------------------------------------------------------------------------------------

/// Acts once, while it is made ready or shown an object. It keeps its action until then.
class EagerHolder : public internal::ListenerHolderBase {
public:
    EagerHolder(ListenerBase & listener, bool whenShown, std::function<void(Deviant)> action)
        : fListener(listener), fWhenShown(whenShown), fAction(std::move(action)) {
        fTable.add(NSInterface::ClassObjectIntf::classInfo(), [](void * holder, void *, Deviant deviant) {
            static_cast<EagerHolder *>(static_cast<ListenerHolderBase *>(holder))->act(true, deviant);
            return true;
        });
    }
    ListenerBase * getListener() override { return &fListener; }
    void reset(Deviant deviant, Deviant) override { act(false, deviant); }
    void callModifier() override {}
    bool callValidator() override { return true; }
    void callObserver() override {}

private:
    void act(bool isShown, Deviant deviant) {
        if (isShown == fWhenShown && fAction) {
            std::exchange(fAction, nullptr)(deviant);
        }
    }

    ListenerBase & fListener;
    bool fWhenShown;
    std::function<void(Deviant)> fAction;
};

TEST_P(ListenerTest, EachListTakesAListenerOnce) {
    auto const held = std::make_shared<int>();
    auto const makeHolder = [&] { return new EagerHolder(one, true, [held](Deviant) {}); };
    root.registerModifierOnCommit(makeHolder());
    root.registerObservingListener(makeHolder());
    EXPECT_RAISES("listener already registered with deviant", root.registerObservingListener(makeHolder()));
    EXPECT_EQ(1 + 2, held.use_count()) << "the refused holder is gone";
    EXPECT_RAISES("listener not registered with deviant", root.unregisterValidatorOnCommit(&one));
    EXPECT_RAISES("cannot unregister null listener with deviant", root.unregisterModifierOnCommit(nullptr));
    EXPECT_RAISES(kInternalError, root.registerModifierOnCommit(nullptr));
    root.unregisterModifierOnCommit(&one);
    EXPECT_RAISES("listener not registered with deviant", root.unregisterModifierOnCommit(&one));
    EXPECT_EQ(1 + 1, held.use_count());
    endAll();
    EXPECT_EQ(1, held.use_count()) << "the root's holders go with the manager";
    EXPECT_TRUE(calls.empty()) << "and nobody is told";
}

// --- the order of a commit -------------------------------------------------------------------------------------------

TEST_P(ListenerTest, AllModifiersThenAllValidatorsThenAllObserversInOrderOfRegistration) {
    listenInAllRoles(root, two);
    listenInAllRoles(root, one);
    registerModifierOnCommit(root, three);
    set(2);
    EXPECT_EQ((Calls{"two modify 0 0 1", "one modify 0 0 1", "three modify 0 0 1", "two validate 0 0 1",
                     "one validate 0 0 1", "two observe 0 0 1", "one observe 0 0 1"}),
              takeCalls());
    root.undo();
    EXPECT_EQ((Calls{"two observe 0 0 1", "one observe 0 0 1"}), takeCalls());
    root.redo();
    EXPECT_EQ((Calls{"two observe 0 0 1", "one observe 0 0 1"}), takeCalls());

    two.agrees = false;
    set(3);
    EXPECT_EQ((Calls{"two modify 0 0 1", "one modify 0 0 1", "three modify 0 0 1", "two validate 0 0 1"}), takeCalls());
    EXPECT_EQ("2 1", seen(thing)) << "a refusal cancels, and the commit returns";
    EXPECT_EQ("set2 |3|", history());
    EXPECT_FALSE(root.isWithinTransaction());
}

TEST_P(ListenerTest, TheReportTellsCreatedDeletedAndModifiedObjectsInTheOrderOfTheirAddresses) {
    Bodies modified;
    for (int i = 0; i < 4; ++i) {
        modified.push_back(make(root, 1));
    }
    std::sort(modified.begin(), modified.end());
    Subject const ended = make(root, 2);
    Deviant view;
    one.onObserve = [&](Deviant, Deviant source) { view = source; };
    registerObservingListener(root, one);
    root.beginTransaction();
    Subject const created = make(root, 3);
    make(root, 4).end(root);
    ended.set(root, 5);
    ended.end(root);
    for (auto each = modified.rbegin(); each != modified.rend(); ++each) {
        static_cast<void>((*each)->getWriteDeviant(root));
    }
    root.commitTransaction();
    EXPECT_EQ((std::vector<Bodies>{{created}, {ended}, modified}), one.bodies);
    EXPECT_FALSE(view.isValid()) << "a view ends with the commit";
    EXPECT_RAISES("object accessed after its deviant has been removed", thing.valueIn(view));
}

TEST_P(ListenerTest, TheViewShowsTheStateBeforeAndCannotBeWrittenTo) {
    Calls views;
    auto const check = [&](Deviant target, Deviant view, bool isWithin) {
        views.push_back(view.getName());
        EXPECT_EQ(1, thing.valueIn(view));
        EXPECT_EQ(2, thing.valueIn(target));
        EXPECT_EQ(-1 - target.getDeviantId(), view.getDeviantId());
        EXPECT_FALSE(view.isRootDeviant());
        EXPECT_EQ(isWithin, target.isWithinTransaction());
        EXPECT_EQ(isWithin, target.isWithinTransactionUndoOrRedo());
        EXPECT_EQ("|2|", history()) << "the entry comes last";
        std::string const refusal = " Deviant '" + view.getName() + "' not opened for transactions.\n";
        EXPECT_RAISES(refusal, view.beginTransaction());
        EXPECT_EQ(refusal, raisedText([&] { thing.set(view, 3); }).substr(0, refusal.size()));
    };
    one.onModify = one.onValidate = [&](Deviant target, Deviant view) { check(target, view, true); };
    one.onObserve = [&](Deviant target, Deviant view) { check(target, view, false); };
    listenInAllRoles(root, one);
    listenInAllRoles(a, one);
    commitValue(a, thing, 2);
    set(2);
    EXPECT_EQ(Calls(6, "<internal: transaction>"), views);
    one.onObserve = [&](Deviant target, Deviant view) {
        EXPECT_EQ("<internal: undo/redo>", view.getName());
        EXPECT_EQ(1, thing.valueIn(target));
        EXPECT_EQ(2, thing.valueIn(view));
    };
    root.undo();
    manager->removeDeviantWithName("a");
}

TEST_P(ListenerTest, AHolderCanBeRestrictedToClasses) {
    Subject const special = make(root, 1, true);
    auto * const holder = new ListenerHolder<Recorder>(one);
    holder->handleOnly<SpecialThing>().handleOnly<NSInterface::ProfileIntf>();
    root.registerObservingListener(holder);
    registerObservingListener(root, two);
    root.beginTransaction();
    thing.set(root, 2);
    special.set(root, 2);
    root.commitTransaction();
    set(3);
    EXPECT_EQ((Calls{"one observe 0 0 1", "two observe 0 0 2", "one observe 0 0 0", "two observe 0 0 1"}), takeCalls());
}

// --- the end of a deviant --------------------------------------------------------------------------------------------

TEST_P(ListenerTest, ARemovedDeviantTellsEachListenerOncePerList) {
    registerObservingListener(a, one);
    registerValidatorOnCommit(a, two);
    registerValidatorOnCommit(a, three);
    registerModifierOnCommit(a, one);
    registerModifierOnCommit(a, three);
    registerModifierOnCommit(a, two);
    one.onDestroyed = [this, done = false]() mutable {
        if (!std::exchange(done, true)) {
            a.unregisterModifierOnCommit(&one);
            a.unregisterModifierOnCommit(&three);
        }
    };
    two.onDestroyed = fail;
    EXPECT_EQ("failed", raisedText([&] { manager->removeDeviantWithName("a"); }));
    EXPECT_EQ((Calls{"one destroyed", "two destroyed", "two destroyed", "three destroyed", "one destroyed"}),
              takeCalls());
    EXPECT_FALSE(a.isValid());
    EXPECT_EQ(1u, manager->getDeviants().size());
    registerObservingListener(createDeviant("b"), one);
    endAll();
    EXPECT_EQ((Calls{"one destroyed"}), takeCalls());
}

TEST_P(ListenerTest, AnObserverMayRemoveItsDeviant) {
    one.onObserve = [&](Deviant, Deviant) { manager->removeDeviantWithName("a"); };
    registerObservingListener(a, one);
    registerObservingListener(a, two);
    commitValue(a, thing, 2);
    EXPECT_EQ((Calls{"one observe 0 0 1", "one destroyed", "two destroyed"}), takeCalls());
    EXPECT_FALSE(a.isValid());
}

TEST_P(ListenerTest, TheManagerEndsWithOpenTransactionsWhateverListenersDo) {
    static_cast<void>(manager->getDeviantWithName("0 sorts before all"));
    for (Deviant const each : {root, a}) {
        registerModifierOnCommit(each, one);
        registerValidatorOnCommit(each, two);
        registerObservingListener(each, three);
        each.beginTransaction();
        each.beginTransaction();
        thing.set(each, 2);
    }
    one.onModify = [](Deviant target, Deviant) { target.beginTransaction(); };
    three.onDestroyed = fail;
    manager->destroy();
    manager->destroy();
    EXPECT_EQ((Calls{"one modify 0 0 1", "one destroyed", "two destroyed", "three destroyed", "one modify 0 0 1"}),
              takeCalls());
    EXPECT_FALSE(a.isValid());
    EXPECT_EQ(2, thing.valueIn(Deviant()));
}

// --- listeners that end transactions, work in the deviant or throw ---------------------------------------------------

TEST_P(ListenerTest, AModifierOrValidatorMayCancelAndWhatItThrowsLeavesTheTransactionToItsGuard) {
    listenInAllRoles(root, one);
    for (auto * const action : {&one.onModify, &one.onValidate}) {
        *action = once([](Deviant target) { target.cancelTransaction(); });
        set(2);
        EXPECT_EQ("1 1", seen(thing));
        EXPECT_FALSE(root.isWithinTransaction());
        *action = once([](Deviant) { fail(); });
        {
            Transaction transaction(root);
            thing.set(root, 2);
            EXPECT_EQ("failed", raisedText([&] { transaction.commit(); }));
            EXPECT_TRUE(root.isWithinTransaction());
            EXPECT_EQ(2, thing.valueIn(root));
        }
        EXPECT_EQ("1 1", seen(thing));
        EXPECT_FALSE(root.isWithinTransaction());
        EXPECT_EQ("|2|", history());
        *action = nullptr;
    }
    EXPECT_EQ((Calls{"one modify 0 0 1", "one modify 0 0 1", "one modify 0 0 1", "one validate 0 0 1",
                     "one modify 0 0 1", "one validate 0 0 1"}),
              takeCalls());
}

TEST_P(ListenerTest, AListenerThatCommitsOnceTooOftenLeavesAUsableDeviant) {
    one.onModify = once([](Deviant target) { target.commitTransaction(); });
    registerModifierOnCommit(root, one);
    set(2);
    EXPECT_FALSE(root.isWithinTransaction());
    EXPECT_EQ("set2 |3|", history());
    root.undo();
    EXPECT_EQ(1, thing.valueIn(root));
    set(3);
    EXPECT_EQ(3, thing.valueIn(root));
}

TEST_P(ListenerTest, AHolderThatEndsTheTransactionBeforeTheObserversAreCalledEndsTheCommit) {
    registerObservingListener(root, two);
    for (bool const whenShown : {false, true}) {
        root.registerObservingListener(new EagerHolder(one, whenShown, [](Deviant d) { d.cancelTransaction(); }));
        set(2);
        EXPECT_EQ("|2|", history());
        EXPECT_EQ("1 1", seen(thing));
        EXPECT_EQ(&one, root.getRefusingListener());
        EXPECT_EQ(Calls{}, takeCalls());
        root.unregisterObservingListener(&one);
    }
    int value = 1;
    for (bool const whenShown : {false, true}) {
        root.registerObservingListener(new EagerHolder(one, whenShown, [](Deviant d) { d.commitTransaction(); }));
        set(++value);
        EXPECT_EQ(nullptr, root.getRefusingListener());
        EXPECT_EQ((Calls{"two observe 0 0 1"}), takeCalls());
        root.unregisterObservingListener(&one);
    }
    EXPECT_EQ("set2 set3 |4|", history());
    for (bool const whenShown : {false, true}) {
        // During an undo nothing else can begin before the objects have their states.
        root.registerObservingListener(new EagerHolder(one, whenShown, [](Deviant d) { d.beginTransaction(); }));
        EXPECT_RAISES("executeChangeSetOnTop: current changeset is not empty", root.undo());
        root.unregisterObservingListener(&one);
    }
    EXPECT_EQ("|2| set3 set4", history());
    EXPECT_EQ(1, thing.valueIn(root));
}

TEST_P(ListenerTest, TellsWhoHasRefusedACommit) {
    auto const commit = [this](int value) {
        Transaction outer(root);
        {
            Transaction inner(root);
            thing.set(root, value);
            EXPECT_TRUE(inner.commit());
        }
        return outer.commit();
    };
    EXPECT_EQ(nullptr, Deviant().getRefusingListener());
    registerValidatorOnCommit(root, one);
    registerValidatorOnCommit(root, two);
    registerModifierOnCommit(root, three);
    EXPECT_TRUE(commit(2));
    EXPECT_EQ(nullptr, root.getRefusingListener());
    two.agrees = false;
    EXPECT_FALSE(commit(3));
    EXPECT_EQ(&two, root.getRefusingListener());
    three.onModify = [](Deviant target, Deviant) { target.cancelTransaction(); };
    EXPECT_FALSE(commit(3));
    EXPECT_EQ(&three, root.getRefusingListener());
    EXPECT_EQ("2 1", seen(thing));
    root.beginTransaction();
    EXPECT_EQ(nullptr, root.getRefusingListener()) << "that was another transaction";
    root.commitTransaction();
}

TEST_P(ListenerTest, AnObserverOfAReplayMayTakeTheHistoryAway) {
    set(2);
    set(3);
    one.onObserve = once([](Deviant target) { target.setMaximumUndoStackLength(0); });
    registerObservingListener(root, one);
    root.undo();
    EXPECT_EQ("|3|", history());
    EXPECT_EQ(2, thing.valueIn(root));
}

TEST_P(ListenerTest, AJumpThatObserversHinderEnds) {
    Subject const other = make(root, 0);
    set(2);
    int answers = 0;
    bool busy = false;
    one.onObserve = [&](Deviant target, Deviant) {
        if (!std::exchange(busy, true)) {
            commitValue(target, other, ++answers);
            busy = false;
        }
    };
    registerObservingListener(root, one);
    EXPECT_RAISES("invalid change level for undoToChangeLevel", root.undoToChangeLevel(2));
}

// --- replay ----------------------------------------------------------------------------------------------------------

TEST_P(ListenerTest, AClientsHelperIsCalledByTheKindOfTheReplay) {
    struct Helper : DeviantManagerHelper {
        using Report = ReportOfChanges<ClassObject, FALSE_TYPE>;
        Helper(Calls & calls, std::function<std::string()> seen) : fCalls(calls), fSeen(std::move(seen)) {}
        void cancelTransaction(Report const & report) override { record("cancel", report); }
        void undo(Report const & report) override { record("undo", report); }
        void redo(Report const & report) override { record("redo", report); }
        void assignToRoot(Report const & report) override { record("assign", report); }
        void record(std::string const & kind, Report const & report) {
            fCalls.push_back(told(kind, report) + " from " + report.sourceDeviant.getName() + " to " +
                             report.getTargetDeviant().getName());
            doTheJob(report);
            fCalls.back() += ", now " + fSeen();
        }
        Calls & fCalls;
        std::function<std::string()> fSeen;
    };
    Deviant follower = a;
    manager->setHelper(new Helper(calls, [&] {
        return std::to_string(thing.valueIn(root)) + " there and " + std::to_string(thing.valueIn(follower));
    }));
    root.beginTransaction();
    make(root, 1);
    thing.set(root, 2);
    root.cancelTransaction();
    root.beginTransaction();
    root.cancelTransaction();
    Subject const other = make(root, 1);
    root.beginTransaction();
    other.end(root);
    thing.set(root, 2);
    root.commitTransaction();
    follower = createDeviant("follower");
    root.undo();
    follower = createDeviant("second follower");
    root.redo();
    root.beginTransaction();
    a.assignToRoot(); // in which nothing was changed but by the root
    root.commitTransaction();
    // Who follows the root sees nothing of a replay before it has come to its end.
    EXPECT_EQ((Calls{"cancel 0 1 1 from <internal: cancelTransaction> to root deviant, now 1 there and 1",
                     "cancel 0 0 0 from <internal: cancelTransaction> to root deviant, now 1 there and 1",
                     "undo 1 0 1 from <internal: undo/redo> to root deviant, now 1 there and 2",
                     "redo 0 1 1 from <internal: undo/redo> to root deviant, now 2 there and 1",
                     "assign 0 0 1 from <internal: assignToRoot> to root deviant, now 1 there and 1"}),
              takeCalls());
}

TEST(ChangeReport, TheRulesOfReports) {
    using internal::Change;
    std::map<Change, char> const letters{
        {Change::None, '-'}, {Change::Created, 'c'}, {Change::Deleted, 'd'}, {Change::Modified, 'm'}};
    ThingState real;
    NSInterface::ObjectIntf * const states[] = {&real, asState(Deviant::FallbackToRoot),
                                                asState(Deviant::InvalidObject), nullptr};
    // A group of letters for each wanted state, with a letter for each present state, both in the order of `states`.
    auto const table =
        [&](Change (&classify)(NSInterface::ObjectIntf const *, NSInterface::ObjectIntf const *) noexcept) {
            std::string text;
            for (NSInterface::ObjectIntf const * const wanted : states) {
                for (NSInterface::ObjectIntf const * const present : states) {
                    text += letters.at(classify(present, wanted));
                }
                text += ' ';
            }
            return text;
        };
    EXPECT_EQ("mmcc mmcc dd-- dm-- ", table(internal::classifyChange));
    EXPECT_EQ("mmcm ---- dd-- ---- ", table(internal::classifyAssignment));
}

INSTANTIATE_TEST_SUITE_P(On, ListenerTest, bothKinds, testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests
