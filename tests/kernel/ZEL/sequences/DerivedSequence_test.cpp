#include "SequenceTest.h"

namespace ZEL::tests {
namespace {

using Derived = SequenceFixture;

// --- association -----------------------------------------------------------------------------------------------------

struct AssociationSequence : Derived {
    AssociationSequence() { current = this; }

    /// Notes the element, and how many elements the sequence has at that moment.
    static void hook(Ref element, GenericAssociationSequence::Owner const & owner, internal::PropertyDescriptor const *,
                     bool add) {
        EXPECT_EQ(&current->owner, owner.getImplementation());
        std::size_t index = 0;
        while (index < current->bodies.size() && element.body() != &current->bodies[index]) {
            ++index;
        }
        current->calls.push_back((add ? "+" : "-") + std::to_string(index) + " of " +
                                 std::to_string(current->items.size()));
    }
    Sequence<Item> view(SequenceHandle const & wrapped) {
        GenericAssociationSequence::Owner const end(&owner, Deviant());
        return Sequence<Item>(new GenericAssociationSequence(wrapped, nullptr, end, &hook), Deviant());
    }
    std::vector<std::string> callsOf(std::function<void()> work) {
        calls.clear();
        work();
        return calls;
    }

    static inline AssociationSequence * current = nullptr;
    std::vector<std::string> calls;
};

TEST_F(AssociationSequence, CallsTheHookBeforeEveryChange) {
    Sequence<Item> const sequence = view(items);
    std::pair<std::function<void()>, std::vector<std::string>> const rows[] = {
        {[&] { sequence.push_back(item(1)); }, {"+1 of 0"}},
        {[&] { sequence.push_front(item(0)); }, {"+0 of 1"}},
        {[&] { sequence.insert(2, item(2)); }, {"+2 of 2"}},
        {[&] { sequence.insert(sequence.end(), item(3)); }, {"+3 of 3"}},
        {[&] { sequence.replace(0, item(4)); }, {"-0 of 4", "+4 of 4"}},
        {[&] { sequence.erase(1); }, {"-1 of 4"}},
        {[&] { sequence.erase(sequence.begin()); }, {"-4 of 3"}},
        {[&] { sequence.push_back(item(1)); }, {"+1 of 2"}},
        {[&] { sequence.erase(sequence.begin(), std::prev(sequence.end())); }, {"-2 of 3", "-3 of 3"}},
        {[&] { sequence.push_back(item(0)); }, {"+0 of 1"}},
        {[&] { sequence.pop_back(); }, {"-0 of 2"}},
        {[&] { sequence.pop_front(); }, {"-1 of 1"}},
        {[&] { sequence.push_back(item(0)); }, {"+0 of 0"}},
        {[&] { EXPECT_TRUE(sequence.remove(item(0))); }, {"-0 of 1"}},
        {[&] { EXPECT_FALSE(sequence.remove(item(0))); }, {}},
        {[&] { sequence.push_back(item(1)); }, {"+1 of 0"}},
        {[&] { EXPECT_FALSE(sequence.contains(item(0))); }, {}},
        {[&] { EXPECT_THAT(sequence.toVector(), ElementsAre(item(1))); }, {}},
        {[&] { sequence.clear(); }, {"-1 of 1"}},
        // A bad index is found after the hook, a bad element before.
        {[&] { EXPECT_RAISES("sequence index out of bounds", sequence.insert(1, item(0))); }, {"+0 of 0"}},
        {[&] { EXPECT_RAISES("sequence index out of bounds", sequence.erase(0)); }, {}},
        {[&] { EXPECT_RAISES(kInternalError, sequence.push_back(Item())); }, {}},
    };
    for (auto const & row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(row.second, callsOf(row.first));
    }
}

TEST_F(AssociationSequence, AsksWhetherAnElementIsTakenBeforeItCallsTheHook) {
    auto combined = std::make_unique<GenericCombinedSequence>();
    combined->append(std::make_unique<GenericFilteredSequence>(items, takesOnly(SpecialItemIntf::classInfo())));
    Sequence<Item> const onlySpecial = view(SequenceHandle(std::move(combined), d));
    EXPECT_RAISES("cannot insert value into the combined sequence", onlySpecial.push_back(item(0)));
    EXPECT_TRUE(calls.empty());
    EXPECT_FALSE(onlySpecial.accepts(item(0)));
    EXPECT_TRUE(onlySpecial.accepts(special(0)));
    EXPECT_RAISES(kNullRef, view(SequenceHandle()));
}

TEST_F(AssociationSequence, ReplacesByAnElementThatIsThereAlreadyWhereItMayBeThereTwice) {
    ListQImpl<Item> storage;
    Sequence<Item> const list = view(SequenceHandle(&storage, d));
    Sequence<Item> const unique = view(items);
    for (Sequence<Item> const & sequence : {list, unique}) {
        sequence.push_back(item(0));
        sequence.push_back(item(1));
    }
    EXPECT_THAT(callsOf([&] { list.replace(0, item(1)); }), ElementsAre("-0 of 2", "+1 of 2"));
    EXPECT_THAT(list, ElementsAre(item(1), item(1)));
    EXPECT_THAT(callsOf([&] { unique.replace(0, item(1)); }), ElementsAre());
    EXPECT_THAT(unique, ElementsAre(item(0), item(1)));
}

// --- filtered --------------------------------------------------------------------------------------------------------

struct FilteredSequence : Derived {
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
        EXPECT_RAISES(kInternalError, shown.at(index));
        EXPECT_RAISES(kInternalError, shown.erase(index));
        EXPECT_RAISES(kInternalError, shown.insert(index, special(4)));
        EXPECT_RAISES(kInternalError, shown.replace(index, special(4)));
    }
    EXPECT_RAISES(kInternalError, shown.push_back(item(3)));
    EXPECT_RAISES(kInternalError, shown.insert(shown.begin(), item(3)));
    EXPECT_RAISES("range erase not supported", shown.erase(shown.begin(), shown.end()));
    shown.clear();
    EXPECT_RAISES(kInternalError, shown.front());
    EXPECT_RAISES(kInternalError, shown.back());
    EXPECT_RAISES(kInternalError, shown.pop_back());
    EXPECT_RAISES(kInternalError, shown.pop_front());
    EXPECT_FALSE(shown.contains(item(0)));
    EXPECT_EQ(3, items.size());
}

TEST_F(FilteredSequence, APureFilterTakesItsPositionsFromBelow) {
    Sequence<Item> const shown = view(takesOnly(ItemIntf::classInfo()));
    EXPECT_RAISES(kInternalError, shown.at(0));
    EXPECT_RAISES(kInternalError, shown.at(-1));
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
    EXPECT_RAISES(kNullRef, GenericFilteredSequence(SequenceHandle(), GenericFilter(&table, nullptr)));
    EXPECT_EQ(2, ended);
}

// --- combined --------------------------------------------------------------------------------------------------------

struct CombinedSequence : Derived {
    /// Special items, then none, then all items, each in a storage of its own.
    CombinedSequence() {
        auto const same = [](Ref const & element) { return element; };
        auto const none = [](Ref const &) { return Ref(); };
        auto body = std::make_unique<GenericCombinedSequence>();
        body->append(std::make_unique<GenericFilteredSequence>(first, takesOnly(SpecialItemIntf::classInfo())));
        body->append(std::make_unique<GenericFilteredSequence>(second, makeFilter(true, same, none)));
        body->append(std::make_unique<GenericFilteredSequence>(third, takesOnly(ItemIntf::classInfo())));
        combined = Sequence<Item>(std::move(body), d);
    }

    Owner owners[3];
    Sequence<Item> first{stored(owners[0])};
    Sequence<Item> second{stored(owners[1])};
    Sequence<Item> third{stored(owners[2])};
    Sequence<Item> combined;
    Sequence<Item> ofNone{new GenericCombinedSequence, Deviant()};
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
    EXPECT_THAT(combined, ElementsAre(item(0), item(1)));
    auto it = std::next(combined.begin(), 2);
    EXPECT_TRUE(*--it == item(1));
    EXPECT_TRUE(*--it == item(0));
    EXPECT_RAISES(kInternalError, --it);
    EXPECT_TRUE(*it == item(0));
    EXPECT_TRUE(ofNone.begin() == ofNone.end());
    EXPECT_TRUE(ofNone.toVector().empty());
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
    EXPECT_RAISES(kInternalError, combined.at(0));
    EXPECT_RAISES(kInternalError, combined.at(-1));
    EXPECT_RAISES(kInternalError, combined.front());
    EXPECT_RAISES(kInternalError, combined.back());
    EXPECT_RAISES("pop_back on empty CombinedSequence", combined.pop_back());
    EXPECT_RAISES("pop_front on empty CombinedSequence", combined.pop_front());
    EXPECT_RAISES("pop_back on empty CombinedSequence", ofNone.pop_back());
    EXPECT_RAISES("pop_back on empty CombinedSequence", ofNone.pop_front());
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

struct HolderIntf : virtual NSInterface::ClassObjectOperations {
    static ClassInfo const & classInfo() { return classInfoOf<HolderIntf>(); }
    [[nodiscard]] bool hasItem(Deviant) const { return value.isValid(); }
    [[nodiscard]] Item getItem(Deviant) const { return value; }
    void setItem(Deviant, Item const & item) { value = item; }
    void setOnlyItem(Deviant, Item const & item) { onlyValue = item; }
    void removeItem(Deviant) { value = Item(); }
    void removeOnlyItem(Deviant) { onlyValue = Item(); }

    Item value;
    Item onlyValue; ///< set and removed without the other end
};

class Holder final : public CountedBody<Holder, HolderIntf, HolderIntf> {};

constexpr auto itemAccess =
    PropertyToSequenceMethods::of<HolderIntf, Item, &HolderIntf::hasItem, &HolderIntf::getItem, &HolderIntf::setItem,
                                  &HolderIntf::setOnlyItem, &HolderIntf::removeItem, &HolderIntf::removeOnlyItem>();
constexpr auto readingAccess = PropertyToSequenceMethods::of<HolderIntf, Item, nullptr, &HolderIntf::getItem, nullptr,
                                                             nullptr, nullptr, nullptr>();

struct SingleValueSequence : Derived {
    Sequence<Item> view(int fixed = 0) {
        GenericPropertyToSequenceProxy::ObjectHandle const handle(&holder, Deviant());
        return Sequence<Item>(new GenericPropertyToSequenceProxy(handle, &itemAccess, fixed), d);
    }

    Holder holder;
    Sequence<Item> sequence{view()};
};

TEST_F(SingleValueSequence, ShowsNoneOrOneElement) {
    EXPECT_EQ(0, sequence.size());
    EXPECT_TRUE(sequence.begin() == sequence.end());
    EXPECT_FALSE(sequence.at(0).isValid());
    EXPECT_RAISES(kInternalError, sequence.front());
    EXPECT_RAISES(kInternalError, sequence.back());
    sequence.push_back(item(0));
    EXPECT_THAT(sequence, ElementsAre(item(0)));
    sequence.push_front(item(1));
    EXPECT_THAT(sequence, ElementsAre(item(1)));
    EXPECT_TRUE(sequence.front() == item(1));
    auto it = sequence.end();
    EXPECT_TRUE(*--it == item(1));
    EXPECT_TRUE(++it == sequence.end());
}

TEST_F(SingleValueSequence, SetsByEveryRoad) {
    sequence.insert(sequence.begin(), item(0));
    EXPECT_THAT(sequence, ElementsAre(item(0)));
    EXPECT_RAISES(kInternalError, sequence.insert(sequence.end(), item(1)));
    EXPECT_RAISES("Cannot add elements.", sequence.insert(1, item(1)));
    EXPECT_RAISES("for at i cannot be anything but 0", sequence.at(1));
    sequence.replace(5, item(2));
    EXPECT_THAT(sequence, ElementsAre(item(2)));
}

TEST_F(SingleValueSequence, RemovesByEveryRoad) {
    std::function<void()> const roads[] = {
        [&] { EXPECT_TRUE(sequence.erase(sequence.begin()) == sequence.end()); },
        [&] { sequence.erase(sequence.begin(), sequence.end()); },
        [&] { sequence.erase(7); },
        [&] { EXPECT_TRUE(sequence.remove(item(0))); },
        [&] { sequence.clear(); },
        [&] { sequence.pop_back(); },
        [&] { sequence.pop_front(); },
        [&] { view(1).pop_front(); },
    };
    for (auto const & road : roads) {
        SCOPED_TRACE(&road - roads);
        sequence.push_back(item(0));
        EXPECT_RAISES(kInternalError, sequence.erase(sequence.end()));
        EXPECT_FALSE(sequence.remove(item(1)));
        view(1).clear(); // a fixed one is popped, not cleared
        EXPECT_EQ(1, sequence.size());
        road();
        EXPECT_EQ(0, sequence.size());
    }
    sequence.pop_back();
    EXPECT_EQ(0, sequence.size());
}

TEST_F(SingleValueSequence, ContainsComparesPresenceOnly) {
    EXPECT_TRUE(sequence.contains(Item()));
    EXPECT_FALSE(sequence.contains(item(0)));
    sequence.push_back(item(0));
    EXPECT_TRUE(sequence.contains(item(1)));
    EXPECT_FALSE(sequence.contains(Item()));
    EXPECT_EQ(-1, sequence.indexOf(item(1)));
}

TEST_F(SingleValueSequence, MethodsRefuseWhatIsNotThere) {
    Ref const value = Ref::ofBody(&bodies[0], d);
    EXPECT_RAISES(kInternalError, itemAccess.has(nullptr, d));
    EXPECT_RAISES(kInternalError, itemAccess.get(&owner, d));
    EXPECT_RAISES(kInternalError, readingAccess.has(&holder, d));
    EXPECT_RAISES(kInternalError, readingAccess.set(&holder, d, value));
    EXPECT_RAISES(kInternalError, readingAccess.setEndOnly(&holder, d, value));
    EXPECT_RAISES(kInternalError, readingAccess.remove(&holder, d));
    EXPECT_RAISES(kInternalError, readingAccess.removeEndOnly(&holder, d));
    EXPECT_TRUE(readingAccess.get(&holder, d).isNull());
    EXPECT_RAISES(kInternalError, itemAccess.set(&holder, d, Ref::ofBody(&owner, d)));
    itemAccess.setEndOnly(&holder, d, value);
    EXPECT_EQ(item(0), holder.onlyValue);
    itemAccess.removeEndOnly(&holder, d);
    EXPECT_EQ(Item(), holder.onlyValue);
}

TEST_F(SingleValueSequence, HoldsItsObject) {
    int const before = holder.numRef();
    {
        Sequence<Item> const another = view();
        EXPECT_LT(before, holder.numRef());
    }
    EXPECT_EQ(before, holder.numRef());
}

} // namespace
} // namespace ZEL::tests
