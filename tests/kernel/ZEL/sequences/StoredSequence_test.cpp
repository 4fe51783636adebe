#include "SequenceTest.h"

namespace ZEL::tests {
namespace {

using StoredIterator = GenericDeviantSequence::Iterator;

struct StoredSequence : SequenceFixture {
    SequencePtr body() { return SequencePtr(stored(owner).getImplementation()); }
};

TEST_F(StoredSequence, UsesTheStateOfItsOwnDeviantAndReturnsElementsInTheCallersOne) {
    FakeDeviant own(2);
    FakeDeviant caller(3);
    Sequence<Item> const here = stored(owner, own);
    items.push_back(item(0));
    EXPECT_EQ(1, here.size());
    here.push_back(item(1));
    EXPECT_EQ(1, items.size());
    items.clear();
    Sequence<Item> const again(here.getImplementation(), caller);
    EXPECT_EQ(2, again.size());
    EXPECT_EQ(Deviant(caller), again.front().getDeviant());
}

TEST_F(StoredSequence, DoesNotAskForTheStateToWriteWhenNothingChanges) {
    items.push_back(item(0));
    items.push_back(item(1));
    owner.numberOfWrites = 0;
    items.push_back(item(0));
    items.push_front(item(1));
    items.insert(1, item(0));
    items.replace(0, item(0));
    items.replace(0, item(1));
    items.erase(items.begin(), items.begin());
    EXPECT_FALSE(items.remove(item(5)));
    EXPECT_RAISES("sequence index out of bounds", items.erase(2));
    EXPECT_RAISES(kInternalError, items.push_back(Item()));
    EXPECT_EQ(0, owner.numberOfWrites);
    items.clear();
    EXPECT_EQ(1, owner.numberOfWrites);
    items.clear();
    EXPECT_RAISES("sequence is empty", items.pop_back());
    EXPECT_EQ(1, owner.numberOfWrites);
}

TEST_F(StoredSequence, RefusesElementsOfAnotherClass) {
    for (Ref const & foreign : {Ref::ofValue(String("x"), d), Ref::ofBody(&owner, d)}) {
        EXPECT_RAISES(kInternalError, body()->generic_push_back(d, foreign));
    }
    EXPECT_FALSE(body()->generic_accepts(d, Ref::ofBody(&owner, d)));
    EXPECT_TRUE(items.accepts(item(0)));
    EXPECT_EQ(0, owner.numberOfWrites);
}

TEST_F(StoredSequence, TakesNoCountOnElements) {
    items.push_back(item(0));
    EXPECT_EQ(0, bodies[0].numRef());
    {
        Item const read = items.front();
        EXPECT_EQ(1, bodies[0].numRef());
    }
    items.clear();
    EXPECT_EQ(0, bodies[0].numRef());
}

TEST_F(StoredSequence, AsksItsDeviantBeforeItTouchesTheObject) {
    FakeDeviant deviant(0);
    auto gone = std::make_unique<Owner>();
    Sequence<Item> const sequence = stored(*gone, deviant);
    gone.reset();
    deviant.destroyModel();
    EXPECT_RAISES("object accessed after its model has been destroyed", sequence.size());
    EXPECT_RAISES("object accessed after its model has been destroyed", sequence.push_back(item(0)));
    EXPECT_RAISES("object accessed after its model has been destroyed", sequence.toVector());
}

// --- iterators -------------------------------------------------------------------------------------------------------

TEST_F(StoredSequence, IteratorsArePositionsThatWritesDoNotMove) {
    for (std::size_t i = 0; i < 4; ++i) {
        items.push_back(item(i));
    }
    SequenceIntf & sequence = *items.getImplementation();
    auto const it = sequence.generic_iteratorAt(d, 2);
    items.erase(0);
    EXPECT_EQ(&bodies[3], it->current(d).body());
    items.push_front(item(4));
    EXPECT_EQ(&bodies[2], it->current(d).body());
    auto const end = sequence.generic_end(d);
    items.pop_back();
    items.pop_back();
    EXPECT_RAISES("sequence index out of bounds", it->current(d));
    auto const begin = sequence.generic_begin(d);
    EXPECT_RAISES("sequence index out of bounds", sequence.generic_erase(d, begin.get(), end.get()));
    EXPECT_EQ(2, items.size());
    EXPECT_RAISES(kNullRef, *Sequence<Item>::iterator());
    EXPECT_RAISES(kNullRef, items.erase(Sequence<Item>::iterator()));
}

TEST_F(StoredSequence, AnOrphanedIteratorRaisesOnAllButItsEnd) {
    SequencePtr holder(new GenericDeviantSequence(&owner, d, Owner::items));
    auto const it = holder->generic_begin(d);
    auto const clone = it->clone();
    auto before = holder->generic_begin(d);
    before->previous(d); // stands before the first place
    before.reset();
    holder = nullptr;

    EXPECT_RAISES("dereferencing an invalid iterator", it->current(d));
    EXPECT_RAISES("++ on an invalid iterator", it->next(d));
    EXPECT_RAISES("-- on an invalid iterator", it->previous(d));
    EXPECT_RAISES("comparision of an invalid iterator", it->equal(clone.get()));
    EXPECT_RAISES("comparision of an invalid iterator",
                  items.getImplementation()->generic_begin(d)->equal(clone.get()));
    EXPECT_RAISES("cloning an invalid iterator", clone->clone());
    EXPECT_RAISES("null sequence for iterator constructor", StoredIterator(nullptr, 0));
}

TEST_F(StoredSequence, IteratorsOfTwoSequencesCompareByPosition) {
    Owner second;
    SequenceIntf & a = *items.getImplementation();
    Sequence<Item> const others = stored(second);
    SequenceIntf & b = *others.getImplementation();
    EXPECT_TRUE(a.generic_begin(d)->equal(b.generic_begin(d).get()));
    EXPECT_TRUE(a.generic_begin(d)->equal(a.generic_end(d).get()));
    EXPECT_FALSE(a.generic_begin(d)->equal(b.generic_iteratorAt(d, 1).get()));
}

// --- texts in one word -----------------------------------------------------------------------------------------------

TEST(PersistentTextSequence, ACopyKeepsItsTextsWhenTheOtherIsWritten) {
    internal::PersistentTextSequence original;
    original.push_back("a");
    original.push_back("b");
    internal::PersistentTextSequence const kept = original;
    original.insert(1, "c");
    original.eraseAt(0);
    original.replaceAt(0, "d");
    EXPECT_EQ("a", kept.at(0));
    EXPECT_EQ("b", kept.at(1));
    EXPECT_EQ(2u, kept.size());
    EXPECT_EQ("d", original.at(0));
    original = kept;
    EXPECT_TRUE(original == kept);
    original.clear();
    EXPECT_TRUE(original.empty());
    EXPECT_EQ(1, kept.indexOf("b"));
    EXPECT_FALSE(original == kept);
}

} // namespace
} // namespace ZEL::tests
