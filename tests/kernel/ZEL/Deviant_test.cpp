#include "support/TestObjects.h"

#include <ZEL/Deviant.h>
#include <ZEL/DeviantAssertions.h>
#include <ZEL/DeviantManager.h>
#include <ZEL/DeviantManagerHelper.h>
#include <ZEL/DeviantRegistry.h>
#include <ZEL/StateMap.h>

#include <functional>
#include <set>

namespace ZEL {
namespace {

using testsupport::asState;
using testsupport::raisedBy;
using testsupport::Thing;

class DeviantTest : public testsupport::DeviantFixture {
protected:
    ~DeviantTest() override { DeviantAssertions::enableAssertions(true); }

    static std::vector<std::string> namesOf(std::vector<Deviant> const & deviants) {
        std::vector<std::string> names;
        for (Deviant const deviant : deviants) {
            names.push_back(deviant.isNotNull() ? deviant.getName() : "(null)");
        }
        return names;
    }
};

// --- identity --------------------------------------------------------------------------------------------------------

TEST(Deviant, SentinelsHoldTheirOwnAddressesAndAreNoStates) {
    void * const sentinels[] = {Deviant::InvalidObject, Deviant::FallbackToRoot, Deviant::ModelDestroyed};
    EXPECT_EQ(&Deviant::InvalidObject, Deviant::InvalidObject);
    EXPECT_EQ(3u, std::set<void *>(std::begin(sentinels), std::end(sentinels)).size());
    for (void * const sentinel : sentinels) {
        EXPECT_FALSE(Deviant::isRealState(sentinel));
    }
    EXPECT_FALSE(Deviant::isRealState(nullptr));
    int real = 0;
    EXPECT_TRUE(Deviant::isRealState(&real));
}

TEST(Deviant, TheNullDeviantStandsForTheRootAndAnswersNeutrally) {
    Deviant const null;
    Thing const thing;
    EXPECT_FALSE(null.isNotNull());
    EXPECT_TRUE(null.isValid());
    EXPECT_TRUE(null.isRootDeviant());
    EXPECT_EQ(0, null.getDeviantId());
    EXPECT_EQ("default unnamed root deviant", null.getName());
    EXPECT_EQ(nullptr, null.getDeviantManager());
    EXPECT_EQ(null, null.getRootDeviant());
    EXPECT_TRUE(null.getAllDeviants().empty());
    EXPECT_EQ(nullptr, null.getObjectsDeviatingFromRoot());
    EXPECT_FALSE(null.hasUndoStack());
    EXPECT_EQ(0, null.getMaximumUndoStackLength());
    EXPECT_FALSE(null.isWithinTransaction());
    EXPECT_FALSE(null.isWithinTransactionUndoOrRedo());
    EXPECT_EQ(nullptr, null.getStateOfObject(&thing));
    EXPECT_EQ(nullptr, null.setStateOfObject(&thing, asState(Deviant::InvalidObject)));
    EXPECT_EQ(nullptr, null.getSavedOldStateOfObject(&thing));
    EXPECT_EQ(nullptr, null.saveOldStateOfObject(&thing, asState(Deviant::InvalidObject)));
}

struct Failure {
    std::string text;
    std::function<void(Deviant)> action;
};

std::vector<Failure> failuresOnNull(Thing & thing) {
    return {
        {"Deviant::remove on null deviant", [](Deviant d) { d.remove(); }},
        {"markObjectCreated on null deviant", [&](Deviant d) { d.markObjectCreated(&thing); }},
        {"beginTransaction on null deviant", [](Deviant d) { d.beginTransaction(); }},
        {"commitTransaction on null deviant", [](Deviant d) { d.commitTransaction(); }},
        {"cancelTransaction on null deviant", [](Deviant d) { d.cancelTransaction(); }},
        {"notifyObjectIsAboutToChange on null deviant", [&](Deviant d) { d.notifyObjectIsAboutToChange(&thing); }},
        {"notifyObjectIsAboutToBeDeleted on null deviant",
         [&](Deviant d) { d.notifyObjectIsAboutToBeDeleted(&thing); }},
        {"notifyObjectHasBeenAdded on null deviant", [&](Deviant d) { d.notifyObjectHasBeenAdded(&thing); }},
        {"undo on null deviant", [](Deviant d) { d.undo(); }},
        {"redo on null deviant", [](Deviant d) { d.redo(); }},
        {"undoToChangeLevel on null deviant", [](Deviant d) { d.undoToChangeLevel(1); }},
        {"redoToChangeLevel on null deviant", [](Deviant d) { d.redoToChangeLevel(1); }},
        {"setMaximumUndoStackLength on null deviant", [](Deviant d) { d.setMaximumUndoStackLength(1); }},
        {"getCurrentChangeLevel on null deviant", [](Deviant d) { static_cast<void>(d.getCurrentChangeLevel()); }},
        {"getUndoStackLength on null deviant", [](Deviant d) { static_cast<void>(d.getUndoStackLength()); }},
        {"getRedoStackLength on null deviant", [](Deviant d) { static_cast<void>(d.getRedoStackLength()); }},
        {"getUndoNameAt on null deviant", [](Deviant d) { static_cast<void>(d.getUndoNameAt(0)); }},
        {"getUndoChangeLevelAt on null deviant", [](Deviant d) { static_cast<void>(d.getUndoChangeLevelAt(0)); }},
        {"getNameOfRedo on null deviant", [](Deviant d) { static_cast<void>(d.getRedoNameAt(0)); }},
        {"getRedoChangeLevelAt on null deviant", [](Deviant d) { static_cast<void>(d.getRedoChangeLevelAt(0)); }},
        {"clearUndoStack on null deviant", [](Deviant d) { d.clearUndoStack(); }},
        {"clearRedoStack on null deviant", [](Deviant d) { d.clearRedoStack(); }},
        {"disableUndo on null deviant", [](Deviant d) { d.disableUndo(); }},
        {"syncFromRoot on null deviant", [](Deviant d) { d.syncFromRoot(); }},
        {"assignToRoot on null deviant", [](Deviant d) { d.assignToRoot(); }},
        {"registerListener on null deviant", [](Deviant d) { d.registerModifierOnCommit(nullptr); }},
        {"registerListener on null deviant", [](Deviant d) { d.registerValidatorOnCommit(nullptr); }},
        {"registerListener on null deviant", [](Deviant d) { d.registerObservingListener(nullptr); }},
        {"unregisterListener on null deviant", [](Deviant d) { d.unregisterModifierOnCommit(nullptr); }},
        {"unregisterListener on null deviant", [](Deviant d) { d.unregisterValidatorOnCommit(nullptr); }},
        {"unregisterListener on null deviant", [](Deviant d) { d.unregisterObservingListener(nullptr); }},
    };
}

TEST(Deviant, OperationsFailOnTheNullDeviantByName) {
    Thing thing;
    for (Failure const & each : failuresOnNull(thing)) {
        EXPECT_EQ(each.text, raisedBy([&] { each.action(Deviant()); }));
    }
}

TEST_F(DeviantTest, AValueOutlivesItsManagerAndSaysSo) {
    Deviant const named = createDeviant("a");
    Deviant const removed = createDeviant("b");
    manager->removeDeviantWithName("b");
    auto const owner = std::make_unique<Thing>();
    Thing & thing = *owner;
    EXPECT_FALSE(removed.isValid());
    EXPECT_FALSE(removed.hasModelBeenDestroyed());
    endAll();
    for (Deviant const gone : {root, named, removed}) {
        EXPECT_TRUE(gone.isNotNull());
        EXPECT_FALSE(gone.isValid());
        EXPECT_TRUE(gone.hasModelBeenDestroyed());
        EXPECT_EQ(nullptr, gone.getDeviantManager());
        EXPECT_EQ(Deviant(), gone.getRootDeviant());
        EXPECT_FALSE(gone.isWithinTransaction());
        EXPECT_EQ(nullptr, gone.getStateOfObject(&thing));
        EXPECT_EQ(nullptr, gone.getSavedOldStateOfObject(&thing));
        for (Failure const & each : failuresOnNull(thing)) {
            EXPECT_EQ("object accessed after its model has been destroyed", raisedBy([&] { each.action(gone); }))
                << each.text;
        }
    }
    EXPECT_EQ("root deviant", root.getName());
    EXPECT_EQ("a", named.getName());
    EXPECT_EQ(2, named.getDeviantId());
}

// --- names and ids ---------------------------------------------------------------------------------------------------

TEST_F(DeviantTest, IdsCountAllDeviantsThatThereHaveBeen) {
    EXPECT_EQ(0, root.getDeviantId());
    EXPECT_EQ("root deviant", root.getName());
    Deviant const a = createDeviant("a");
    Deviant const b = createDeviant("b");
    EXPECT_EQ(2, a.getDeviantId());
    EXPECT_EQ(3, b.getDeviantId());
    EXPECT_EQ(a, createDeviant("a"));
    EXPECT_EQ(root, createDeviant("root deviant"));
    manager->removeDeviantWithName("a");
    EXPECT_EQ(4, createDeviant("c").getDeviantId()) << "a removed deviant stays counted";
    EXPECT_NE(a, createDeviant("a"));
    EXPECT_FALSE(a.isValid());
    EXPECT_FALSE(a.isRootDeviant());
    EXPECT_EQ("a", a.getName());
}

TEST_F(DeviantTest, LookingForAnUnknownNameLeavesANullEntryBehind) {
    EXPECT_EQ(Deviant(), manager->getDeviantWithName("m"));
    EXPECT_EQ((std::vector<std::string>{"(null)", "root deviant"}), namesOf(manager->getDeviants()));
    EXPECT_EQ(3, createDeviant("z").getDeviantId()) << "a null entry counts";
    EXPECT_EQ("Deviant::remove on null deviant", raisedBy([&] { manager->removeDeviantWithName("m"); }));
    EXPECT_EQ(3u, root.getAllDeviants().size());
    Deviant const filled = createDeviant("m");
    EXPECT_EQ(filled, manager->getDeviantWithName("m"));
    EXPECT_EQ((std::vector<std::string>{"m", "root deviant", "z"}), namesOf(filled.getAllDeviants()));
}

TEST_F(DeviantTest, RemovalHasItsPreconditions) {
    Deviant const a = createDeviant("a");
    EXPECT_EQ("removeDeviantWithName: deviant does not exist", raisedBy([&] { manager->removeDeviantWithName("x"); }));
    EXPECT_EQ("An Internal Error has occurred", raisedBy([&] { manager->removeDeviantWithName("root deviant"); }));
    EXPECT_EQ("An Internal Error has occurred", raisedBy([&] { root.remove(); }));
    EXPECT_TRUE(root.isValid());
    a.beginTransaction();
    EXPECT_EQ("cannot remove deviant when it is within a transaction",
              raisedBy([&] { manager->removeDeviantWithName("a"); }));
    a.commitTransaction();
    EXPECT_TRUE(a.isValid());
    EXPECT_EQ(2u, manager->getDeviants().size());
}

TEST_F(DeviantTest, ARemovedDeviantHasGivenItsStatesBackAndFailsOnAccess) {
    Thing & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    commitValue(a, thing, 2);
    int const before = testsupport::ThingState::numberAlive;
    manager->removeDeviantWithName("a");
    EXPECT_EQ(before - 1, testsupport::ThingState::numberAlive);
    EXPECT_FALSE(thing.deviant_isValid(a));
    EXPECT_EQ("object accessed after its deviant has been removed",
              raisedBy([&] { static_cast<void>(thing.valueIn(a)); }));
    EXPECT_EQ("object accessed after its deviant has been removed", raisedBy([&] { thing.set(a, 3); }));
}

TEST_F(DeviantTest, SetHelperOwnsTheHelper) {
    struct Helper : DeviantManagerHelper {
        explicit Helper(int & alive) : fAlive(alive) { ++fAlive; }
        ~Helper() override { --fAlive; }
        int & fAlive;
    };
    int alive = 0;
    EXPECT_EQ(nullptr, manager->getHelper());
    auto * const first = new Helper(alive);
    manager->setHelper(first);
    manager->setHelper(first);
    EXPECT_EQ(first, manager->getHelper());
    manager->setHelper(new Helper(alive));
    EXPECT_EQ(1, alive);
    endAll();
    EXPECT_EQ(0, alive);
}

// --- states ----------------------------------------------------------------------------------------------------------

TEST_F(DeviantTest, ANewDeviantReadsThroughToTheRoot) {
    Thing & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    EXPECT_EQ(1, thing.valueIn(a));
    EXPECT_EQ(1, thing.valueIn(Deviant()));
    EXPECT_TRUE(a.getObjectsDeviatingFromRoot()->empty());
    commitValue(a, thing, 2);
    EXPECT_EQ(2, thing.valueIn(a));
    EXPECT_EQ(1, thing.valueIn(root));
    EXPECT_EQ(1u, a.getObjectsDeviatingFromRoot()->size());
    EXPECT_TRUE(root.getObjectsDeviatingFromRoot()->empty());
}

TEST_F(DeviantTest, SetStateGivesTheFormerOne) {
    Thing const & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    EXPECT_EQ(nullptr, a.setStateOfObject(&thing, asState(Deviant::InvalidObject)));
    EXPECT_EQ(Deviant::InvalidObject, a.getStateOfObject(&thing));
    EXPECT_EQ(Deviant::InvalidObject, a.setStateOfObject(&thing, asState(Deviant::FallbackToRoot)));
    EXPECT_EQ(1, thing.valueIn(a));
}

TEST_F(DeviantTest, AnObjectCreatedInOneDeviantExistsInNoOther) {
    Deviant const a = createDeviant("a");
    Deviant const b = createDeviant("b");
    Thing & thing = make(a, 1);
    EXPECT_TRUE(thing.deviant_isValid(a));
    for (Deviant const other : {root, b}) {
        EXPECT_FALSE(thing.deviant_isValid(other));
        EXPECT_EQ(Deviant::InvalidObject, thing.internal_getDeviation(other));
        EXPECT_EQ(" Deviant '" + other.getName() + "' : \n",
                  raisedBy([&] { static_cast<void>(thing.valueIn(other)); }));
    }
    Deviant const later = createDeviant("later");
    EXPECT_FALSE(thing.deviant_isValid(later));
    later.beginTransaction();
    EXPECT_EQ(" Deviant 'later' : \n", raisedBy([&] { thing.set(later, 2); }));
    EXPECT_TRUE(later.getObjectsDeviatingFromRoot()->empty()) << "nothing is stored by a refused write";
    later.commitTransaction();
}

TEST_F(DeviantTest, CreationRefusesAnObjectThatAnotherDeviantKnows) {
    Deviant const a = createDeviant("a");
    Thing & thing = make(a, 1);
    DeviantAssertions::enableAssertions(false);
    EXPECT_EQ(std::string("object without metaClass"), raisedBy([&] { root.markObjectCreated(&thing); }).substr(0, 24));
}

TEST_F(DeviantTest, CreationWithANullEntryHidesTheObjectInTheRoot) {
    static_cast<void>(manager->getDeviantWithName("nobody"));
    Thing & thing = makeBody();
    root.markObjectCreated(&thing);
    EXPECT_EQ(Deviant::InvalidObject, thing.internal_getDeviation(root));
}

TEST_F(DeviantTest, OthersSeeTheRootAsItWasBeforeARunningRootTransaction) {
    Thing & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    root.beginTransaction();
    thing.set(root, 2);
    EXPECT_EQ(2, thing.valueIn(root));
    EXPECT_EQ(1, thing.valueIn(a));
    Deviant const during = createDeviant("b");
    EXPECT_EQ(1, thing.valueIn(during));
    root.cancelTransaction();
}

TEST_F(DeviantTest, AFirstWriteWhileTheRootIsWritingStartsFromItsFormerState) {
    Thing & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    root.beginTransaction();
    thing.set(root, 2);
    a.beginTransaction();
    EXPECT_NE(nullptr, thing.getWriteDeviant(a));
    EXPECT_EQ(1, thing.valueIn(a));
    a.commitTransaction();
    root.commitTransaction();
    EXPECT_EQ(1, thing.valueIn(a));
}

TEST_F(DeviantTest, CompositionCyclesAreFoundUpwardsFromTheFirstObject) {
    Thing & top = make(root, 0);
    Thing & middle = make(root, 0);
    Thing & bottom = make(root, 0);
    Thing & stranger = make(root, 0);
    root.beginTransaction();
    middle.setContainer(root, &top);
    bottom.setContainer(root, &middle);
    root.commitTransaction();
    EXPECT_TRUE(root.willCauseCompositionCycles(&bottom, &bottom));
    EXPECT_TRUE(root.willCauseCompositionCycles(&bottom, &top));
    EXPECT_TRUE(Deviant().willCauseCompositionCycles(&bottom, &top));
    EXPECT_FALSE(root.willCauseCompositionCycles(&top, &bottom));
    EXPECT_FALSE(root.willCauseCompositionCycles(&bottom, &stranger));
    std::string const text = "null objects passed to Deviant::willCauseCompositionCycles";
    EXPECT_EQ(text, raisedBy([&] { static_cast<void>(root.willCauseCompositionCycles(&top, nullptr)); }));
    EXPECT_EQ(text, raisedBy([&] { static_cast<void>(root.willCauseCompositionCycles(nullptr, &top)); }));
    root.beginTransaction();
    top.setContainer(root, &bottom);
    EXPECT_TRUE(root.willCauseCompositionCycles(&bottom, &stranger)) << "a ring that is there already";
    root.commitTransaction();
}

// --- assertions ------------------------------------------------------------------------------------------------------

TEST_F(DeviantTest, AssertionTextsWithoutAnObject) {
    DeviantAssertions const onRoot(root.getImpl());
    DeviantAssertions const onNull(nullptr);
    EXPECT_EQ(" Deviant 'root deviant' not opened for transactions.\n",
              raisedBy([&] { static_cast<void>(onRoot.assertWritable(nullptr)); }));
    EXPECT_EQ("cannot operate on null deviant", raisedBy([&] { static_cast<void>(onNull.assertWritable(nullptr)); }));
    EXPECT_EQ(" Deviant 'root deviant' : \n", raisedBy([&] { onRoot.assertObjectNotPresentInDeviant(nullptr); }));
    EXPECT_EQ(" Deviant 'root deviant' : \n", raisedBy([&] { onRoot.assertObjectAlreadyCreated(nullptr); }));
    EXPECT_EQ(" Deviant 'default unnamed root deviant' : \n",
              raisedBy([&] { onNull.assertObjectNotPresentInDeviant(nullptr); }));
    root.beginTransaction();
    EXPECT_TRUE(onRoot.assertWritable(nullptr));
    root.commitTransaction();
}

TEST_F(DeviantTest, TheSwitchCoversWritabilityOnly) {
    EXPECT_TRUE(DeviantAssertions::enableAssertions(false));
    EXPECT_TRUE(DeviantAssertions(nullptr).assertWritable(nullptr));
    EXPECT_TRUE(DeviantAssertions(root.getImpl()).assertWritable(nullptr));
    EXPECT_EQ(" Deviant 'root deviant' : \n",
              raisedBy([&] { DeviantAssertions(root.getImpl()).assertObjectAlreadyCreated(nullptr); }));
    EXPECT_FALSE(DeviantAssertions::enableAssertions(true));
}

// --- registry --------------------------------------------------------------------------------------------------------

TEST_F(DeviantTest, TheRegistryGivesOneIdPerBodyAndDeviant) {
    auto * const thing = new Thing;
    thing->incRef();
    Deviant const a = createDeviant("a");
    void * const inRoot = DeviantRegistry::getId(thing, root);
    void * const inA = DeviantRegistry::getId(thing, a);
    EXPECT_NE(inRoot, inA);
    EXPECT_EQ(inRoot, DeviantRegistry::getId(thing, root));
    EXPECT_EQ(a, DeviantRegistry::getVariantInfo(inA).second);
    EXPECT_EQ(static_cast<ReferenceCountingIntf *>(thing), DeviantRegistry::getVariantInfo(inA).first);
    EXPECT_EQ(thing, DeviantRegistry::getReferenceCountingIntf(inRoot));
    EXPECT_EQ(nullptr, DeviantRegistry::getId(nullptr, a));
    EXPECT_EQ(nullptr, DeviantRegistry::getVariantInfo(nullptr).first);
    EXPECT_EQ(Deviant(), DeviantRegistry::getVariantInfo(nullptr).second);
    EXPECT_EQ(nullptr, DeviantRegistry::getReferenceCountingIntf(nullptr));
    thing->decRef(); // the body's end takes the ids back; the memory checker would tell of a second look
}

// --- end of the manager ----------------------------------------------------------------------------------------------

TEST_F(DeviantTest, TheManagerEndsWithOpenTransactionsInAllDeviants) {
    Thing & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    static_cast<void>(manager->getDeviantWithName("0 sorts before all"));
    for (Deviant const each : {root, a}) {
        each.beginTransaction();
        each.beginTransaction();
        thing.set(each, 2);
    }
    manager->destroy();
    manager->destroy();
    EXPECT_FALSE(a.isValid());
    EXPECT_EQ(2, thing.valueIn(Deviant()));
}

TEST_F(DeviantTest, StatesThatNoOperationHasGivenBackGoWithTheManager) {
    Thing & thing = make(root, 1);
    Deviant const a = createDeviant("a");
    static_cast<void>(a.setStateOfObject(&thing, new testsupport::ThingState));
    a.beginTransaction();
    a.disableUndo();
    static_cast<void>(a.saveOldStateOfObject(&thing, new testsupport::ThingState));
}

} // namespace
} // namespace ZEL
