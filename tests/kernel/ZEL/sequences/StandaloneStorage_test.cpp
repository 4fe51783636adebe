#include "support/ExpectRaises.h"
#include "support/SequenceItems.h"

#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/sequences/ListQImpl.h>
#include <ZEL/sequences/MultiIndexImpl.ipp>
#include <ZEL/sequences/Sequence.h>

#include <boost/multi_index/mem_fun.hpp>

namespace ZEL::Generic {
namespace {

using Test::Item;
using Test::ItemBody;
using Test::Owner;

class List : public testing::Test {
protected:
    List() {
        for (auto & body : bodies) {
            list.generic_push_back(d, Ref::ofBody(&body, d));
        }
    }
    std::vector<int> counts() {
        std::vector<int> all;
        for (auto & body : bodies) {
            all.push_back(body.numRef());
        }
        return all;
    }

    Deviant d;
    std::vector<ItemBody> bodies{4};
    ItemBody other;
    ListQImpl<Item> list;
};

TEST_F(List, GivesItsCountsBackAtItsEnd) {
    {
        ListQImpl<Item> second;
        second.generic_push_back(d, Ref::ofBody(&bodies[0], d));
        second.generic_push_back(d, Ref::ofBody(&bodies[0], d));
        EXPECT_EQ((std::vector<int>{3, 1, 1, 1}), counts());
    }
    EXPECT_EQ((std::vector<int>{1, 1, 1, 1}), counts());
}

TEST_F(List, HoldsACountOnEachElement) {
    EXPECT_EQ((std::vector<int>{1, 1, 1, 1}), counts());
    list.generic_push_front(d, Ref::ofBody(&bodies[3], d));
    list.generic_insert(d, 2, Ref::ofBody(&bodies[3], d));
    EXPECT_EQ((std::vector<int>{1, 1, 1, 3}), counts());
    list.generic_erase(d, 0);
    list.generic_pop_back(d);
    list.generic_pop_front(d);
    list.generic_erase(d, list.generic_begin(d).get());
    EXPECT_EQ((std::vector<int>{0, 1, 1, 0}), counts());
    list.generic_clear(d);
    EXPECT_EQ((std::vector<int>{0, 0, 0, 0}), counts());
}

TEST_F(List, ReplacingTakesNoCountOnTheNewElement) {
    list.generic_replace(d, 1, Ref::ofBody(&other, d));
    EXPECT_EQ((std::vector<int>{1, 0, 1, 1}), counts());
    EXPECT_EQ(0, other.numRef());
    list.generic_erase(d, 1);
    EXPECT_EQ(-1, other.numRef());
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
    static_cast<void>(list.generic_erase(d, list.generic_iteratorAt(d, 1).get(), list.generic_iteratorAt(d, 3).get()));
    EXPECT_EQ((std::vector<int>{1, 2, 2, 1}), counts());
    EXPECT_EQ(2, list.generic_size(d));
    EXPECT_RAISES("sequence index out of bounds",
                  list.generic_erase(d, list.generic_iteratorAt(d, 1).get(), list.generic_iteratorAt(d, 3).get()));
    EXPECT_EQ((std::vector<int>{1, 2, 2, 1}), counts());
}

TEST_F(List, IteratorsSurviveTheGrowthOfTheList) {
    auto const it = list.generic_iteratorAt(d, 2);
    for (int i = 0; i < 100; ++i) {
        list.generic_push_back(d, Ref::ofBody(&other, d));
    }
    EXPECT_EQ(&bodies[2], it->current(d).body());
    ListQImpl<Item> second;
    EXPECT_FALSE(list.generic_begin(d)->equal(second.generic_begin(d).get()));
    EXPECT_FALSE(list.generic_begin(d)->equal(nullptr));
}

TEST_F(List, RefusesAnElementOfAnotherClass) {
    Owner owner;
    EXPECT_FALSE(list.generic_accepts(d, Ref::ofBody(&owner, d)));
    EXPECT_RAISES("An Internal Error has occurred", list.generic_push_back(d, Ref::ofBody(&owner, d)));
    EXPECT_EQ(0, owner.numRef());
}

// --- two indices -----------------------------------------------------------------------------------------------------

TEST(MultiIndex, HoldsItsElementsByHandles) {
    ItemBody body;
    {
        MultiIndexImpl<Item, 1> storage;
        storage.generic_push_back(Deviant(), Ref::ofBody(&body, Deviant()));
        EXPECT_EQ(1, body.numRef());
    }
    EXPECT_EQ(0, body.numRef());
}

TEST(MultiIndex, AnInsertedDuplicateGivesThePlaceOfTheFirst) {
    Deviant const d;
    std::vector<ItemBody> bodies(3);
    MultiIndexImpl<Item, 1> storage;
    for (auto & body : bodies) {
        storage.generic_push_back(d, Ref::ofBody(&body, d));
    }
    auto const found = storage.generic_insert(d, storage.generic_begin(d).get(), Ref::ofBody(&bodies[2], d));
    EXPECT_EQ(2, found->position());
    EXPECT_EQ(&bodies[2], found->current(d).body());
    auto const end = storage.generic_end(d);
    end->next(d);
    EXPECT_TRUE(end->equal(storage.generic_end(d).get()));
    EXPECT_FALSE(end->equal(nullptr));
    EXPECT_RAISES("sequence index out of bounds", storage.generic_erase(d, end.get()));
    MultiIndexImpl<Item, 1> other;
    EXPECT_RAISES("An Internal Error has occurred", storage.generic_erase(d, other.generic_begin(d).get()));
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
} // namespace ZEL::Generic
