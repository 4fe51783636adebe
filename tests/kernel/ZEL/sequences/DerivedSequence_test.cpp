#include "support/ExpectRaises.h"
#include "support/SequenceItems.h"

#include <ZEL/String.h>
#include <ZEL/sequences/GenericAssociationSequence.h>
#include <ZEL/sequences/GenericCombinedSequence.h>
#include <ZEL/sequences/GenericDeviantSequence.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/GenericNullSequence.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>
#include <ZEL/sequences/Sequence.h>

#include <gmock/gmock.h>

namespace ZEL::Generic {
namespace {

using combined_sequence_internal::GenericCombinedSequence;
using filtered_sequence_internal::GenericFilter;
using filtered_sequence_internal::GenericFilteredSequence;
using filtered_sequence_internal::makeFilter;
using filtered_sequence_internal::showsOnly;
using filtered_sequence_internal::takesOnly;
using Test::FakeDeviant;
using Test::Item;
using Test::ItemBody;
using Test::ItemIntf;
using Test::Owner;
using Test::SpecialItem;
using Test::SpecialItemBody;
using Test::SpecialItemIntf;
using testing::ElementsAre;

constexpr auto internalError = "An Internal Error has occurred";
constexpr auto nullText = "Cannot access NULL ref. Use isValid() before calling methods";

class Derived : public testing::Test {
protected:
    Sequence<Item> stored(Owner & of, Deviant deviant = Deviant()) {
        return Sequence<Item>(new GenericDeviantSequence(&of, deviant, Owner::items), deviant);
    }
    Item item(std::size_t i) { return Item(&bodies[i], Deviant()); }
    Item special(std::size_t i) { return Item(&specials[i], Deviant()); }

    Deviant d;
    std::vector<ItemBody> bodies{5};
    std::vector<SpecialItemBody> specials{5};
    Owner owner;
    Sequence<Item> items{stored(owner)};
};

// --- association -----------------------------------------------------------------------------------------------------

class AssociationSequence : public Derived {
protected:
    AssociationSequence() { calls().clear(); }

    static std::vector<std::string> & calls() {
        static std::vector<std::string> all;
        return all;
    }
    static AssociationSequence *& current() {
        static AssociationSequence * test = nullptr;
        return test;
    }
    /// Notes the element, and how many elements the sequence has at that moment.
    static void hook(Ref element, GenericAssociationSequence::Owner const & owner, internal::PropertyDescriptor const *,
                     bool add) {
        auto & test = *current();
        EXPECT_EQ(&test.owner, owner.getImplementation());
        std::ptrdiff_t index = -1;
        for (std::size_t i = 0; i < test.bodies.size(); ++i) {
            index = element.body() == &test.bodies[i] ? static_cast<std::ptrdiff_t>(i) : index;
        }
        calls().push_back((add ? "+" : "-") + std::to_string(index) + " of " + std::to_string(test.items.size()));
    }
    Sequence<Item> view(SequenceHandle const & wrapped) {
        current() = this;
        GenericAssociationSequence::Owner const end(&owner, Deviant());
        return Sequence<Item>(new GenericAssociationSequence(wrapped, nullptr, end, &hook), Deviant());
    }
    std::vector<std::string> callsOf(std::function<void()> work) {
        calls().clear();
        work();
        return calls();
    }
};

TEST_F(AssociationSequence, CallsTheHookBeforeEveryChange) {
    Sequence<Item> const sequence = view(items);
    EXPECT_THAT(callsOf([&] { sequence.push_back(item(1)); }), ElementsAre("+1 of 0"));
    EXPECT_THAT(callsOf([&] { sequence.push_front(item(0)); }), ElementsAre("+0 of 1"));
    EXPECT_THAT(callsOf([&] { sequence.insert(2, item(2)); }), ElementsAre("+2 of 2"));
    EXPECT_THAT(callsOf([&] { sequence.insert(sequence.end(), item(3)); }), ElementsAre("+3 of 3"));
    EXPECT_THAT(callsOf([&] { sequence.replace(0, item(4)); }), ElementsAre("-0 of 4", "+4 of 4"));
    EXPECT_THAT(callsOf([&] { sequence.erase(1); }), ElementsAre("-1 of 4"));
    EXPECT_THAT(callsOf([&] { sequence.erase(sequence.begin()); }), ElementsAre("-4 of 3"));
    EXPECT_THAT(callsOf([&] { sequence.push_back(item(1)); }), ElementsAre("+1 of 2"));
    EXPECT_THAT(callsOf([&] { sequence.erase(sequence.begin(), std::prev(sequence.end())); }),
                ElementsAre("-2 of 3", "-3 of 3"));
    EXPECT_THAT(callsOf([&] { sequence.push_back(item(0)); }), ElementsAre("+0 of 1"));
    EXPECT_THAT(callsOf([&] { sequence.pop_back(); }), ElementsAre("-0 of 2"));
    EXPECT_THAT(callsOf([&] { sequence.pop_front(); }), ElementsAre("-1 of 1"));
    sequence.push_back(item(0));
    sequence.push_back(item(1));
    EXPECT_THAT(callsOf([&] { EXPECT_TRUE(sequence.remove(item(0))); }), ElementsAre("-0 of 2"));
    EXPECT_THAT(callsOf([&] { EXPECT_FALSE(sequence.remove(item(0))); }), ElementsAre());
    EXPECT_THAT(callsOf([&] { sequence.clear(); }), ElementsAre("-1 of 1"));
    EXPECT_THAT(callsOf([&] {
                    static_cast<void>(sequence.contains(item(0)));
                    static_cast<void>(sequence.toVector());
                }),
                ElementsAre());
}

TEST_F(AssociationSequence, ABadIndexIsFoundAfterTheHookAndABadElementBefore) {
    Sequence<Item> const sequence = view(items);
    EXPECT_THAT(callsOf([&] { EXPECT_RAISES("sequence index out of bounds", sequence.insert(1, item(0))); }),
                ElementsAre("+0 of 0"));
    EXPECT_THAT(callsOf([&] { EXPECT_RAISES("sequence index out of bounds", sequence.erase(0)); }), ElementsAre());
    EXPECT_THAT(callsOf([&] { EXPECT_RAISES(internalError, sequence.push_back(Item())); }), ElementsAre());

    auto combined = std::make_unique<GenericCombinedSequence>();
    combined->append(std::make_unique<GenericFilteredSequence>(items, takesOnly(SpecialItemIntf::classInfo())));
    Sequence<Item> const onlySpecial = view(SequenceHandle(std::move(combined), d));
    EXPECT_THAT(callsOf([&] {
                    EXPECT_RAISES("cannot insert value into the combined sequence", onlySpecial.push_back(item(0)));
                }),
                ElementsAre());
    EXPECT_FALSE(onlySpecial.accepts(item(0)));
    EXPECT_TRUE(onlySpecial.accepts(special(0)));
    EXPECT_RAISES(nullText, view(SequenceHandle()));
}

// --- filtered --------------------------------------------------------------------------------------------------------

class FilteredSequence : public Derived {
protected:
    /// Shows the special ones among the items.
    Sequence<Item> view() { return view(showsOnly(SpecialItemIntf::classInfo())); }
    Sequence<Item> view(GenericFilter filter) {
        return Sequence<Item>(new GenericFilteredSequence(items, filter), Deviant());
    }
    void mix() {
        for (Item const & each : {item(0), special(0), item(1), special(1), item(2)}) {
            items.push_back(each);
        }
    }
};

TEST_F(FilteredSequence, ChangesOnlyWhatItShows) {
    mix();
    Sequence<Item> const shown = view();
    EXPECT_THAT(shown, ElementsAre(special(0), special(1)));
    shown.insert(1, special(2));
    EXPECT_THAT(items, ElementsAre(item(0), special(0), item(1), special(2), special(1), item(2)));
    shown.replace(0, special(3));
    shown.pop_back();
    EXPECT_THAT(items, ElementsAre(item(0), special(3), item(1), special(2), item(2)));
    shown.clear();
    EXPECT_THAT(items, ElementsAre(item(0), item(1), item(2)));
    EXPECT_TRUE(shown.begin() == shown.end());
    EXPECT_EQ(0, shown.size());
}

TEST_F(FilteredSequence, RaisesItsOneTextWhenHiding) {
    mix();
    Sequence<Item> const shown = view();
    for (int const index : {-1, 2, 4, 5}) {
        EXPECT_RAISES(internalError, shown.at(index));
        EXPECT_RAISES(internalError, shown.erase(index));
        EXPECT_RAISES(internalError, shown.insert(index, special(4)));
        EXPECT_RAISES(internalError, shown.replace(index, special(4)));
    }
    EXPECT_RAISES(internalError, shown.push_back(item(3)));
    EXPECT_RAISES(internalError, shown.insert(shown.begin(), item(3)));
    EXPECT_RAISES("range erase not supported", shown.erase(shown.begin(), shown.end()));
    shown.clear();
    EXPECT_RAISES(internalError, shown.front());
    EXPECT_RAISES(internalError, shown.back());
    EXPECT_RAISES(internalError, shown.pop_back());
    EXPECT_RAISES(internalError, shown.pop_front());
    EXPECT_FALSE(shown.contains(item(0)));
    EXPECT_EQ(3, items.size());
}

TEST_F(FilteredSequence, APureFilterTakesItsPositionsFromBelow) {
    Sequence<Item> const shown = view(takesOnly(ItemIntf::classInfo()));
    EXPECT_RAISES(internalError, shown.at(0));
    EXPECT_RAISES(internalError, shown.at(-1));
    EXPECT_RAISES("sequence index out of bounds", shown.erase(0));
    EXPECT_RAISES("sequence is empty", shown.back());
    EXPECT_RAISES("sequence index must be positive", shown.pop_back());
    EXPECT_RAISES("sequence index out of bounds", shown.pop_front());
    shown.insert(0, item(1));
    EXPECT_THAT(items, ElementsAre(item(1)));
}

TEST_F(FilteredSequence, ShowsAndStoresTransformedElements) {
    // Shows each item's neighbour.
    auto const move = [this](int step) {
        return [this, step](Ref const & element) {
            auto const index = static_cast<ItemBody *>(element.body()->cast(ItemIntf::classInfo())) - bodies.data();
            return Ref::ofStoredBody(&bodies[static_cast<std::size_t>(index + step)], element.getDeviant());
        };
    };
    Sequence<Item> const shown = view(makeFilter(true, move(1), move(-1)));
    shown.push_back(item(2));
    EXPECT_THAT(items, ElementsAre(item(1)));
    EXPECT_THAT(shown, ElementsAre(item(2)));
    EXPECT_TRUE(shown.contains(item(2)));
    EXPECT_FALSE(shown.contains(item(1)));
    EXPECT_THAT(shown.toVector(), ElementsAre(item(2)));
}

TEST_F(FilteredSequence, PassesElementsWithItsOwnDeviant) {
    FakeDeviant own(3);
    std::vector<Deviant> seen;
    auto const note = [&seen](Ref const & element) {
        seen.push_back(element.getDeviant());
        return element;
    };
    Sequence<Item> const below = stored(owner, own);
    Sequence<Item> const shown(new GenericFilteredSequence(below, makeFilter(true, note, note)), Deviant());
    shown.push_back(item(0));
    EXPECT_EQ(Deviant(own), shown.front().getDeviant());
    EXPECT_THAT(seen, ElementsAre(Deviant(own), Deviant(own)));
}

TEST_F(FilteredSequence, ALoopEndsWhereTheSequenceEndsByNow) {
    mix();
    SequencePtr const shown(view().getImplementation());
    auto const it = shown->generic_begin(d);
    auto const end = shown->generic_end(d);
    items.pop_back();
    items.pop_back();
    it->next(d);
    EXPECT_TRUE(it->equal(shown->generic_end(d).get()));
    items.push_back(special(4));
    items.push_back(item(4));
    auto const again = shown->generic_begin(d);
    again->next(d);
    EXPECT_EQ(&specials[4], again->current(d).body());
}

TEST_F(FilteredSequence, EndsItsFilterOnce) {
    static int ended = 0;
    ended = 0;
    static constexpr GenericFilter::VTable table{[](void *) { ++ended; }, &GenericFilter::identity,
                                                 &GenericFilter::identity, true};
    {
        Sequence<Item> const shown = view(GenericFilter(&table, nullptr));
        shown.push_back(item(0));
        auto const outliving = shown.getImplementation()->generic_begin(d);
        EXPECT_EQ(0, ended);
    }
    EXPECT_EQ(1, ended);
    EXPECT_RAISES(nullText, GenericFilteredSequence(SequenceHandle(), GenericFilter(&table, nullptr)));
    EXPECT_EQ(2, ended);
}

// --- combined --------------------------------------------------------------------------------------------------------

class CombinedSequence : public Derived {
protected:
    /// Special items, then none, then all items, each in a storage of its own.
    CombinedSequence() {
        auto body = std::make_unique<GenericCombinedSequence>();
        body->append(std::make_unique<GenericFilteredSequence>(first, takesOnly(SpecialItemIntf::classInfo())));
        body->append(std::make_unique<GenericFilteredSequence>(second, makeFilter(true, &same, &none)));
        body->append(std::make_unique<GenericFilteredSequence>(third, takesOnly(ItemIntf::classInfo())));
        combined = Sequence<Item>(std::move(body), d);
    }
    static Ref same(Ref const & element) { return element; }
    static Ref none(Ref const &) { return Ref(); }

    Owner owners[3];
    Sequence<Item> first{stored(owners[0])};
    Sequence<Item> second{stored(owners[1])};
    Sequence<Item> third{stored(owners[2])};
    Sequence<Item> combined;
};

TEST_F(CombinedSequence, APushGoesToTheFirstThatTakesTheElement) {
    combined.push_back(item(0));
    combined.push_back(special(0));
    combined.push_front(item(1));
    combined.push_front(special(1));
    EXPECT_THAT(first, ElementsAre(special(1), special(0)));
    EXPECT_THAT(third, ElementsAre(item(1), item(0)));
    EXPECT_THAT(combined, ElementsAre(special(1), special(0), item(1), item(0)));
    EXPECT_TRUE(combined.contains(item(0)));
    EXPECT_EQ(2, combined.indexOf(item(1)));
    SequenceIntf & body = *combined.getImplementation();
    EXPECT_RAISES("cannot insert value into the combined sequence", body.generic_push_back(d, Ref::ofBody(&owner, d)));
    EXPECT_RAISES("cannot insert value into the combined sequence", body.generic_push_front(d, Ref::ofBody(&owner, d)));
}

TEST_F(CombinedSequence, IteratesOverEmptySubSequencesInBothDirections) {
    EXPECT_TRUE(combined.begin() == combined.end());
    second.push_back(item(0));
    third.push_back(item(1));
    third.push_back(item(2));
    EXPECT_THAT(combined, ElementsAre(item(0), item(1), item(2)));
    auto it = combined.end();
    EXPECT_TRUE(*--it == item(2));
    EXPECT_TRUE(*--it == item(1));
    EXPECT_TRUE(*--it == item(0));
    EXPECT_TRUE(it == combined.begin());
    EXPECT_RAISES(internalError, --it);
    EXPECT_TRUE(*it == item(0));
    Sequence<Item> const none(new GenericCombinedSequence, d);
    EXPECT_TRUE(none.begin() == none.end());
    EXPECT_TRUE(none.toVector().empty());
}

TEST_F(CombinedSequence, ErasesInTheSubSequenceAndStepsOnToTheNextFullOne) {
    first.push_back(special(0));
    first.push_back(special(1));
    third.push_back(item(0));
    third.push_back(item(1));
    auto it = combined.erase(combined.begin());
    EXPECT_TRUE(*it == special(1));
    it = combined.erase(it);
    EXPECT_TRUE(*it == item(0));
    combined.erase(1);
    EXPECT_THAT(combined, ElementsAre(item(0)));
    EXPECT_TRUE(combined.remove(item(0)));
    EXPECT_FALSE(combined.remove(item(0)));
}

TEST_F(CombinedSequence, TellsWhatItCannotDo) {
    third.push_back(item(0));
    EXPECT_RAISES("cannot insert into this data structure", combined.insert(0, item(1)));
    EXPECT_RAISES("cannot insert into this data structure", combined.insert(combined.begin(), item(1)));
    EXPECT_RAISES("cannot modify this data structure", combined.replace(0, item(1)));
    EXPECT_RAISES("cannot modify this data structure", combined.erase(combined.begin(), combined.end()));
    EXPECT_RAISES("erase requested for invalid index", combined.erase(2));
    EXPECT_RAISES("erase requested for invalid index", combined.erase(-1));
    EXPECT_RAISES("invalid iterator passed to erase", combined.erase(1));
    EXPECT_RAISES("invalid iterator passed to erase", combined.erase(combined.end()));
    auto const beyond = combined.begin();
    third.clear();
    EXPECT_RAISES("invalid iterator passed to erase", combined.erase(beyond));
    EXPECT_RAISES(internalError, combined.at(0));
    EXPECT_RAISES(internalError, combined.at(-1));
    EXPECT_RAISES(internalError, combined.front());
    EXPECT_RAISES(internalError, combined.back());
    EXPECT_RAISES("pop_back on empty CombinedSequence", combined.pop_back());
    EXPECT_RAISES("pop_front on empty CombinedSequence", combined.pop_front());
    Sequence<Item> const none(new GenericCombinedSequence, d);
    EXPECT_RAISES("pop_back on empty CombinedSequence", none.pop_back());
    EXPECT_RAISES("pop_back on empty CombinedSequence", none.pop_front());
}

TEST_F(CombinedSequence, PopFrontPassesOverSubSequencesShorterThanTheirNumber) {
    second.push_back(item(0));
    third.push_back(item(1));
    third.push_back(item(2));
    EXPECT_RAISES("pop_front on empty CombinedSequence", combined.pop_front());
    third.push_back(item(3));
    combined.pop_front();
    EXPECT_THAT(combined, ElementsAre(item(0), item(2), item(3)));
    second.push_back(item(4));
    combined.pop_front();
    EXPECT_THAT(combined, ElementsAre(item(4), item(2), item(3)));
    first.push_back(special(0));
    combined.pop_front();
    EXPECT_THAT(combined, ElementsAre(item(4), item(2), item(3)));
}

TEST_F(CombinedSequence, PopBackAndClearReachAllSubSequences) {
    first.push_back(special(0));
    second.push_back(item(0));
    combined.pop_back();
    EXPECT_THAT(combined, ElementsAre(special(0)));
    third.push_back(item(1));
    combined.clear();
    EXPECT_EQ(0, first.size() + third.size());
}

// --- a single value as a sequence ------------------------------------------------------------------------------------

class HolderIntf : public virtual NSInterface::ClassObjectIntf {
public:
    static CooperativeVisitor::internal::ClassInfo const & classInfo() {
        static auto const info = CooperativeVisitor::internal::makeClassInfo<HolderIntf, NSInterface::ObjectDomain>();
        return info;
    }
    [[nodiscard]] bool hasItem(Deviant) const { return value.isValid(); }
    [[nodiscard]] Item getItem(Deviant) const { return value; }
    void setItem(Deviant, Item const & item) { value = item; }
    void setOnlyItem(Deviant, Item const & item) {
        value = item;
        ++onlyCalls;
    }
    void removeItem(Deviant) { value = Item(); }
    void removeOnlyItem(Deviant) {
        value = Item();
        ++onlyCalls;
    }

    Item value;
    int onlyCalls = 0;
};

class Holder final : public Test::CountedBody<Holder, HolderIntf, HolderIntf> {};

constexpr auto itemAccess =
    PropertyToSequenceMethods::of<HolderIntf, Item, &HolderIntf::hasItem, &HolderIntf::getItem, &HolderIntf::setItem,
                                  &HolderIntf::setOnlyItem, &HolderIntf::removeItem, &HolderIntf::removeOnlyItem>();
constexpr auto readingAccess = PropertyToSequenceMethods::of<HolderIntf, Item, nullptr, &HolderIntf::getItem, nullptr,
                                                             nullptr, nullptr, nullptr>();

class SingleValueSequence : public Derived {
protected:
    Sequence<Item> view(NSInterface::ClassObjectIntf & object, int fixed = 0,
                        PropertyToSequenceMethods const & methods = itemAccess) {
        GenericPropertyToSequenceProxy::ObjectHandle const handle(&object, Deviant());
        return Sequence<Item>(new GenericPropertyToSequenceProxy(handle, &methods, fixed), d);
    }

    Holder holder;
};

TEST_F(SingleValueSequence, ShowsNoneOrOneElement) {
    Sequence<Item> const sequence = view(holder);
    EXPECT_EQ(0, sequence.size());
    EXPECT_TRUE(sequence.begin() == sequence.end());
    EXPECT_FALSE(sequence.at(0).isValid());
    EXPECT_RAISES(internalError, sequence.front());
    EXPECT_RAISES(internalError, sequence.back());
    sequence.push_back(item(0));
    EXPECT_THAT(sequence, ElementsAre(item(0)));
    sequence.push_front(item(1));
    EXPECT_THAT(sequence, ElementsAre(item(1)));
    EXPECT_TRUE(sequence.front() == item(1));
    auto it = sequence.end();
    EXPECT_TRUE(*--it == item(1));
    EXPECT_TRUE(++it == sequence.end());
    sequence.pop_back();
    sequence.pop_back();
    EXPECT_EQ(0, sequence.size());
}

TEST_F(SingleValueSequence, SetsAndRemovesByEveryRoad) {
    Sequence<Item> const sequence = view(holder);
    sequence.insert(sequence.begin(), item(0));
    EXPECT_RAISES(internalError, sequence.insert(sequence.end(), item(1)));
    EXPECT_RAISES("Cannot add elements.", sequence.insert(1, item(1)));
    EXPECT_RAISES("for at i cannot be anything but 0", sequence.at(1));
    sequence.replace(5, item(2));
    EXPECT_THAT(sequence, ElementsAre(item(2)));
    EXPECT_RAISES(internalError, sequence.erase(sequence.end()));
    EXPECT_TRUE(sequence.erase(sequence.begin()) == sequence.end());
    sequence.push_back(item(0));
    sequence.erase(sequence.begin(), sequence.end());
    EXPECT_EQ(0, sequence.size());
    sequence.push_back(item(0));
    sequence.erase(7);
    EXPECT_EQ(0, sequence.size());
    sequence.push_back(item(0));
    EXPECT_FALSE(sequence.remove(item(1)));
    EXPECT_TRUE(sequence.remove(item(0)));
    sequence.push_back(item(0));
    sequence.clear();
    EXPECT_EQ(0, sequence.size());
}

TEST_F(SingleValueSequence, AFixedOneIsNotClearedButPopped) {
    Sequence<Item> const sequence = view(holder, 1);
    sequence.push_back(item(0));
    sequence.clear();
    EXPECT_EQ(1, sequence.size());
    sequence.pop_front();
    EXPECT_EQ(0, sequence.size());
}

TEST_F(SingleValueSequence, ContainsComparesPresenceOnly) {
    Sequence<Item> const sequence = view(holder);
    EXPECT_TRUE(sequence.contains(Item()));
    EXPECT_FALSE(sequence.contains(item(0)));
    sequence.push_back(item(0));
    EXPECT_TRUE(sequence.contains(item(1)));
    EXPECT_FALSE(sequence.contains(Item()));
    EXPECT_EQ(-1, sequence.indexOf(item(1)));
}

TEST_F(SingleValueSequence, MethodsRefuseWhatIsNotThere) {
    Ref const value = Ref::ofBody(&bodies[0], d);
    EXPECT_RAISES(internalError, itemAccess.has(nullptr, d));
    EXPECT_RAISES(internalError, itemAccess.get(&owner, d));
    EXPECT_RAISES(internalError, readingAccess.has(&holder, d));
    EXPECT_RAISES(internalError, readingAccess.set(&holder, d, value));
    EXPECT_RAISES(internalError, readingAccess.setEndOnly(&holder, d, value));
    EXPECT_RAISES(internalError, readingAccess.remove(&holder, d));
    EXPECT_RAISES(internalError, readingAccess.removeEndOnly(&holder, d));
    EXPECT_TRUE(readingAccess.get(&holder, d).isNull());
    EXPECT_RAISES(internalError, itemAccess.set(&holder, d, Ref::ofBody(&owner, d)));
    itemAccess.setEndOnly(&holder, d, value);
    itemAccess.removeEndOnly(&holder, d);
    EXPECT_EQ(2, holder.onlyCalls);
}

TEST_F(SingleValueSequence, HoldsItsObject) {
    int const before = holder.numRef();
    {
        Sequence<Item> const sequence = view(holder);
        auto const it = sequence.begin();
        EXPECT_LT(before, holder.numRef());
    }
    EXPECT_EQ(before, holder.numRef());
    holder.value = Item();
}

} // namespace
} // namespace ZEL::Generic
