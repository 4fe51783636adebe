#include "support/ExpectRaises.h"
#include "support/SequenceItems.h"

#include <ZEL/String.h>
#include <ZEL/sequences/GenericDeviantSequence.h>
#include <ZEL/sequences/Sequence.h>

namespace ZEL::Generic {
namespace {

using Test::FakeDeviant;
using Test::Item;
using Test::ItemBody;
using Test::Owner;

using StoredIterator = GenericDeviantSequence::Iterator;

class StoredSequence : public testing::Test {
protected:
    GenericDeviantSequence * make(Deviant deviant, SequenceField const & field = Owner::items) {
        return new GenericDeviantSequence(&owner, deviant, field);
    }
    Sequence<Item> items(Deviant deviant = Deviant()) { return Sequence<Item>(make(deviant), deviant); }
    Item item(std::size_t i) { return Item(&bodies[i], Deviant()); }

    Owner owner;
    std::vector<ItemBody> bodies{8};
    Deviant d;
};

TEST_F(StoredSequence, ADeviantFollowsTheRootUntilItsFirstWrite) {
    FakeDeviant deviant(2);
    items().push_back(item(0));
    Sequence<Item> const here = items(deviant);
    EXPECT_EQ(1, here.size());
    items().push_back(item(1));
    EXPECT_EQ(2, here.size());
    here.push_back(item(2));
    EXPECT_EQ(3, here.size());
    EXPECT_EQ(2, items().size());
    items().clear();
    EXPECT_EQ(3, here.size());
}

TEST_F(StoredSequence, UsesItsOwnDeviantAndGivesElementsTheCallersOne) {
    FakeDeviant own(2);
    FakeDeviant caller(3);
    items(own).push_back(item(0));
    Sequence<Item> const sequence(make(own), caller);
    EXPECT_EQ(1, sequence.size());
    EXPECT_EQ(Deviant(caller), sequence.front().getDeviant());
}

TEST_F(StoredSequence, AWriteOutsideOfATransactionChangesNothing) {
    items().push_back(item(0));
    owner.isOpen = false;
    EXPECT_RAISES("not opened for transactions", items().push_back(item(1)));
    EXPECT_RAISES("not opened for transactions", items().clear());
    EXPECT_RAISES("not opened for transactions", items().erase(0));
    EXPECT_RAISES("not opened for transactions", items().replace(0, item(1)));
    EXPECT_EQ(1, items().size());
}

TEST_F(StoredSequence, DoesNotAskForTheStateToWriteWhenNothingChanges) {
    Sequence<Item> const sequence = items();
    sequence.push_back(item(0));
    sequence.push_back(item(1));
    owner.numberOfWrites = 0;
    sequence.push_back(item(0));
    sequence.push_front(item(1));
    sequence.insert(1, item(0));
    sequence.replace(0, item(0));
    sequence.replace(0, item(1));
    sequence.erase(sequence.begin(), sequence.begin());
    EXPECT_FALSE(sequence.remove(item(5)));
    EXPECT_RAISES("sequence index out of bounds", sequence.erase(2));
    EXPECT_RAISES("An Internal Error has occurred", sequence.push_back(Item()));
    EXPECT_EQ(0, owner.numberOfWrites);
    sequence.clear();
    EXPECT_EQ(1, owner.numberOfWrites);
    sequence.clear();
    EXPECT_RAISES("sequence is empty", sequence.pop_back());
    EXPECT_EQ(1, owner.numberOfWrites);
}

TEST_F(StoredSequence, RefusesElementsOfAnotherClass) {
    Sequence<Item> const sequence = items();
    Ref const text = Ref::ofValue(String("x"), d);
    EXPECT_RAISES("An Internal Error has occurred", sequence.getImplementation()->generic_push_back(d, text));
    EXPECT_RAISES("An Internal Error has occurred",
                  sequence.getImplementation()->generic_push_back(d, Ref::ofBody(&owner, d)));
    EXPECT_FALSE(sequence.getImplementation()->generic_accepts(d, Ref::ofBody(&owner, d)));
    EXPECT_TRUE(sequence.accepts(item(0)));
    EXPECT_EQ(0, owner.numberOfWrites);
}

TEST_F(StoredSequence, TakesNoCountOnElements) {
    Sequence<Item> const sequence = items();
    sequence.push_back(Item(&bodies[0], d));
    EXPECT_EQ(0, bodies[0].numRef());
    {
        Item const read = sequence.front();
        EXPECT_EQ(1, bodies[0].numRef());
    }
    sequence.clear();
    EXPECT_EQ(0, bodies[0].numRef());
}

TEST_F(StoredSequence, AsksItsDeviantBeforeItTouchesTheObject) {
    FakeDeviant deviant(0);
    auto gone = std::make_unique<Owner>();
    Sequence<Item> const sequence(new GenericDeviantSequence(gone.get(), deviant, Owner::items), deviant);
    gone.reset();
    deviant.destroyModel();
    EXPECT_RAISES("object accessed after its model has been destroyed", sequence.size());
    EXPECT_RAISES("object accessed after its model has been destroyed", sequence.push_back(item(0)));
    EXPECT_RAISES("object accessed after its model has been destroyed", sequence.toVector());
}

TEST_F(StoredSequence, NamesItsTypeByBothFlags) {
    SequencePtr const sequence(make(d));
    EXPECT_STREQ("TEST.ImmutableSequenceOfImmutableItem", sequence->generic_getOrcaName(true, true, ""));
    EXPECT_STREQ("TEST.ImmutableSequenceOfItem", sequence->generic_getOrcaName(true, false, ""));
    EXPECT_STREQ("TEST.SequenceOfImmutableItem", sequence->generic_getOrcaName(false, true, ""));
    EXPECT_STREQ("TEST.SequenceOfItem", sequence->generic_getOrcaName(false, false, ""));
    SequencePtr const texts(make(d, Owner::texts));
    EXPECT_STREQ("ZEL.ImmutableSequenceOfString", texts->generic_getOrcaName(true, true, ""));
    EXPECT_STREQ("ZEL.ImmutableSequenceOfString", texts->generic_getOrcaName(true, false, ""));
    EXPECT_STREQ("ZEL.SequenceOfString", texts->generic_getOrcaName(false, true, ""));
    EXPECT_STREQ("ZEL.SequenceOfString", texts->generic_getOrcaName(false, false, ""));
}

// --- iterators -------------------------------------------------------------------------------------------------------

TEST_F(StoredSequence, IteratorsArePositionsThatWritesDoNotMove) {
    Sequence<Item> const sequence = items();
    for (std::size_t i = 0; i < 4; ++i) {
        sequence.push_back(item(i));
    }
    auto const it = sequence.getImplementation()->generic_iteratorAt(d, 2);
    sequence.erase(0);
    EXPECT_EQ(&bodies[3], it->current(d).body());
    sequence.push_front(item(4));
    EXPECT_EQ(&bodies[2], it->current(d).body());
    auto const end = sequence.getImplementation()->generic_end(d);
    sequence.pop_back();
    sequence.pop_back();
    EXPECT_RAISES("sequence index out of bounds", it->current(d));
    auto const begin = sequence.getImplementation()->generic_begin(d);
    EXPECT_RAISES("sequence index out of bounds",
                  sequence.getImplementation()->generic_erase(d, begin.get(), end.get()));
    EXPECT_EQ(2, sequence.size());
    EXPECT_RAISES("Cannot access NULL ref. Use isValid() before calling methods", *Sequence<Item>::iterator());
    EXPECT_RAISES("Cannot access NULL ref. Use isValid() before calling methods",
                  sequence.erase(Sequence<Item>::iterator()));
}

TEST_F(StoredSequence, AnOrphanedIteratorRaisesOnAllButItsEnd) {
    auto * const sequence = make(d);
    SequencePtr holder(sequence);
    std::unique_ptr<IteratorIntf> const it = sequence->generic_begin(d);
    std::unique_ptr<IteratorIntf> const clone = it->clone();
    std::unique_ptr<IteratorIntf> before = sequence->generic_begin(d);
    before->previous(d); // stands before the first place that is told
    before.reset();
    holder = nullptr;
    SequencePtr const other(make(d));
    std::unique_ptr<IteratorIntf> const living = other->generic_begin(d);

    EXPECT_RAISES("dereferencing an invalid iterator", it->current(d));
    EXPECT_RAISES("++ on an invalid iterator", it->next(d));
    EXPECT_RAISES("-- on an invalid iterator", it->previous(d));
    EXPECT_RAISES("comparision of an invalid iterator", it->equal(clone.get()));
    EXPECT_RAISES("comparision of an invalid iterator", living->equal(clone.get()));
    EXPECT_RAISES("cloning an invalid iterator", clone->clone());
    EXPECT_RAISES("null sequence for iterator constructor", StoredIterator(nullptr, 0));
}

TEST_F(StoredSequence, IteratorsOfTwoSequencesCompareByPosition) {
    Owner second;
    SequencePtr const a(make(d));
    SequencePtr const b(new GenericDeviantSequence(&second, d, Owner::items));
    EXPECT_TRUE(a->generic_begin(d)->equal(b->generic_begin(d).get()));
    EXPECT_TRUE(a->generic_begin(d)->equal(a->generic_end(d).get()));
    EXPECT_FALSE(a->generic_begin(d)->equal(b->generic_iteratorAt(d, 1).get()));
}

// --- texts in one word -----------------------------------------------------------------------------------------------

TEST(PersistentTextSequence, ACopyKeepsItsTextsWhenTheOtherIsWritten) {
    internal::PersistentTextSequence original;
    original.push_back("a");
    original.push_back("b");
    internal::PersistentTextSequence const kept = original;
    EXPECT_TRUE(kept.sharesStorageWith(original));
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
} // namespace ZEL::Generic
