#include "DeviantTest.h"

#include <ZEL/deviants/DeviantRegistry.h>

#include <functional>
#include <set>

namespace ZEL::tests {
namespace {

struct DeviantTest : OnBothKinds {};
struct ThingTest : TwoDeviants {
    ThingTest() : TwoDeviants(Kind::Things) {}
};

// --- identity --------------------------------------------------------------------------------------------------------

TEST(Deviant, SentinelsHoldTheirOwnAddressesAndAreNoStates) {
    std::set<void *> const sentinels{Deviant::InvalidObject, Deviant::FallbackToRoot, Deviant::ModelDestroyed};
    EXPECT_EQ(&Deviant::InvalidObject, Deviant::InvalidObject);
    EXPECT_EQ(3u, sentinels.size());
    for (void * const sentinel : sentinels) {
        EXPECT_FALSE(Deviant::isRealState(sentinel));
    }
    EXPECT_FALSE(Deviant::isRealState(nullptr));
    int real = 0;
    EXPECT_TRUE(Deviant::isRealState(&real));
}

/// The answers that the null deviant and the deviants of an ended manager have in common.
void expectNeutralAnswers(Deviant deviant) {
    Thing const thing;
    EXPECT_EQ(nullptr, deviant.getDeviantManager());
    EXPECT_EQ(Deviant(), deviant.getRootDeviant());
    EXPECT_TRUE(deviant.getAllDeviants().empty());
    EXPECT_EQ(nullptr, deviant.getObjectsDeviatingFromRoot());
    EXPECT_FALSE(deviant.hasUndoStack());
    EXPECT_EQ(0, deviant.getMaximumUndoStackLength());
    EXPECT_FALSE(deviant.isWithinTransaction());
    EXPECT_FALSE(deviant.isWithinTransactionUndoOrRedo());
    EXPECT_EQ(nullptr, deviant.getStateOfObject(&thing));
    EXPECT_EQ(nullptr, deviant.setStateOfObject(&thing, asState(Deviant::InvalidObject)));
    EXPECT_EQ(nullptr, deviant.getSavedOldStateOfObject(&thing));
    EXPECT_EQ(nullptr, deviant.saveOldStateOfObject(&thing, asState(Deviant::InvalidObject)));
}

/// All operations that need a deviant, by the name that their refusal begins with.
std::vector<std::pair<std::string, std::function<void(Deviant)>>> operations(NSInterface::ClassObjectIntf * thing) {
    return {
        {"Deviant::remove", [](Deviant d) { d.remove(); }},
        {"markObjectCreated", [=](Deviant d) { d.markObjectCreated(thing); }},
        {"beginTransaction", [](Deviant d) { d.beginTransaction(); }},
        {"commitTransaction", [](Deviant d) { d.commitTransaction(); }},
        {"cancelTransaction", [](Deviant d) { d.cancelTransaction(); }},
        {"notifyObjectIsAboutToChange", [=](Deviant d) { d.notifyObjectIsAboutToChange(thing); }},
        {"notifyObjectIsAboutToBeDeleted", [=](Deviant d) { d.notifyObjectIsAboutToBeDeleted(thing); }},
        {"notifyObjectHasBeenAdded", [=](Deviant d) { d.notifyObjectHasBeenAdded(thing); }},
        {"undo", [](Deviant d) { d.undo(); }},
        {"redo", [](Deviant d) { d.redo(); }},
        {"undoToChangeLevel", [](Deviant d) { d.undoToChangeLevel(1); }},
        {"redoToChangeLevel", [](Deviant d) { d.redoToChangeLevel(1); }},
        {"setMaximumUndoStackLength", [](Deviant d) { d.setMaximumUndoStackLength(1); }},
        {"getCurrentChangeLevel", [](Deviant d) { static_cast<void>(d.getCurrentChangeLevel()); }},
        {"getUndoStackLength", [](Deviant d) { static_cast<void>(d.getUndoStackLength()); }},
        {"getRedoStackLength", [](Deviant d) { static_cast<void>(d.getRedoStackLength()); }},
        {"getUndoNameAt", [](Deviant d) { static_cast<void>(d.getUndoNameAt(0)); }},
        {"getUndoChangeLevelAt", [](Deviant d) { static_cast<void>(d.getUndoChangeLevelAt(0)); }},
        {"getNameOfRedo", [](Deviant d) { static_cast<void>(d.getRedoNameAt(0)); }},
        {"getRedoChangeLevelAt", [](Deviant d) { static_cast<void>(d.getRedoChangeLevelAt(0)); }},
        {"clearUndoStack", [](Deviant d) { d.clearUndoStack(); }},
        {"clearRedoStack", [](Deviant d) { d.clearRedoStack(); }},
        {"disableUndo", [](Deviant d) { d.disableUndo(); }},
        {"syncFromRoot", [](Deviant d) { d.syncFromRoot(); }},
        {"assignToRoot", [](Deviant d) { d.assignToRoot(); }},
        {"registerListener", [](Deviant d) { d.registerModifierOnCommit(nullptr); }},
        {"registerListener", [](Deviant d) { d.registerValidatorOnCommit(nullptr); }},
        {"registerListener", [](Deviant d) { d.registerObservingListener(nullptr); }},
        {"unregisterListener", [](Deviant d) { d.unregisterModifierOnCommit(nullptr); }},
        {"unregisterListener", [](Deviant d) { d.unregisterValidatorOnCommit(nullptr); }},
        {"unregisterListener", [](Deviant d) { d.unregisterObservingListener(nullptr); }},
    };
}

TEST(Deviant, TheNullDeviantStandsForTheRootAndRefusesOperationsByName) {
    Deviant const null;
    EXPECT_FALSE(null.isNotNull());
    EXPECT_TRUE(null.isValid());
    EXPECT_TRUE(null.isRootDeviant());
    EXPECT_EQ(0, null.getDeviantId());
    EXPECT_EQ("default unnamed root deviant", null.getName());
    expectNeutralAnswers(null);
    Thing thing;
    for (auto const & [name, operation] : operations(&thing)) {
        EXPECT_EQ(name + " on null deviant", raisedText([&call = operation] { call(Deviant()); }));
    }
}

TEST_P(DeviantTest, AValueOutlivesItsManagerAndSaysSo) {
    Deviant const removed = createDeviant("b");
    manager->removeDeviantWithName("b");
    EXPECT_FALSE(removed.isValid());
    EXPECT_FALSE(removed.hasModelBeenDestroyed());
    endAll();
    Thing owner;
    for (Deviant const gone : {root, a, removed}) {
        SCOPED_TRACE(gone.getName());
        EXPECT_TRUE(gone.isNotNull());
        EXPECT_FALSE(gone.isValid());
        EXPECT_TRUE(gone.hasModelBeenDestroyed());
        expectNeutralAnswers(gone);
        for (auto const & [name, operation] : operations(&owner)) {
            EXPECT_EQ("object accessed after its model has been destroyed",
                      raisedText([&call = operation, gone] { call(gone); }))
                << name;
        }
    }
    EXPECT_EQ("root deviant", root.getName());
    EXPECT_EQ("a", a.getName());
    EXPECT_EQ(2, a.getDeviantId());
}

// --- names and ids ---------------------------------------------------------------------------------------------------

TEST_P(DeviantTest, IdsCountAllDeviantsThatThereHaveBeen) {
    EXPECT_EQ(0, root.getDeviantId());
    EXPECT_EQ("root deviant", root.getName());
    EXPECT_EQ(2, a.getDeviantId());
    EXPECT_EQ(3, createDeviant("b").getDeviantId());
    EXPECT_EQ(a, createDeviant("a"));
    EXPECT_EQ(root, createDeviant("root deviant"));
    manager->removeDeviantWithName("a");
    EXPECT_EQ(4, createDeviant("c").getDeviantId()) << "a removed deviant stays counted";
    EXPECT_NE(a, createDeviant("a"));
    EXPECT_FALSE(a.isValid() || a.isRootDeviant());
    EXPECT_EQ("a", a.getName());
}

TEST_P(DeviantTest, LookingForAnUnknownNameLeavesANullEntryBehind) {
    EXPECT_EQ(Deviant(), manager->getDeviantWithName("m"));
    EXPECT_EQ((std::vector{a, Deviant(), root}), manager->getDeviants());
    Deviant const z = createDeviant("z");
    EXPECT_EQ(4, z.getDeviantId()) << "a null entry counts";
    EXPECT_RAISES("Deviant::remove on null deviant", manager->removeDeviantWithName("m"));
    EXPECT_EQ((std::vector{a, Deviant(), root, z}), root.getAllDeviants());
    Subject const hidden = makeBody();
    root.markObjectCreated(hidden);
    EXPECT_EQ(Deviant::InvalidObject, hidden->internal_getDeviation(root)) << "it hides what is created, in the root";
    Deviant const filled = createDeviant("m");
    EXPECT_EQ(filled, manager->getDeviantWithName("m"));
    EXPECT_EQ((std::vector{a, filled, root, z}), manager->getDeviants());
}

TEST_P(DeviantTest, RemovalHasItsPreconditions) {
    EXPECT_RAISES("removeDeviantWithName: deviant does not exist", manager->removeDeviantWithName("x"));
    EXPECT_RAISES(kInternalError, manager->removeDeviantWithName("root deviant"));
    EXPECT_RAISES(kInternalError, root.remove());
    EXPECT_TRUE(root.isValid());
    a.beginTransaction();
    EXPECT_RAISES("cannot remove deviant when it is within a transaction", manager->removeDeviantWithName("a"));
    a.commitTransaction();
    EXPECT_TRUE(a.isValid());
    EXPECT_EQ(2u, manager->getDeviants().size());
}

TEST_P(DeviantTest, ARemovedDeviantHasGivenItsStatesBackAndFailsOnAccess) {
    commitValue(a, thing, 2);
    int const before = numberAlive();
    manager->removeDeviantWithName("a");
    EXPECT_EQ(before - 1, numberAlive());
    EXPECT_EQ("1 -", seen(thing));
    EXPECT_RAISES("object accessed after its deviant has been removed", thing.valueIn(a));
    EXPECT_RAISES("object accessed after its deviant has been removed", thing.set(a, 3));
}

TEST(DeviantManager, SetHelperOwnsTheHelper) {
    struct Helper : DeviantManagerHelper {
        explicit Helper(int & alive) : fAlive(alive) { ++fAlive; }
        ~Helper() override { --fAlive; }
        int & fAlive;
    };
    int alive = 0;
    auto manager = std::make_unique<DeviantManager>();
    EXPECT_EQ(nullptr, manager->getHelper());
    auto * const first = new Helper(alive);
    manager->setHelper(first);
    manager->setHelper(first);
    EXPECT_EQ(first, manager->getHelper());
    manager->setHelper(new Helper(alive));
    EXPECT_EQ(1, alive);
    manager.reset();
    EXPECT_EQ(0, alive);
}

// --- states ----------------------------------------------------------------------------------------------------------

TEST_P(DeviantTest, SetStateReturnsTheFormerOne) {
    EXPECT_EQ(nullptr, a.setStateOfObject(thing, asState(Deviant::InvalidObject)));
    EXPECT_EQ(Deviant::InvalidObject, a.getStateOfObject(thing));
    EXPECT_EQ(Deviant::InvalidObject, a.setStateOfObject(thing, asState(Deviant::FallbackToRoot)));
    EXPECT_EQ("1 1", seen(thing));
}

TEST_P(DeviantTest, CompositionCyclesAreFoundUpwardsFromTheFirstObject) {
    Subject const top = make(root, 0);
    Subject const middle = make(root, 0);
    Subject const bottom = make(root, 0);
    root.beginTransaction();
    middle.setContainer(root, top);
    bottom.setContainer(root, middle);
    root.commitTransaction();
    EXPECT_TRUE(root.willCauseCompositionCycles(bottom, bottom));
    EXPECT_TRUE(root.willCauseCompositionCycles(bottom, top));
    EXPECT_TRUE(Deviant().willCauseCompositionCycles(bottom, top));
    EXPECT_FALSE(root.willCauseCompositionCycles(top, bottom));
    EXPECT_FALSE(root.willCauseCompositionCycles(bottom, thing));
    constexpr char text[] = "null objects passed to Deviant::willCauseCompositionCycles";
    EXPECT_RAISES(text, root.willCauseCompositionCycles(top, nullptr));
    EXPECT_RAISES(text, root.willCauseCompositionCycles(nullptr, top));
    root.beginTransaction();
    top.setContainer(root, bottom);
    EXPECT_TRUE(root.willCauseCompositionCycles(bottom, thing)) << "a ring that is there already";
    root.commitTransaction();
}

TEST_F(ThingTest, AssertionsHaveTextsWithoutAnObjectAndTheSwitchCoversWritabilityOnly) {
    DeviantAssertions const onRoot(root.getImpl());
    DeviantAssertions const onNull(nullptr);
    EXPECT_RAISES(" Deviant 'root deviant' not opened for transactions.\n", onRoot.assertWritable(nullptr));
    EXPECT_RAISES("cannot operate on null deviant", onNull.assertWritable(nullptr));
    EXPECT_RAISES(" Deviant 'root deviant' : \n", onRoot.assertObjectNotPresentInDeviant(nullptr));
    EXPECT_RAISES(" Deviant 'default unnamed root deviant' : \n", onNull.assertObjectNotPresentInDeviant(nullptr));
    root.beginTransaction();
    EXPECT_TRUE(onRoot.assertWritable(nullptr));
    root.commitTransaction();

    EXPECT_TRUE(DeviantAssertions::enableAssertions(false));
    EXPECT_TRUE(onNull.assertWritable(nullptr));
    EXPECT_TRUE(onRoot.assertWritable(nullptr));
    EXPECT_RAISES(" Deviant 'root deviant' : \n", onRoot.assertObjectAlreadyCreated(nullptr));
    EXPECT_EQ("object without metaClass", raisedText([&] { onRoot.assertObjectAlreadyCreated(thing); }).substr(0, 24));
    EXPECT_FALSE(DeviantAssertions::enableAssertions(true));
}

// --- registry --------------------------------------------------------------------------------------------------------

TEST_F(ThingTest, TheRegistryHasOneIdPerBodyAndDeviant) {
    auto * const body = new Thing;
    body->incRef();
    void * const inRoot = DeviantRegistry::getId(body, root);
    void * const inA = DeviantRegistry::getId(body, a);
    EXPECT_NE(inRoot, inA);
    EXPECT_EQ(inRoot, DeviantRegistry::getId(body, root));
    EXPECT_EQ(a, DeviantRegistry::getVariantInfo(inA).second);
    EXPECT_EQ(static_cast<ReferenceCountingIntf *>(body), DeviantRegistry::getVariantInfo(inA).first);
    EXPECT_EQ(body, DeviantRegistry::getReferenceCountingIntf(inRoot));
    EXPECT_EQ(nullptr, DeviantRegistry::getId(nullptr, a));
    EXPECT_EQ(nullptr, DeviantRegistry::getVariantInfo(nullptr).first);
    EXPECT_EQ(Deviant(), DeviantRegistry::getVariantInfo(nullptr).second);
    EXPECT_EQ(nullptr, DeviantRegistry::getReferenceCountingIntf(nullptr));
    body->decRef(); // the body's end takes the ids back; the memory checker would tell of a second look
}

TEST_P(DeviantTest, StatesThatNoOperationHasGivenBackGoWithTheManager) {
    static_cast<void>(a.setStateOfObject(thing, thing->deviant_getCopyOfDeviation(root)));
    a.beginTransaction();
    a.disableUndo();
    static_cast<void>(a.saveOldStateOfObject(thing, thing->deviant_getCopyOfDeviation(root)));
}

INSTANTIATE_TEST_SUITE_P(On, DeviantTest, bothKinds, testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests
