#include <ZEL/sequences/PersistentSequence.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <tuple>
#include <type_traits>

namespace ZEL::tests {
namespace {

using internal::PersistentSequence;
using Model = std::vector<void *>;

static_assert(sizeof(PersistentSequence) == sizeof(void *));
static_assert(std::is_nothrow_copy_constructible_v<PersistentSequence>);
static_assert(std::is_nothrow_copy_assignable_v<PersistentSequence>);
static_assert(std::is_nothrow_move_constructible_v<PersistentSequence>);

// Addresses that are never followed; spread out of order, so that order in memory differs from order in the sequence.
void * pointer(std::size_t number) {
    std::uintptr_t const scattered = (number + 1) * 0x9E3779B97F4A7C15u % 0xFFFFFFFBu;
    return reinterpret_cast<void *>(scattered * 16);
}

Model pointers(std::size_t count) {
    Model model;
    for (std::size_t i = 0; i < count; ++i) {
        model.push_back(pointer(i));
    }
    return model;
}

Model::iterator placeIn(Model & model, std::size_t position) {
    return model.begin() + static_cast<std::ptrdiff_t>(position);
}

PersistentSequence sequenceOf(Model const & model) {
    PersistentSequence sequence;
    sequence.assign(model.begin(), model.end());
    return sequence;
}

// Looks at `sequence` by every road there is.
void expectEqual(PersistentSequence const & sequence, Model const & model) {
    ASSERT_EQ(sequence.size(), model.size());
    ASSERT_EQ(sequence.empty(), model.empty());
    ASSERT_EQ(Model(sequence.begin(), sequence.end()), model);
    Model visited;
    sequence.forEach([&visited](void * element) { visited.push_back(element); });
    ASSERT_EQ(visited, model);
    std::size_t left = model.size();
    for (auto cursor = sequence.end(); cursor != sequence.begin();) {
        ASSERT_EQ(*--cursor, model[--left]);
    }
    ASSERT_TRUE(sequence == sequenceOf(model));
    for (std::size_t i = 0; i < model.size(); ++i) {
        ASSERT_EQ(sequence.at(i), model[i]);
        ASSERT_EQ(sequence.indexOf(model[i]), static_cast<std::ptrdiff_t>(i));
    }
}

// Old copies of a sequence, with what they have to go on holding.
struct Versions {
    void keep(PersistentSequence const & sequence, Model const & model) { all.emplace_back(sequence, model); }
    void expectUnchanged() const {
        for (auto const & [sequence, model] : all) {
            ASSERT_NO_FATAL_FAILURE(expectEqual(sequence, model));
        }
    }
    std::vector<std::pair<PersistentSequence, Model>> all;
};

// One random change of `sequence` and of its model; `growth` in percent is the share of inserts.
void changeBoth(PersistentSequence & sequence, Model & model, std::mt19937 & random, unsigned growth, unsigned range) {
    void * element = pointer(random() % range);
    auto const found = std::find(model.begin(), model.end(), element);
    bool const isNew = found == model.end();
    if (random() % 100 < growth) {
        std::size_t const position = random() % (model.size() + 1);
        ASSERT_EQ(sequence.insert(position, element), isNew);
        if (isNew) {
            model.insert(placeIn(model, position), element);
        }
    } else if (random() % 4 == 0 && !model.empty()) {
        std::size_t const position = random() % model.size();
        bool const possible = isNew || found == placeIn(model, position);
        ASSERT_EQ(sequence.replaceAt(position, element), possible);
        if (possible) {
            model[position] = element;
        }
    } else if (random() % 2 == 0) {
        ASSERT_EQ(sequence.erase(element), !isNew);
        if (!isNew) {
            model.erase(found);
        }
    } else if (!model.empty()) {
        std::size_t const position = random() % model.size();
        sequence.eraseAt(position);
        model.erase(placeIn(model, position));
    }
    ASSERT_EQ(sequence.contains(element), std::find(model.begin(), model.end(), element) != model.end());
}

struct PersistentSequenceRandom : testing::TestWithParam<unsigned> {};

// The number of different elements decides between which kinds of storage the sequence wanders.
TEST_P(PersistentSequenceRandom, BehavesAsAVectorAndOldCopiesStayAsTheyWere) {
    unsigned const range = GetParam();
    std::mt19937 random(range);
    PersistentSequence sequence;
    Model model;
    Versions kept;
    for (unsigned step = 0; step < 6000; ++step) {
        unsigned const growth = step / 500 % 3 == 2 ? 15 : 75;
        ASSERT_NO_FATAL_FAILURE(changeBoth(sequence, model, random, growth, range));
        if (step % 97 == 0) {
            kept.keep(sequence, model);
        }
        if (step % 389 == 0) { // go on from an old copy
            std::tie(sequence, model) = kept.all[random() % kept.all.size()];
        }
        if (step % 50 == 0) {
            ASSERT_NO_FATAL_FAILURE(expectEqual(sequence, model)) << "step " << step;
        }
    }
    kept.expectUnchanged();
}

INSTANTIATE_TEST_SUITE_P(Ranges, PersistentSequenceRandom, testing::Values(3u, 12u, 70u, 130u, 700u, 3000u),
                         [](auto const & range) { return "Of" + std::to_string(range.param); });

// The lowest bit of an address decides how a single element is stored.
TEST(PersistentSequence, HoldsNullAndOddAddresses) {
    char bytes[4] = {};
    Model const all = {nullptr, bytes, bytes + 1, bytes + 2, bytes + 3};
    for (void * element : all) {
        PersistentSequence sequence;
        EXPECT_TRUE(sequence.push_back(element));
        expectEqual(sequence, {element});
        EXPECT_FALSE(sequence.push_back(element));
        for (void * other : all) {
            PersistentSequence changed = sequence;
            EXPECT_TRUE(changed.replaceAt(0, other));
            expectEqual(changed, {other});
            EXPECT_EQ(changed == sequence, other == element);
            EXPECT_EQ(sequence.insert(0, other), other != element);
            EXPECT_TRUE(other == element || sequence.erase(other));
            expectEqual(sequence, {element});
        }
        EXPECT_TRUE(sequence.erase(element));
        EXPECT_TRUE(sequence.empty());
    }
    expectEqual(sequenceOf(all), all);
}

TEST(PersistentSequence, CopiesShareUntilTheFirstWrite) {
    for (std::size_t size : {0u, 1u, 5u, 64u, 65u, 1000u}) {
        PersistentSequence sequence = sequenceOf(pointers(size));
        PersistentSequence copy = sequence;
        EXPECT_FALSE(copy.erase(pointer(size)));
        EXPECT_TRUE(size == 0 || (!copy.insert(0, pointer(size - 1)) && copy.replaceAt(0, pointer(0))));
        EXPECT_TRUE(copy.sharesStorageWith(sequence)) << "none of it is a write";
        copy.push_back(pointer(size));
        EXPECT_FALSE(copy.sharesStorageWith(sequence));
        EXPECT_FALSE(copy == sequence);
        expectEqual(sequence, pointers(size));
        expectEqual(copy, pointers(size + 1));

        copy.eraseAt(size);
        EXPECT_TRUE(copy == sequence) << "equal, though not shared any more";
        PersistentSequence const moved = std::move(copy);
        EXPECT_TRUE(moved == sequence);
        EXPECT_TRUE(copy.empty()); // NOLINT(bugprone-use-after-move): a moved one is empty
        sequence = *&sequence;
        expectEqual(sequence, pointers(size));
        sequence.clear();
        EXPECT_TRUE(sequence.empty());
        expectEqual(moved, pointers(size));
    }
}

TEST(PersistentSequence, AWriteToALargeCopyTakesLittleMemory) {
    PersistentSequence const original = sequenceOf(pointers(100000));
    EXPECT_GT(original.heapBytes(), 100000u * 16);
    EXPECT_LT(original.heapBytes(), 100000u * 48);
    EXPECT_EQ(PersistentSequence().heapBytes(), 0u);
    EXPECT_EQ(sequenceOf(pointers(1)).heapBytes(), 0u);
    EXPECT_LE(sequenceOf(pointers(5)).heapBytes(), 8u + 8 * sizeof(void *));

    // If a write copied the whole, this would take minutes and gigabytes.
    std::vector<PersistentSequence> versions(1, original);
    for (std::size_t i = 0; i < 2000; ++i) {
        versions.push_back(versions.back());
        versions.back().eraseAt(i * 37 % versions.back().size());
        versions.back().insert(i * 91 % versions.back().size(), pointer(200000 + i));
    }
    EXPECT_EQ(Model(original.begin(), original.end()), pointers(100000));
    EXPECT_EQ(versions.back().size(), 100000u);
}

TEST(PersistentSequence, ChangesItsKindOfStorageWithALag) {
    std::size_t const large = PersistentSequence::MaximalBlock + 1;
    PersistentSequence sequence = sequenceOf(pointers(large - 1));
    std::size_t const blockBytes = sequence.heapBytes();
    sequence.push_back(pointer(large - 1));
    EXPECT_GT(sequence.heapBytes(), 2 * blockBytes);
    while (sequence.size() > PersistentSequence::MinimalTree + 1) {
        sequence.eraseAt(sequence.size() / 2);
        EXPECT_GT(sequence.heapBytes(), blockBytes) << "still trees with " << sequence.size();
    }
    Model model(sequence.begin(), sequence.end());
    PersistentSequence const before = sequence;
    sequence.eraseAt(3);
    model.erase(placeIn(model, 3));
    EXPECT_LT(sequence.heapBytes(), blockBytes);
    expectEqual(sequence, model);
    EXPECT_EQ(before.size(), PersistentSequence::MinimalTree + 1);
}

// Inserting again and again at one place uses up the labels there; at 0 and at the end it must not. New labels must not
// show in old copies.
TEST(PersistentSequence, TakesInsertsAtOnePlaceWithoutEnd) {
    for (std::size_t place : {0u, 1u, 50u, 99u}) {
        Model model = pointers(100);
        PersistentSequence sequence = sequenceOf(model);
        Versions kept;
        for (std::size_t i = 0; i < 20000; ++i) {
            if (i < 400 || i % 1000 == 0) {
                kept.keep(sequence, model);
            }
            std::size_t const side = i < 400 ? i % 2 : 0;
            ASSERT_TRUE(sequence.insert(place + side, pointer(1000 + i)));
            model.insert(placeIn(model, place + side), pointer(1000 + i));
        }
        ASSERT_NO_FATAL_FAILURE(expectEqual(sequence, model));
        ASSERT_NO_FATAL_FAILURE(kept.expectUnchanged());
    }
}

TEST(PersistentSequence, GrowsAndShrinksByAHundredThousandInEveryOrder) {
    constexpr std::size_t count = 100000;
    Model const model = pointers(count);
    PersistentSequence pushed;
    PersistentSequence front;
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_TRUE(pushed.push_back(model[i]));
        ASSERT_TRUE(front.insert(0, model[count - 1 - i]));
    }
    expectEqual(pushed, model);
    EXPECT_TRUE(front == pushed);

    std::vector<std::size_t> order(count);
    std::iota(order.begin(), order.end(), 0u);
    std::shuffle(order.begin(), order.end(), std::mt19937(7));
    PersistentSequence byValue = pushed;
    Model left = model;
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_TRUE(byValue.erase(pointer(order[i])));
        left[order[i]] = nullptr; // gone
        if (i + 10 == count || i == count / 2) {
            Model expected = left;
            std::erase(expected, nullptr);
            expectEqual(byValue, expected);
        }
    }
    EXPECT_TRUE(byValue.empty());

    PersistentSequence fromFront = pushed;
    PersistentSequence fromBack = pushed;
    for (std::size_t i = 0; i < count; ++i) {
        ASSERT_EQ(fromFront.at(0), model[i]);
        fromFront.eraseAt(0);
        ASSERT_EQ(fromBack.at(count - 1 - i), model[count - 1 - i]);
        fromBack.eraseAt(count - 1 - i);
    }
    EXPECT_TRUE(fromFront.empty() && fromBack.empty());
    EXPECT_EQ(Model(pushed.begin(), pushed.end()), model);
}

// What is left after most elements are gone must not sit in nearly empty nodes.
TEST(PersistentSequence, ErasingReturnsMemory) {
    PersistentSequence sequence = sequenceOf(pointers(50000));
    std::mt19937 random(3);
    for (std::size_t i = 0; i < 50000; ++i) {
        if (i % 50 != 0) {
            ASSERT_TRUE(sequence.erase(pointer(i)));
        }
    }
    EXPECT_EQ(sequence.size(), 1000u);
    EXPECT_LT(sequence.heapBytes(), 1000u * 120);
    sequence.clear();
    EXPECT_EQ(sequence.heapBytes(), 0u);
}

TEST(PersistentSequence, CursorsStepBothWaysFromAnyPosition) {
    for (std::size_t size : {1u, 40u, 5000u}) {
        Model const model = pointers(size);
        PersistentSequence const sequence = sequenceOf(model);
        PersistentSequence::Cursor cursor(sequence, size / 3);
        ASSERT_EQ(*cursor++, model[size / 3]);
        ASSERT_EQ(cursor.position(), size / 3 + 1);
        ASSERT_EQ(*--cursor, model[size / 3]);
        ASSERT_EQ(std::distance(cursor, sequence.end()), static_cast<std::ptrdiff_t>(size - size / 3));
    }
}

TEST(PersistentSequence, AssignsFromItselfAndFromAnyRange) {
    for (std::size_t size : {1u, 2u, 64u, 65u, 32u * 20 * 20 + 1}) {
        Model model = pointers(size);
        PersistentSequence sequence = sequenceOf(model);
        std::sort(model.begin(), model.end());
        sequence.assign(model.begin(), model.end());
        expectEqual(sequence, model);
        sequence.assign(++sequence.begin(), sequence.end());
        expectEqual(sequence, Model(placeIn(model, 1), model.end()));
    }
}

} // namespace
} // namespace ZEL::tests
