#include "support/ExpectRaises.h"
#include "support/SequenceItems.h"

#include <ZEL/String.h>
#include <ZEL/sequences/GenericAssociationSequence.h>
#include <ZEL/sequences/GenericCombinedSequence.h>
#include <ZEL/sequences/GenericDeviantSequence.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/GenericReferenceCountingSequenceProxy.h>
#include <ZEL/sequences/ListQImpl.h>
#include <ZEL/sequences/MultiIndexImpl.ipp>
#include <ZEL/sequences/RefTraits.h>

#include <algorithm>
#include <functional>
#include <random>

namespace ZEL::Generic {
namespace {

using Test::FakeDeviant;
using Test::Item;
using Test::ItemIntf;
using Test::Owner;

using combined_sequence_internal::GenericCombinedSequence;
using filtered_sequence_internal::GenericFilteredSequence;
using filtered_sequence_internal::makeFilter;

constexpr int kElements = 90; ///< more than a storage of bodies keeps in one block

/// A sequence of some kind, and elements for it.
struct Subject {
    Owner owner;
    std::vector<Test::ItemBody> bodies{kElements};
    std::vector<std::unique_ptr<SequenceIntf>> storages;
    bool hasTexts = false;
    SequencePtr sequence; ///< last: views go before what they stand on

    Ref element(int i) {
        return hasTexts ? Ref::ofValue(String("text " + std::to_string(i)), Deviant())
                        : Ref::ofBody(&bodies[static_cast<std::size_t>(i)], Deviant());
    }
    SequenceHandle add(std::unique_ptr<SequenceIntf> storage) {
        storages.push_back(std::move(storage));
        return SequenceHandle(storages.back().get(), Deviant());
    }
    SequenceHandle stored() {
        return SequenceHandle(new GenericDeviantSequence(&owner, Deviant(), Owner::items), Deviant());
    }
};

struct Kind {
    std::string name;
    std::function<void(Subject &)> make;
    bool isUnique = true;
    bool isStorageLike = true; ///< its failures have the storage's texts
    bool inserts = true;       ///< has the insert and replace operations
    bool insertsAtEnd = true;
    bool erasesRanges = true;

    [[nodiscard]] bool hides() const { return name.ends_with("HidingFilter"); }
};

void set(Subject & subject, SequenceHandle const & handle) {
    subject.sequence = SequencePtr(handle.getImplementation());
}

void ignoreHook(Ref, GenericAssociationSequence::Owner const &, internal::PropertyDescriptor const *, bool) {}

Ref same(Ref const & element) { return element; }

/// Hides every third body of `subject`, which are put between the others.
GenericFilteredSequence * hidingView(Subject & subject) {
    auto const isHidden = [&subject](Ref const & element) {
        auto const & bodies = subject.bodies;
        for (std::size_t i = 0; i < bodies.size(); i += 3) {
            if (element.body() == &bodies[i]) {
                return true;
            }
        }
        return false;
    };
    auto const show = [isHidden](Ref const & element) { return isHidden(element) ? Ref() : element; };
    SequenceHandle const stored = subject.stored();
    auto * const view = new GenericFilteredSequence(stored, makeFilter(false, show, show));
    for (int i = 0; i < kElements; i += 3) {
        stored.getImplementation()->generic_push_back(Deviant(), subject.element(i));
    }
    return view;
}

/// `middle` between two sequences that take nothing.
void makeCombined(Subject & subject, GenericFilteredSequence * middle) {
    auto const none = [](Ref const &) { return Ref(); };
    auto combined = std::make_unique<GenericCombinedSequence>();
    combined->reserve(3);
    combined->append(std::make_unique<GenericFilteredSequence>(subject.add(std::make_unique<ListQImpl<Item>>()),
                                                               makeFilter(true, same, none)));
    combined->append(std::unique_ptr<GenericFilteredSequence>(middle));
    combined->append(std::make_unique<GenericFilteredSequence>(subject.add(std::make_unique<ListQImpl<Item>>()),
                                                               makeFilter(true, same, none)));
    subject.sequence = SequencePtr(combined.release());
}

std::vector<Kind> kinds() {
    std::vector<Kind> all;
    all.push_back({"List", [](Subject & s) { set(s, s.add(std::make_unique<ListQImpl<Item>>())); }, false});
    all.push_back(
        {"MultiIndex", [](Subject & s) { set(s, s.add(std::make_unique<MultiIndexImpl<Item, 0>>())); }, false});
    all.push_back(
        {"UniqueMultiIndex", [](Subject & s) { set(s, s.add(std::make_unique<MultiIndexImpl<Item, 1>>())); }});
    all.push_back({"UniqueMultiIndexOfTexts", [](Subject & s) {
                       s.hasTexts = true;
                       set(s, s.add(std::make_unique<MultiIndexImpl<String, 1>>()));
                   }});
    all.push_back({"CountedList",
                   [](Subject & s) {
                       SequenceHandle const list(new ListQImpl<Item>, Deviant());
                       set(s, SequenceHandle(new GenericReferenceCountingSequenceProxy(list), Deviant()));
                   },
                   false});
    all.push_back({"Stored", [](Subject & s) { set(s, s.stored()); }});
    all.push_back(
        {"StoredUniqueTexts", [](Subject & s) {
             s.hasTexts = true;
             set(s, SequenceHandle(new GenericDeviantSequence(&s.owner, Deviant(), Owner::uniqueTexts), Deviant()));
         }});
    all.push_back({"StoredTexts",
                   [](Subject & s) {
                       s.hasTexts = true;
                       set(s, SequenceHandle(new GenericDeviantSequence(&s.owner, Deviant(), Owner::texts), Deviant()));
                   },
                   false});
    all.push_back(
        {"Association", [](Subject & s) {
             set(s, SequenceHandle(new GenericAssociationSequence(s.stored(), nullptr, {}, &ignoreHook), Deviant()));
         }});
    Kind pure{"PureFilter", [](Subject & s) {
                  auto const filter = makeFilter(true, same, same);
                  set(s, SequenceHandle(new GenericFilteredSequence(s.stored(), filter), Deviant()));
              }};
    pure.isStorageLike = pure.erasesRanges = false;
    all.push_back(pure);
    Kind hiding{"HidingFilter", [](Subject & s) { s.sequence = SequencePtr(hidingView(s)); }};
    hiding.isStorageLike = hiding.erasesRanges = hiding.insertsAtEnd = false;
    all.push_back(hiding);
    Kind combined{"Combined", [](Subject & s) {
                      auto const filter = filtered_sequence_internal::takesOnly(ItemIntf::classInfo());
                      makeCombined(s, new GenericFilteredSequence(s.stored(), filter));
                  }};
    combined.isStorageLike = combined.erasesRanges = combined.inserts = combined.insertsAtEnd = false;
    all.push_back(combined);
    combined.name = "CombinedHidingFilter";
    combined.make = [](Subject & s) { makeCombined(s, hidingView(s)); };
    all.push_back(combined);
    return all;
}

class SequenceContract : public testing::TestWithParam<Kind> {
protected:
    SequenceContract() { kind.make(subject); }

    /// Numbers of elements that the kind shows.
    [[nodiscard]] int number(int i) const { return kind.hides() ? i / 2 * 3 + 1 + i % 2 : i; }
    Ref element(int i) { return subject.element(number(i)); }
    SequenceIntf & sequence() { return *subject.sequence; }
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
        for (std::size_t i = 0; i < found.size(); ++i) {
            EXPECT_EQ(found[i], numberOf(sequence().generic_at(d, static_cast<int>(i))));
        }
        return found;
    }

    Kind kind = GetParam();
    Subject subject;
    Deviant d;
};

std::vector<int> upTo(int count) {
    std::vector<int> numbers;
    for (int i = 0; i < count; ++i) {
        numbers.push_back(i);
    }
    return numbers;
}

TEST_P(SequenceContract, StartsEmpty) {
    EXPECT_EQ(0, sequence().generic_size(d));
    EXPECT_TRUE(sequence().generic_begin(d)->equal(sequence().generic_end(d).get()));
    EXPECT_FALSE(sequence().generic_contains(d, element(1)));
    EXPECT_EQ(-1, sequence().generic_indexOf(d, element(1)));
    sequence().generic_clear(d);
    EXPECT_EQ(std::vector<int>(), contents());
}

TEST_P(SequenceContract, KeepsTheOrderOfPushes) {
    fill(3);
    sequence().generic_push_front(d, element(3));
    EXPECT_EQ((std::vector<int>{3, 0, 1, 2}), contents());
    EXPECT_EQ(3, numberOf(sequence().generic_front(d)));
    EXPECT_EQ(2, numberOf(sequence().generic_back(d)));
    EXPECT_TRUE(sequence().generic_contains(d, element(1)));
    EXPECT_FALSE(sequence().generic_contains(d, element(4)));
    EXPECT_EQ(2, sequence().generic_indexOf(d, element(1)));
}

TEST_P(SequenceContract, IteratesBackwards) {
    fill(5);
    auto it = sequence().generic_end(d);
    for (int i = 5; i-- > 0;) {
        it->previous(d);
        EXPECT_EQ(i, numberOf(it->current(d)));
    }
    EXPECT_TRUE(it->equal(sequence().generic_begin(d).get()));
    auto const copy = it->clone();
    it->next(d);
    EXPECT_EQ(0, numberOf(copy->current(d)));
    EXPECT_EQ(1, numberOf(it->current(d)));
}

TEST_P(SequenceContract, InsertsAtEveryIndex) {
    if (!kind.inserts) {
        return;
    }
    fill(2);
    sequence().generic_insert(d, 0, element(2));
    sequence().generic_insert(d, 2, element(3));
    EXPECT_EQ((std::vector<int>{2, 0, 3, 1}), contents());
    if (kind.insertsAtEnd) {
        sequence().generic_insert(d, 4, element(4));
        EXPECT_EQ((std::vector<int>{2, 0, 3, 1, 4}), contents());
    }
}

TEST_P(SequenceContract, InsertsAndErasesAtIterators) {
    fill(4);
    auto it = sequence().generic_begin(d);
    it->next(d);
    if (kind.inserts) {
        auto const inserted = sequence().generic_insert(d, it.get(), element(4));
        EXPECT_EQ(4, numberOf(inserted->current(d)));
        EXPECT_EQ((std::vector<int>{0, 4, 1, 2, 3}), contents());
        EXPECT_EQ(1, numberOf(sequence().generic_erase(d, inserted.get())->current(d)));
    }
    auto second = sequence().generic_begin(d);
    second->next(d);
    auto const behind = sequence().generic_erase(d, second.get());
    EXPECT_EQ(2, numberOf(behind->current(d)));
    EXPECT_EQ((std::vector<int>{0, 2, 3}), contents());
    auto last = sequence().generic_end(d);
    last->previous(d);
    EXPECT_TRUE(sequence().generic_erase(d, last.get())->equal(sequence().generic_end(d).get()));
    EXPECT_EQ((std::vector<int>{0, 2}), contents());
}

TEST_P(SequenceContract, ErasesRanges) {
    if (!kind.erasesRanges) {
        return;
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

TEST_P(SequenceContract, ErasesElementsByWhatTheyAre) {
    fill(4);
    EXPECT_TRUE(sequence().generic_eraseElement(d, element(2)));
    EXPECT_FALSE(sequence().generic_eraseElement(d, element(2)));
    EXPECT_EQ((std::vector<int>{0, 1, 3}), contents());
}

TEST_P(SequenceContract, ReplacesInPlace) {
    if (!kind.inserts) {
        return;
    }
    fill(3);
    sequence().generic_replace(d, 1, element(3));
    EXPECT_EQ((std::vector<int>{0, 3, 2}), contents());
    sequence().generic_replace(d, 1, element(3));
    EXPECT_EQ((std::vector<int>{0, 3, 2}), contents());
    sequence().generic_replace(d, 0, element(2));
    EXPECT_EQ(kind.isUnique ? (std::vector<int>{0, 3, 2}) : (std::vector<int>{2, 3, 2}), contents());
}

TEST_P(SequenceContract, IgnoresDuplicatesOnlyIfUnique) {
    fill(2);
    sequence().generic_push_back(d, element(0));
    sequence().generic_push_front(d, element(1));
    EXPECT_EQ(kind.isUnique ? upTo(2) : (std::vector<int>{1, 0, 1, 0}), contents());
    EXPECT_EQ(kind.isUnique ? 1 : 0, sequence().generic_indexOf(d, element(1)));
}

TEST_P(SequenceContract, PopsAtBothEnds) {
    fill(4);
    sequence().generic_pop_back(d);
    if (kind.inserts) { // has a rule of its own
        sequence().generic_pop_front(d);
        EXPECT_EQ((std::vector<int>{1, 2}), contents());
    }
}

TEST_P(SequenceContract, RefusesAnIndexOutsideAndStaysAsItIs) {
    if (!kind.isStorageLike) {
        return;
    }
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

TEST_P(SequenceContract, RefusesToReadAndPopWhatIsNotThere) {
    if (!kind.isStorageLike) {
        return;
    }
    EXPECT_RAISES("sequence is empty", sequence().generic_front(d));
    EXPECT_RAISES("sequence is empty", sequence().generic_back(d));
    EXPECT_RAISES("sequence is empty", sequence().generic_pop_back(d));
    EXPECT_RAISES("sequence is empty", sequence().generic_pop_front(d));
}

TEST_P(SequenceContract, RefusesNullElements) {
    EXPECT_ANY_THROW(sequence().generic_push_back(d, Ref()));
    EXPECT_EQ(std::vector<int>(), contents());
}

TEST_P(SequenceContract, GivesElementsWithTheDeviantOfTheCall) {
    FakeDeviant deviant(3);
    fill(2);
    // A filter shows elements in the deviant of the handle under it.
    bool const isFiltered = !kind.isStorageLike;
    Deviant const expected = isFiltered ? Deviant() : Deviant(deviant);
    EXPECT_EQ(expected, sequence().generic_at(deviant, 1).getDeviant());
    EXPECT_EQ(expected, sequence().generic_begin(deviant)->current(deviant).getDeviant());
}

TEST_P(SequenceContract, ReleasesElementsThatItDoesNotStore) {
    fill(2);
    if (subject.hasTexts) {
        return;
    }
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
    auto const below = [&random](std::size_t end) { return static_cast<int>(random() % end); };
    for (int step = 0; step < 1500; ++step) {
        int const number = below(60);
        Ref const ref = element(number);
        bool const isRefused = kind.isUnique && std::find(expected.begin(), expected.end(), number) != expected.end();
        std::size_t const size = expected.size();
        switch (below(8)) {
        case 0:
        case 1:
            sequence().generic_push_back(d, ref);
            if (!isRefused) {
                expected.push_back(number);
            }
            break;
        case 2:
            sequence().generic_push_front(d, ref);
            if (!isRefused) {
                expected.insert(expected.begin(), number);
            }
            break;
        case 3:
        case 4:
            if (kind.inserts && size > 0) {
                int const index = below(size);
                sequence().generic_insert(d, index, ref);
                if (!isRefused) {
                    expected.insert(expected.begin() + index, number);
                }
            }
            break;
        case 5:
            if (size > 0) {
                int const index = below(size);
                sequence().generic_erase(d, index);
                expected.erase(expected.begin() + index);
            }
            break;
        case 6:
            if (kind.inserts && size > 0) {
                int const index = below(size);
                sequence().generic_replace(d, index, ref);
                if (!isRefused) {
                    expected[static_cast<std::size_t>(index)] = number;
                }
            }
            break;
        default:
            if (step % 50 == 0) {
                sequence().generic_clear(d);
                expected.clear();
            } else if (size > 0) {
                sequence().generic_pop_back(d);
                expected.pop_back();
            }
        }
        ASSERT_EQ(static_cast<int>(expected.size()), sequence().generic_size(d));
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
    if (fetched == 0) {
        EXPECT_EQ(upTo(count), found);
    } else {
        EXPECT_TRUE(found.empty());
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, SequenceContract, testing::ValuesIn(kinds()),
                         [](auto const & instance) { return instance.param.name; });

} // namespace
} // namespace ZEL::Generic
