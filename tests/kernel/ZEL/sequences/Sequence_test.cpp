#include "SequenceTest.h"

#include <algorithm>
#include <iterator>

namespace ZEL::tests {
namespace {

/// With four items in it.
struct TypedSequence : SequenceFixture {
    TypedSequence() {
        for (std::size_t i = 0; i < 4; ++i) {
            items.push_back(item(i));
        }
    }
};

template <class H> constexpr bool isReadOnly = !requires(H const & sequence) { sequence.clear(); };

TEST_F(TypedSequence, RaisesOnEveryUseOfANullHandle) {
    Sequence<Item> const null;
    EXPECT_FALSE(null.isValid());
    EXPECT_EQ(nullptr, null.getImplementationWithoutAssert());
    EXPECT_RAISES(kNullRef, null.size());
    EXPECT_RAISES(kNullRef, null.empty());
    EXPECT_RAISES(kNullRef, null.begin());
    EXPECT_RAISES(kNullRef, null.end());
    EXPECT_RAISES(kNullRef, null.at(0));
    EXPECT_RAISES(kNullRef, null.push_back(Item()));
    EXPECT_RAISES(kNullRef, null.toVector());
    EXPECT_RAISES(kNullRef, null.getImplementation());
    EXPECT_RAISES(kNullRef, null.getOrcaName());
}

TEST_F(TypedSequence, OneBodyServesHandlesOfAllClassesThatItsElementsHave) {
    static_assert(std::is_convertible_v<Sequence<Item>, ImmutableSequence<Item>>);
    static_assert(std::is_convertible_v<Sequence<Item>, ImmutableSequence<ImmutableItem>>);
    static_assert(std::is_convertible_v<Sequence<Item>, Sequence<Object>>);
    static_assert(std::is_convertible_v<Sequence<SpecialItem>, Sequence<Item>>);
    static_assert(std::is_convertible_v<Sequence<String>, Sequence<Object>>);
    static_assert(!std::is_convertible_v<Sequence<Item>, Sequence<SpecialItem>>);
    static_assert(std::is_constructible_v<Sequence<SpecialItem>, Sequence<Item>>);
    static_assert(!std::is_constructible_v<Sequence<Item>, ImmutableSequence<Item>>);
    static_assert(isReadOnly<ImmutableSequence<Item>> && !isReadOnly<Sequence<Item>>);

    Sequence<Object> const objects = items;
    EXPECT_EQ(items.getImplementation(), objects.getImplementation());
    EXPECT_TRUE(objects[1] == item(1));
    EXPECT_TRUE(objects.contains(item(1)));
    objects.push_back(special(0));
    EXPECT_EQ(5, items.size());
    EXPECT_RAISES(kInternalError, objects.push_back(String("x")));

    Sequence<SpecialItem> const narrowed(items);
    EXPECT_TRUE(narrowed.back().isValid());
    EXPECT_RAISES(kInternalError, narrowed.front());
}

TEST_F(TypedSequence, ObjectsAndTextsMeetInOneBody) {
    auto const texts = stored<String>(owner, d, Owner::texts);
    Sequence<Object> const objects = texts;
    objects.push_back(String("a"));
    texts.push_back("b");
    EXPECT_EQ("a", texts[0].str());
    EXPECT_EQ("b", objects[1].toString().str());
    EXPECT_TRUE(objects.contains(String("b")));
    EXPECT_EQ(1, objects.indexOf(String("b")));
    EXPECT_RAISES(kInternalError, objects.push_back(item(0)));
    EXPECT_FALSE(objects.contains(item(0)));

    Sequence<ImmutableObject> const list = SequenceBuilder{Deviant(), 0, false, true}.create<ImmutableObject>();
    list.push_back(Object(String("c")));
    EXPECT_EQ("c", Sequence<String>(list)[0].str());
    EXPECT_EQ(0, list.indexOf(Object(String("c"))));
}

TEST_F(TypedSequence, WorksWithTheLibrarysAlgorithms) {
    EXPECT_EQ(2, std::distance(items.begin(), std::find(items.begin(), items.end(), item(2))));
    std::vector<Item> backwards(std::reverse_iterator(items.end()), std::reverse_iterator(items.begin()));
    EXPECT_THAT(backwards, ElementsAre(item(3), item(2), item(1), item(0)));
    EXPECT_TRUE(items.begin()->isValid());
}

TEST_F(TypedSequence, IteratorsOutliveTheirHandle) {
    auto it = stored(owner).begin();
    EXPECT_TRUE(*++it == item(1));
    auto const copy = it++;
    EXPECT_TRUE(*copy == item(1));
    EXPECT_TRUE(*it == item(2));
    EXPECT_TRUE(*--it == item(1));
}

TEST_F(TypedSequence, WritesAtIterators) {
    auto it = items.erase(std::next(items.begin()));
    EXPECT_TRUE(*it == item(2));
    it = items.insert(it, item(1));
    EXPECT_TRUE(*it == item(1));
    it = items.erase(items.begin(), std::prev(items.end()));
    EXPECT_TRUE(it == items.begin());
    EXPECT_THAT(items, ElementsAre(item(3)));
}

TEST_F(TypedSequence, CarriesItsDeviantToElements) {
    FakeDeviant deviant(4);
    items.setDeviant(deviant);
    EXPECT_EQ(Deviant(deviant), items.front().getDeviant());
    EXPECT_EQ(Deviant(deviant), items.begin()->getDeviant());
    EXPECT_EQ(Deviant(deviant), items.toVector().back().getDeviant());
}

TEST_F(TypedSequence, KnowsTheNameOfItsType) {
    EXPECT_STREQ("TEST.SequenceOfItem", items.getOrcaName());
    EXPECT_STREQ("TEST.ImmutableSequenceOfItem", ImmutableSequence<Item>(items).getOrcaName());
    EXPECT_STREQ("TEST.ImmutableSequenceOfImmutableItem", ImmutableSequence<ImmutableItem>(items).getOrcaName());
    EXPECT_STREQ("TEST.SequenceOfImmutableItem", Sequence<ImmutableItem>(items.getImplementation(), d).getOrcaName());
    EXPECT_STREQ("ZEL.ImmutableSequenceOfString",
                 ImmutableSequence<String>(stored<String>(owner, d, Owner::texts)).getOrcaName());
    SequenceHandle const null(GenericNullSequence::getSingleton(), Deviant());
    EXPECT_STREQ("TEST.SequenceOfSpecialItem", Sequence<SpecialItem>(null.getImplementation(), d).getOrcaName());
    EXPECT_STREQ("ZEL.SequenceOfString", Sequence<String>(null.getImplementation(), d).getOrcaName());
}

// --- the null sequence -----------------------------------------------------------------------------------------------

TEST_F(TypedSequence, TheNullSequenceTakesEverythingAndHoldsNothing) {
    Sequence<Item> const null(GenericNullSequence::getSingleton(), Deviant());
    int const before = bodies[0].numRef();
    null.push_back(item(0));
    null.push_front(item(0));
    null.insert(7, item(0));
    null.replace(-1, item(0));
    null.insert(null.begin(), item(0));
    null.erase(3);
    null.erase(null.begin());
    null.erase(null.begin(), null.end());
    null.pop_back();
    null.pop_front();
    null.clear();
    EXPECT_EQ(before, bodies[0].numRef());
    EXPECT_EQ(0, null.size());
    for (Item const & element : {null.front(), null.back(), null.at(5)}) {
        EXPECT_FALSE(element.isValid());
    }
    EXPECT_FALSE(null.contains(item(0)));
    EXPECT_TRUE(null.begin() == null.end());
    EXPECT_TRUE(null.toVector().empty());
}

// --- creation --------------------------------------------------------------------------------------------------------

TEST_F(TypedSequence, ABuilderMakesAListThatLivesWithItsHandles) {
    FakeDeviant deviant(1);
    {
        auto const list = SequenceBuilder{deviant, 0, false, true}.create<ImmutableObject>();
        list.push_back(item(0));
        list.push_back(item(0));
        EXPECT_EQ(2, list.size());
        EXPECT_EQ(2, bodies[0].numRef());
        EXPECT_EQ(Deviant(deviant), list.front().getDeviant());
    }
    EXPECT_EQ(0, bodies[0].numRef());
    {
        auto const set = SequenceBuilder{deviant, SequenceBuilder::kMultiIndex, true}.create<ImmutableObject>();
        set.push_back(item(0));
        set.push_back(item(0));
        EXPECT_EQ(1, set.size());
    }
    // Of any class of elements.
    {
        auto const list = SequenceBuilder{deviant}.create<SpecialItem>();
        list.push_back(SpecialItem(&specials[0], d));
        EXPECT_STREQ("TEST.SequenceOfSpecialItem", list.getOrcaName());
        EXPECT_EQ(1, specials[0].numRef());
    }
    EXPECT_EQ(0, specials[0].numRef());
    // A bare storage is the caller's and has to outlive its handles.
    std::unique_ptr<SequenceIntf> owned;
    auto const bare = SequenceBuilder{Deviant(), 0, false, false}.create<ImmutableObject>();
    owned.reset(bare.getImplementation());
    EXPECT_EQ(0, bare.size());
}

TEST_F(TypedSequence, AStorageGivenAwayGoesWithTheLastHandle) {
    auto storage = std::make_unique<ListQImpl<Item>>();
    storage->generic_push_back(d, Ref::ofBody(&bodies[0], d));
    std::unique_ptr<SequenceIntf> unknown = std::make_unique<MultiIndexImpl<Item, 1>>();
    unknown->generic_push_back(d, Ref::ofBody(&bodies[1], d));
    int const before = bodies[0].numRef();
    {
        Sequence<Item> const list(std::move(storage), d);
        ImmutableSequence<Item> const set(std::move(unknown), d);
        Sequence<Item> const copy(list);
        EXPECT_EQ(1, copy.size());
        EXPECT_EQ(1, set.size());
        EXPECT_EQ(before, bodies[0].numRef());
    }
    EXPECT_EQ(before - 1, bodies[0].numRef());
    EXPECT_EQ(before - 1, bodies[1].numRef());
    // Wrapped once more by hand.
    Sequence<Item> const twice(
        std::make_unique<GenericReferenceCountingSequenceProxy>(Sequence<Item>(std::make_unique<ListQImpl<Item>>(), d)),
        d);
    twice.push_back(item(0));
    EXPECT_EQ(1, twice.size());
    EXPECT_FALSE(Sequence<Item>(std::unique_ptr<SequenceIntf>(), d).isValid());
}

TEST_F(TypedSequence, ABuilderRefusesWhatItCannotMake) {
    EXPECT_RAISES("cannot use GLIST and aIsUnique together",
                  (SequenceBuilder{Deviant(), 0, true, true}.create<ImmutableObject>()));
    EXPECT_RAISES("unknown sequence implementation requested",
                  (SequenceBuilder{Deviant(), 2, false, true}.create<ImmutableObject>()));
    EXPECT_RAISES("unknown sequence implementation requested",
                  (SequenceBuilder{Deviant(), SequenceBuilder::kMultiIndex, true, true}.create<SpecialItem>()));
    EXPECT_RAISES(kNullRef, GenericReferenceCountingSequenceProxy(SequenceHandle()));
}

} // namespace
} // namespace ZEL::tests
