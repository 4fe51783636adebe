#include "SequenceTest.h"

#include <algorithm>
#include <numeric>
#include <ostream>
#include <random>

namespace ZEL::tests {
namespace {

constexpr int kElements = 90; ///< more than a storage of bodies keeps in one block

/// A sequence of some kind, and elements for it.
struct Subject {
    Owner owner;
    std::vector<ItemBody> bodies{kElements};
    std::vector<std::unique_ptr<SequenceIntf>> storages;
    bool hasTexts = false;
    SequenceHandle sequence; ///< last: views go before what they stand on

    Ref element(int i) {
        return hasTexts ? Ref::ofValue(String("text " + std::to_string(i)), Deviant())
                        : Ref::ofBody(&bodies[static_cast<std::size_t>(i)], Deviant());
    }
    template <class Storage> SequenceHandle add() {
        storages.push_back(std::make_unique<Storage>());
        return SequenceHandle(storages.back().get(), Deviant());
    }
    SequenceHandle stored(SequenceField const & field = Owner::items) {
        return SequenceHandle(new GenericDeviantSequence(&owner, Deviant(), field), Deviant());
    }
};

struct Kind {
    std::string name;
    SequenceHandle (*make)(Subject &);
    bool hasTexts = false;
    bool isUnique = true;
    bool isStorageLike = true; ///< its failures have the storage's texts
    bool inserts = true;       ///< has the insert and replace operations
    bool insertsAtEnd = true;

    [[nodiscard]] bool hides() const { return name.ends_with("HidingFilter"); }
    friend std::ostream & operator<<(std::ostream & out, Kind const & kind) { return out << kind.name; }
};

void ignoreHook(Ref, GenericAssociationSequence::Owner const &, internal::PropertyDescriptor const *, bool) {}

Ref same(Ref const & element) { return element; }
Ref none(Ref const &) { return Ref(); }

/// Hides every third body of `subject`, which are put between the others.
GenericFilteredSequence * hidingView(Subject & subject) {
    auto const show = [&bodies = subject.bodies](Ref const & element) {
        for (std::size_t i = 0; i < bodies.size(); i += 3) {
            if (element.body() == &bodies[i]) {
                return Ref();
            }
        }
        return element;
    };
    SequenceHandle const stored = subject.stored();
    auto * const view = new GenericFilteredSequence(stored, makeFilter(false, show, show));
    for (int i = 0; i < kElements; i += 3) {
        stored.getImplementation()->generic_push_back(Deviant(), subject.element(i));
    }
    return view;
}

/// `middle` between two sequences that take nothing.
SequenceHandle combined(Subject & subject, GenericFilteredSequence * middle) {
    auto const nothing = [&subject] {
        return std::make_unique<GenericFilteredSequence>(subject.add<ListQImpl<Item>>(), makeFilter(true, same, none));
    };
    auto all = std::make_unique<GenericCombinedSequence>();
    all->reserve(3);
    all->append(nothing());
    all->append(std::unique_ptr<GenericFilteredSequence>(middle));
    all->append(nothing());
    return SequenceHandle(std::move(all), Deviant());
}

template <class Storage> SequenceHandle bare(Subject & s) { return s.add<Storage>(); }

SequenceHandle counted(Subject &) {
    SequenceHandle const list(new ListQImpl<Item>, Deviant());
    return SequenceHandle(new GenericReferenceCountingSequenceProxy(list), Deviant());
}

SequenceHandle association(Subject & s) {
    return SequenceHandle(new GenericAssociationSequence(s.stored(), nullptr, {}, &ignoreHook), Deviant());
}

SequenceHandle pure(Subject & s) {
    return SequenceHandle(new GenericFilteredSequence(s.stored(), makeFilter(true, same, same)), Deviant());
}

SequenceHandle combinedOfClass(Subject & s) {
    auto const filter = takesOnly(ItemIntf::classInfo());
    return combined(s, new GenericFilteredSequence(s.stored(), filter));
}

std::vector<Kind> kinds() {
    auto const storedTexts = [](Subject & s) { return s.stored(Owner::texts); };
    auto const storedUniqueTexts = [](Subject & s) { return s.stored(Owner::uniqueTexts); };
    auto const hiding = [](Subject & s) { return SequenceHandle(hidingView(s), Deviant()); };
    auto const combinedHiding = [](Subject & s) { return combined(s, hidingView(s)); };
    return {
        {.name = "List", .make = &bare<ListQImpl<Item>>, .isUnique = false},
        {.name = "MultiIndex", .make = &bare<MultiIndexImpl<Item, 0>>, .isUnique = false},
        {.name = "UniqueMultiIndex", .make = &bare<MultiIndexImpl<Item, 1>>},
        {.name = "UniqueMultiIndexOfTexts", .make = &bare<MultiIndexImpl<String, 1>>, .hasTexts = true},
        {.name = "CountedList", .make = &counted, .isUnique = false},
        {.name = "Stored", .make = [](Subject & s) { return s.stored(); }},
        {.name = "StoredUniqueTexts", .make = storedUniqueTexts, .hasTexts = true},
        {.name = "StoredTexts", .make = storedTexts, .hasTexts = true, .isUnique = false},
        {.name = "Association", .make = &association},
        {.name = "PureFilter", .make = &pure, .isStorageLike = false},
        {.name = "HidingFilter", .make = hiding, .isStorageLike = false, .insertsAtEnd = false},
        {.name = "Combined", .make = &combinedOfClass, .isStorageLike = false, .inserts = false},
        {.name = "CombinedHidingFilter", .make = combinedHiding, .isStorageLike = false, .inserts = false},
    };
}

struct SequenceContract : testing::TestWithParam<Kind> {
    SequenceContract() {
        subject.hasTexts = kind.hasTexts;
        subject.sequence = kind.make(subject);
    }

    /// Numbers of elements that the kind shows.
    [[nodiscard]] int number(int i) const { return kind.hides() ? i / 2 * 3 + 1 + i % 2 : i; }
    Ref element(int i) { return subject.element(number(i)); }
    SequenceIntf & sequence() { return *subject.sequence.getImplementation(); }
    void fill(int count) {
        for (int i = 0; i < count; ++i) {
            sequence().generic_push_back(d, element(i));
        }
    }
    int numberOf(Ref const & ref) {
        for (int i = 0; number(i) < kElements; ++i) {
            if (ref.isSameElement(element(i))) {
                return i;
            }
        }
        return -1;
    }
    /// By the iterators, and checks that all other roads show the same.
    std::vector<int> contents() {
        std::vector<int> found;
        auto const end = sequence().generic_end(d);
        for (auto it = sequence().generic_begin(d); !it->equal(end.get()); it->next(d)) {
            found.push_back(numberOf(it->current(d)));
        }
        EXPECT_EQ(static_cast<int>(found.size()), sequence().generic_size(d));
        auto const backwards = end->clone();
        for (std::size_t i = found.size(); i-- > 0;) {
            backwards->previous(d);
            EXPECT_EQ(found[i], numberOf(backwards->current(d)));
            EXPECT_EQ(found[i], numberOf(sequence().generic_at(d, static_cast<int>(i))));
        }
        EXPECT_TRUE(backwards->equal(sequence().generic_begin(d).get()));
        EXPECT_TRUE(end->equal(sequence().generic_end(d).get())) << "a copy has moved it";
        return found;
    }
    /// A random change of the sequence, and of what is expected of it.
    void changeBoth(std::vector<int> & expected, std::mt19937 & random) {
        auto const below = [&random](int end) { return static_cast<int>(random() % static_cast<unsigned>(end)); };
        int const number = below(60);
        Ref const ref = element(number);
        int const size = static_cast<int>(expected.size());
        auto const found = std::find(expected.begin(), expected.end(), number);
        bool const isThere = found != expected.end();
        ASSERT_EQ(isThere, sequence().generic_contains(d, ref));
        ASSERT_EQ(isThere ? found - expected.begin() : -1, sequence().generic_indexOf(d, ref));
        bool const isRefused = kind.isUnique && isThere;
        auto const expectInsertion = [&](int index) {
            if (!isRefused) {
                expected.insert(expected.begin() + index, number);
            }
        };
        int const choice = below(10);
        if (choice < 2) {
            sequence().generic_push_back(d, ref);
            expectInsertion(size);
        } else if (choice == 2) {
            sequence().generic_push_front(d, ref);
            expectInsertion(0);
        } else if (choice == 3) {
            ASSERT_EQ(isThere, sequence().generic_eraseElement(d, ref));
            if (isThere) {
                expected.erase(found);
            }
        } else if (choice == 4 && size > 0) {
            int const index = below(size);
            sequence().generic_erase(d, index);
            expected.erase(expected.begin() + index);
        } else if (choice == 5 && size > 0) {
            sequence().generic_pop_back(d);
            expected.pop_back();
        } else if (choice == 6 && size > 0 && kind.inserts) { // a combined one has a rule of its own
            sequence().generic_pop_front(d);
            expected.erase(expected.begin());
        } else if (choice == 7 && size > 0 && kind.inserts) {
            int const index = below(size);
            sequence().generic_replace(d, index, ref);
            if (!isRefused) {
                expected[static_cast<std::size_t>(index)] = number;
            }
        } else if (choice > 7 && size > 0 && kind.inserts) {
            int const index = below(size + (kind.insertsAtEnd ? 1 : 0));
            sequence().generic_insert(d, index, ref);
            expectInsertion(index);
        }
    }

    Kind kind = GetParam();
    Subject subject;
    Deviant d;
};

std::vector<int> upTo(int count) {
    std::vector<int> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    return numbers;
}

TEST_P(SequenceContract, InsertsAndErasesAtIterators) {
    fill(4);
    auto const second = [this] {
        auto it = sequence().generic_begin(d);
        it->next(d);
        return it;
    };
    if (kind.inserts) {
        auto const inserted = sequence().generic_insert(d, second().get(), element(4));
        EXPECT_EQ(4, numberOf(inserted->current(d)));
        EXPECT_EQ((std::vector<int>{0, 4, 1, 2, 3}), contents());
        EXPECT_EQ(1, numberOf(sequence().generic_erase(d, inserted.get())->current(d)));
    }
    auto const behind = sequence().generic_erase(d, second().get());
    EXPECT_EQ(2, numberOf(behind->current(d)));
    EXPECT_EQ((std::vector<int>{0, 2, 3}), contents());
    auto last = sequence().generic_end(d);
    last->previous(d);
    EXPECT_TRUE(sequence().generic_erase(d, last.get())->equal(sequence().generic_end(d).get()));
    EXPECT_EQ((std::vector<int>{0, 2}), contents());
}

TEST_P(SequenceContract, ErasesRanges) {
    if (!kind.isStorageLike) {
        GTEST_SKIP() << "it erases no ranges";
    }
    fill(6);
    auto first = sequence().generic_begin(d);
    first->next(d);
    auto last = first->clone();
    EXPECT_EQ(1, numberOf(sequence().generic_erase(d, first.get(), last.get())->current(d)));
    EXPECT_EQ(upTo(6), contents());
    for (int i = 0; i < 3; ++i) {
        last->next(d);
    }
    static_cast<void>(sequence().generic_erase(d, last.get(), first.get()));
    EXPECT_EQ(upTo(6), contents()) << "nothing lies between them";
    EXPECT_EQ(4, numberOf(sequence().generic_erase(d, first.get(), last.get())->current(d)));
    EXPECT_EQ((std::vector<int>{0, 4, 5}), contents());
}

TEST_P(SequenceContract, RefusesWhatIsNotThereAndStaysAsItIs) {
    if (!kind.isStorageLike) {
        GTEST_SKIP() << "its texts are others";
    }
    EXPECT_RAISES("sequence is empty", sequence().generic_front(d));
    EXPECT_RAISES("sequence is empty", sequence().generic_back(d));
    EXPECT_RAISES("sequence is empty", sequence().generic_pop_back(d));
    EXPECT_RAISES("sequence is empty", sequence().generic_pop_front(d));
    EXPECT_RAISES("sequence index must be positive", sequence().generic_at(d, -1));
    EXPECT_RAISES("sequence index out of bounds", sequence().generic_at(d, 0));
    fill(2);
    for (int const index : {-1, 2, 3}) {
        std::string const text = index < 0 ? "sequence index must be positive" : "sequence index out of bounds";
        EXPECT_RAISES(text, sequence().generic_at(d, index));
        EXPECT_RAISES(text, sequence().generic_erase(d, index));
        EXPECT_RAISES(text, sequence().generic_replace(d, index, element(5)));
        if (index != 2) {
            EXPECT_RAISES(text, sequence().generic_insert(d, index, element(5)));
        }
    }
    EXPECT_RAISES("sequence index out of bounds", sequence().generic_end(d)->current(d));
    EXPECT_EQ(upTo(2), contents());
}

TEST_P(SequenceContract, RefusesNullElements) {
    EXPECT_ANY_THROW(sequence().generic_push_back(d, Ref()));
    EXPECT_EQ(std::vector<int>(), contents());
}

TEST_P(SequenceContract, ReturnsElementsWithTheDeviantOfTheCall) {
    FakeDeviant deviant(3);
    fill(2);
    // A filter shows elements in the deviant of the handle under it.
    Deviant const expected = kind.isStorageLike ? Deviant(deviant) : Deviant();
    EXPECT_EQ(expected, sequence().generic_at(deviant, 1).getDeviant());
    EXPECT_EQ(expected, sequence().generic_begin(deviant)->current(deviant).getDeviant());
}

TEST_P(SequenceContract, ReleasesElementsThatItDoesNotStore) {
    if (subject.hasTexts) {
        GTEST_SKIP() << "texts have no count";
    }
    fill(2);
    NSInterface::ObjectIntf & body = *element(1).body();
    int const before = body.numRef();
    static_cast<void>(sequence().generic_contains(d, element(1)));
    static_cast<void>(sequence().generic_indexOf(d, element(1)));
    static_cast<void>(sequence().generic_at(d, 1));
    if (kind.isUnique) {
        sequence().generic_push_back(d, element(1));
    }
    if (kind.isStorageLike) {
        EXPECT_RAISES("sequence index out of bounds", sequence().generic_insert(d, 7, element(1)));
    }
    EXPECT_EQ(before, body.numRef());
}

TEST_P(SequenceContract, AgreesWithAVectorUnderRandomWork) {
    std::mt19937 random(42);
    std::vector<int> expected;
    for (int step = 0; step < 3000; ++step) {
        if (step % 500 == 0) {
            sequence().generic_clear(d);
            expected.clear();
        }
        ASSERT_NO_FATAL_FAILURE(changeBoth(expected, random)) << "step " << step;
        ASSERT_EQ(static_cast<int>(expected.size()), sequence().generic_size(d));
        if (!expected.empty()) {
            ASSERT_EQ(expected.front(), numberOf(sequence().generic_front(d)));
            ASSERT_EQ(expected.back(), numberOf(sequence().generic_back(d)));
        }
        if (step % 25 == 0) {
            ASSERT_EQ(expected, contents());
        }
    }
    EXPECT_EQ(expected, contents());
}

TEST_P(SequenceContract, FetchesWhatTheIteratorsShow) {
    int const count = kind.hides() ? 50 : 80;
    fill(count);
    std::array<NSInterface::ObjectIntf *, 7> bodies;
    std::vector<int> found;
    int fetched = 0;
    while ((fetched = sequence().generic_fetch(d, static_cast<int>(found.size()), bodies.data(), 7)) > 0) {
        for (int i = 0; i < fetched; ++i) {
            found.push_back(numberOf(Ref::ofStoredBody(bodies[static_cast<std::size_t>(i)], d)));
        }
    }
    EXPECT_EQ(fetched == 0 ? upTo(count) : std::vector<int>(), found);
}

INSTANTIATE_TEST_SUITE_P(Kinds, SequenceContract, testing::ValuesIn(kinds()),
                         [](auto const & instance) { return instance.param.name; });

} // namespace
} // namespace ZEL::tests
