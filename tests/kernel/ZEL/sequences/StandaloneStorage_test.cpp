#include "SequenceTest.h"

#include <boost/multi_index/mem_fun.hpp>

namespace ZEL::tests {
namespace {

struct List : SequenceFixture {
    List() {
        for (std::size_t i = 0; i < 4; ++i) {
            list.generic_push_back(d, ref(i));
        }
    }
    Ref ref(std::size_t i) { return Ref::ofBody(&bodies[i], d); }
    /// Of the first four items.
    std::vector<int> counts() {
        return {bodies[0].numRef(), bodies[1].numRef(), bodies[2].numRef(), bodies[3].numRef()};
    }

    ListQImpl<Item> list;
};

TEST_F(List, HoldsACountOnEachElement) {
    EXPECT_THAT(counts(), ElementsAre(1, 1, 1, 1));
    list.generic_push_front(d, ref(3));
    list.generic_insert(d, 2, ref(3));
    EXPECT_THAT(counts(), ElementsAre(1, 1, 1, 3));
    list.generic_erase(d, 0);
    list.generic_pop_back(d);
    list.generic_pop_front(d);
    list.generic_erase(d, list.generic_begin(d).get());
    EXPECT_THAT(counts(), ElementsAre(0, 1, 1, 0));
    list.generic_clear(d);
    EXPECT_THAT(counts(), ElementsAre(0, 0, 0, 0));
    {
        ListQImpl<Item> second;
        second.generic_push_back(d, ref(0));
        second.generic_push_back(d, ref(0));
        EXPECT_THAT(counts(), ElementsAre(2, 0, 0, 0));
    }
    EXPECT_THAT(counts(), ElementsAre(0, 0, 0, 0));
}

TEST_F(List, ReplacingTakesNoCountOnTheNewElement) {
    list.generic_replace(d, 1, ref(4));
    EXPECT_THAT(counts(), ElementsAre(1, 0, 1, 1));
    EXPECT_EQ(0, bodies[4].numRef());
    list.generic_erase(d, 1);
    EXPECT_EQ(-1, bodies[4].numRef());
}

TEST_F(List, AReplacingValueIsKeptAlive) {
    using Traits = RefTraits<ImmutableObject>;
    ListQImpl<ImmutableObject> values;
    values.generic_push_back(d, Traits::toRef(Object(Integer(1))));
    values.generic_replace(d, 0, Traits::toRef(Object(Integer(2))));
    EXPECT_EQ("2", Traits::fromRef(values.generic_front(d)).toString().str());
    EXPECT_EQ(1, values.generic_front(d).body()->numRef());
}

TEST_F(List, ErasingARangeTakesCounts) {
    auto const erase = [this] {
        return list.generic_erase(d, list.generic_iteratorAt(d, 1).get(), list.generic_iteratorAt(d, 3).get());
    };
    static_cast<void>(erase());
    EXPECT_THAT(counts(), ElementsAre(1, 2, 2, 1));
    EXPECT_EQ(2, list.generic_size(d));
    EXPECT_RAISES("sequence index out of bounds", erase());
    EXPECT_THAT(counts(), ElementsAre(1, 2, 2, 1));
}

TEST_F(List, IteratorsSurviveTheGrowthOfTheList) {
    auto const it = list.generic_iteratorAt(d, 2);
    for (int i = 0; i < 100; ++i) {
        list.generic_push_back(d, ref(4));
    }
    EXPECT_EQ(&bodies[2], it->current(d).body());
    ListQImpl<Item> second;
    EXPECT_FALSE(list.generic_begin(d)->equal(second.generic_begin(d).get()));
    EXPECT_FALSE(list.generic_begin(d)->equal(nullptr));
}

TEST_F(List, ACopyHasCountsOfItsOwn) {
    {
        ListQImpl<Item> copy(list);
        EXPECT_THAT(counts(), ElementsAre(2, 2, 2, 2));
        copy.generic_erase(d, 0);
        EXPECT_THAT(counts(), ElementsAre(1, 2, 2, 2));
        list.generic_clear(d);
        EXPECT_EQ(3, copy.generic_size(d));
        list.generic_push_back(d, ref(0));
        copy = list;
        copy = *&copy;
        EXPECT_THAT(counts(), ElementsAre(2, 0, 0, 0));
    }
    EXPECT_THAT(counts(), ElementsAre(1, 0, 0, 0));
}

TEST_F(List, RefusesAnElementOfAnotherClass) {
    EXPECT_FALSE(list.generic_accepts(d, Ref::ofBody(&owner, d)));
    EXPECT_RAISES(kInternalError, list.generic_push_back(d, Ref::ofBody(&owner, d)));
    EXPECT_EQ(0, owner.numRef());
}

// --- two indices -----------------------------------------------------------------------------------------------------

TEST(MultiIndex, HoldsItsElementsByHandlesEachOnce) {
    Deviant const d;
    std::vector<ItemBody> bodies(3);
    ItemBody other;
    ItemBody replacing;
    {
        MultiIndexImpl<Item, 1> storage;
        for (auto & body : bodies) {
            storage.generic_push_back(d, Ref::ofBody(&body, d));
        }
        auto const found = storage.generic_insert(d, storage.generic_begin(d).get(), Ref::ofBody(&bodies[2], d));
        EXPECT_EQ(2, found->position()) << "the place of the first";
        EXPECT_EQ(&bodies[2], found->current(d).body());
        EXPECT_EQ(1, bodies[2].numRef());
        storage.generic_erase(d, 0);
        storage.generic_push_front(d, Ref::ofBody(&other, d));
        storage.generic_push_front(d, Ref::ofBody(&bodies[0], d));
        EXPECT_EQ(3, found->position()) << "it stays at its element";
        found->previous(d);
        storage.generic_replace(d, 2, Ref::ofBody(&replacing, d));
        EXPECT_EQ(&replacing, found->current(d).body());
        auto const end = storage.generic_end(d);
        end->next(d);
        EXPECT_TRUE(end->equal(storage.generic_end(d).get()));
        EXPECT_FALSE(end->equal(nullptr));
        EXPECT_RAISES("sequence index out of bounds", storage.generic_erase(d, end.get()));
        MultiIndexImpl<Item, 1> second;
        EXPECT_RAISES(kInternalError, storage.generic_erase(d, second.generic_begin(d).get()));
    }
    EXPECT_EQ(0, bodies[2].numRef());
}

/// A value with a key of its own.
struct Named {
    std::string name;
    int number = 0;

    [[nodiscard]] std::string getName() const { return name; }
    operator ValueObject() const { return ValueObject(); }
    explicit Named(ImmutableValueObject const &) {}
    Named() = default;
    Named(std::string aName, int aNumber) : name(std::move(aName)), number(aNumber) {}
    friend bool operator==(Named const &, Named const &) = default;
    static std::string getTypeName() { return "TEST.Named"; }
};

TEST(MultiIndex, WithAKeyTheKeyAloneDecides) {
    Deviant const d;
    using ByName = boost::multi_index::const_mem_fun<Named, std::string, &Named::getName>;
    MultiIndexImpl<Named, 1, ByName> storage;
    auto const named = [](char const * name, int number) { return Ref::ofValue(Named(name, number), Deviant()); };
    storage.generic_push_back(d, named("a", 1));
    storage.generic_push_back(d, named("b", 2));
    storage.generic_push_back(d, named("a", 3));
    EXPECT_EQ(2, storage.generic_size(d));
    EXPECT_TRUE(storage.generic_contains(d, named("a", 4)));
    storage.generic_replace(d, 1, named("a", 5));
    EXPECT_EQ(2, storage.generic_at(d, 1).valueAs<Named>()->number);
    storage.generic_replace(d, 0, named("a", 6));
    EXPECT_EQ(6, storage.generic_at(d, 0).valueAs<Named>()->number);
    EXPECT_STREQ("TEST.SequenceOfNamed", storage.generic_getOrcaName(false, true, ""));
}

} // namespace
} // namespace ZEL::tests
