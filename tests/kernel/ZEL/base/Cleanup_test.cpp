#include "support/ExpectRaises.h"
#include "support/LongRuns.h"

#include <ZEL/base/Cleanup.h>
#include <ZEL/base/LeakChecker.h>
#include <ZEL/base/LiveObjectTable.h>
#include <ZEL/base/ObjectPool.h>
#include <ZEL/base/ReferenceCountingImpl.h>

#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <iterator>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <vector>

namespace ZEL::tests {
namespace {

struct Tracked : Cleanup {};

/// What `action` writes to `std::cout`.
template <class Action> std::string printedBy(Action action) {
    std::ostringstream text;
    std::streambuf * const former = std::cout.rdbuf(text.rdbuf());
    action();
    std::cout.rdbuf(former);
    return text.str();
}

std::string leakLine(int number) {
    return "== " + std::to_string(number) + " == leaked object: " + typeid(Tracked).name() + "\n";
}

int leaksAbove(int minimum) {
    int number = 0;
    static_cast<void>(printedBy([&] { number = Cleanup::printLeakedObjects(minimum); }));
    return number;
}

struct CleanupTest : testing::Test {
    void SetUp() override { static_cast<void>(leaksAbove(0)); } // enters whatever is pending
    void TearDown() override {
        Cleanup::startTrackingObjects();
        Cleanup::endMetaRegistrySection();
    }
};

TEST_F(CleanupTest, AnObjectIsEnteredOneStepAfterItsConstruction) {
    int const created = Cleanup::creationNumber();
    int const active = Cleanup::numberOfActiveObjects();
    auto first = std::make_unique<Tracked>();
    EXPECT_EQ(created, Cleanup::creationNumber());
    auto second = std::make_unique<Tracked>();
    EXPECT_EQ(created + 1, Cleanup::creationNumber());
    EXPECT_EQ(active + 1, Cleanup::numberOfActiveObjects());
    first.reset();
    EXPECT_EQ(created + 2, Cleanup::creationNumber()) << "a destruction is a step, too";
    EXPECT_EQ(active + 1, Cleanup::numberOfActiveObjects());
    second.reset();
    EXPECT_EQ(active, Cleanup::numberOfActiveObjects());
    int const before = Cleanup::creationNumber();
    for (int i = 0; i < 10; ++i) {
        Tracked const temporary;
    }
    EXPECT_EQ(before, Cleanup::creationNumber()) << "an object that dies while pending is never counted";
}

TEST_F(CleanupTest, ListsLiveObjectsAboveANumber) {
    int const created = Cleanup::creationNumber();
    Tracked const one;
    Tracked const two(one); // a copy is an object of its own
    std::string const both = printedBy([&] { EXPECT_EQ(2, Cleanup::printLeakedObjects(created - 1)); });
    EXPECT_NE(std::string::npos, both.find(leakLine(created)));
    EXPECT_NE(std::string::npos, both.find(leakLine(created + 1)));
    EXPECT_EQ(1, leaksAbove(created));
    EXPECT_EQ(0, leaksAbove(created + 1));
}

TEST_F(CleanupTest, ObjectsOfAMetaRegistrySectionAreNoLeaks) {
    int const created = Cleanup::creationNumber();
    int const active = Cleanup::numberOfActiveObjects();
    Cleanup::beginMetaRegistrySection();
    auto metamodel = std::make_unique<Tracked>();
    auto last = std::make_unique<Tracked>(); // enters the one before; is entered itself when the section has ended
    Cleanup::endMetaRegistrySection();
    EXPECT_EQ(0, leaksAbove(created - 1));
    EXPECT_EQ(active + 2, Cleanup::numberOfActiveObjects());
    last.reset();
    void const * const address = metamodel.get();
    metamodel.reset();
    Tracked const again;
    if (&again == address) {
        EXPECT_EQ(1, leaksAbove(created)) << "the place must not remember the section";
    }
}

TEST_F(CleanupTest, WithTrackingOffNothingIsEnteredButObjectsLeave) {
    int const active = Cleanup::numberOfActiveObjects();
    auto entered = std::make_unique<Tracked>();
    auto pending = std::make_unique<Tracked>();
    EXPECT_EQ(active + 1, Cleanup::numberOfActiveObjects());
    Cleanup::stopTrackingObjects();
    pending.reset();
    Tracked const first;
    Tracked const second;
    EXPECT_EQ(active + 1, Cleanup::numberOfActiveObjects());
    entered.reset();
    EXPECT_EQ(active, Cleanup::numberOfActiveObjects());
    Cleanup::startTrackingObjects();
    int const created = Cleanup::creationNumber();
    Tracked const next;
    EXPECT_EQ(created, Cleanup::creationNumber()) << "what was pending is not looked at later";
}

TEST_F(CleanupTest, LifetimesNestAndALeakIsRaisedOnce) {
    LeakChecker checker;
    checker.endTrackLifetime(); // nothing without a lifetime
    checker.beginTrackLifetime();
    Tracked const filler;
    auto const outer = std::make_unique<Tracked>();
    checker.beginTrackLifetime();
    { Tracked const temporary; }
    checker.endTrackLifetime();

    checker.beginTrackLifetime();
    EXPECT_NE("", printedBy([&] {
                  Tracked const spare;
                  Tracked const leaked;
                  EXPECT_RAISES("detected object leaks", checker.endTrackLifetime());
              }));
    checker.endTrackLifetime(); // the failure has forgotten the outer lifetime as well
}

TEST_F(CleanupTest, WithTrackingOffAllLifetimesAreForgotten) {
    LeakChecker checker;
    checker.beginTrackLifetime();
    checker.beginTrackLifetime();
    Tracked const first;
    Tracked const second;
    Cleanup::stopTrackingObjects();
    checker.endTrackLifetime();
    Cleanup::startTrackingObjects();
    checker.endTrackLifetime();
}

std::pair<Tracked *, Tracked *> keptToTheEnd;

[[noreturn]] void leaveObjectsBehind() {
    std::cout.rdbuf(std::cerr.rdbuf());
    Cleanup::beginMetaRegistrySection();
    keptToTheEnd = {new Tracked, new Tracked};
    std::exit(0);
}

TEST(CleanupDeathTest, ObjectsAliveAtProcessEndAreListedAlsoThoseOfASection) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    EXPECT_EXIT(leaveObjectsBehind(), testing::ExitedWithCode(0),
                "== [0-9]+ == leaked object: .*Tracked.*\n== [0-9]+ == leaked object: .*Tracked");
}

TEST(ReferenceCounting, ABodyGoesWithItsLastCountAndACopyStartsAtNone) {
    struct Body : ReferenceCountingImpl {
        explicit Body(bool & destroyed) : fDestroyed(destroyed) {}
        Body(Body const &) = default;
        ~Body() override { fDestroyed = true; }
        bool & fDestroyed;
    };
    bool destroyed = false;
    auto * const body = new Body(destroyed);
    body->incRef();
    body->incRef();
    EXPECT_EQ(0, Body(*body).numRef());
    destroyed = false; // that was the copy
    body->decRef();
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(1, body->numRef());
    body->decRef();
    EXPECT_TRUE(destroyed);
}

TEST(ReferenceCounting, ACountBelowZeroIsAnInternalError) {
    struct Body : ReferenceCountingImpl {};
    Body body;
    EXPECT_RAISES(kInternalError, body.decRef());
    EXPECT_RAISES(kInternalError, body.incRef());
    EXPECT_EQ(-1, body.numRef());
}

TEST(LiveObjectTable, AgreesWithAMapUnderRandomWork) {
    constexpr std::size_t kPlaces = 1 << 16; // 8 bytes apart, over 128 pages
    auto const heap = std::make_unique<double[]>(kPlaces);
    std::vector<void *> places;
    for (std::size_t i = 0; i < kPlaces; ++i) {
        places.push_back(&heap[i]);
    }
    auto const sizeOf = [](std::size_t block) { return 8 * (1 + block % 40); };
    for (std::size_t i = 0; i < kPlaces / 4; ++i) {
        places.push_back(internal::takeFromPool(sizeOf(i)));
    }
    internal::LiveObjectTable table;
    using Entries = std::map<void const *, std::pair<std::uint32_t, bool>>; // number and whether it is of a section
    Entries expected;
    std::mt19937 random(1);
    for (std::uint32_t number = 0; number < 100'000; ++number) {
        auto * const object = static_cast<Cleanup *>(places[random() % places.size()]);
        if (random() % 2 == 0) {
            bool const inSection = random() % 8 == 0;
            table.insert(object, number, inSection);
            expected[object] = {number, inSection};
        } else {
            table.erase(object);
            expected.erase(object);
        }
    }
    ASSERT_EQ(expected.size(), table.size());
    std::set<void const *> const ours(places.begin(), places.end());
    Entries found;
    table.forEach([&](Cleanup const & object, std::uint32_t number, bool inSection) {
        if (ours.contains(&object)) { // and not one of the process's own
            found[&object] = {number, inSection};
        }
    });
    EXPECT_TRUE(expected == found);
    for (std::size_t i = 0; i < kPlaces; i += 7) {
        auto const above = expected.upper_bound(places[i]);
        void const * const nearest = above == expected.begin() ? nullptr : std::prev(above)->first;
        ASSERT_EQ(nearest >= heap.get() ? nearest : nullptr, table.findBefore(static_cast<char *>(places[i]) + 5));
    }
    for (void * const place : places) {
        table.erase(static_cast<Cleanup *>(place));
    }
    EXPECT_EQ(0u, table.size());
    for (std::size_t i = 0; i < kPlaces / 4; ++i) {
        internal::giveToPool(places[kPlaces + i], sizeOf(i));
    }
}

TEST(ObjectPool, PlacesNewObjectsInOrderWhereAModelHasGone) {
    if (kIsSanitized) {
        GTEST_SKIP() << "each object is allocated on its own";
    }
    constexpr std::size_t kBlocks = 100'000;
    std::mt19937 random(1);
    auto const takeAll = [](std::size_t size) {
        std::vector<char *> blocks(kBlocks);
        for (char *& block : blocks) {
            block = static_cast<char *>(internal::takeFromPool(size));
        }
        return blocks;
    };
    for (std::size_t const size : {40, 40, 104, 504, 40}) { // the memory of one size serves the others
        SCOPED_TRACE(size);
        std::vector<char *> blocks = takeAll(size);
        std::size_t neighbours = 0;
        for (std::size_t i = 1; i < kBlocks; ++i) {
            neighbours += blocks[i] == blocks[i - 1] + size ? 1 : 0;
        }
        EXPECT_GT(neighbours, kBlocks * 95 / 100);
        EXPECT_EQ(kBlocks, std::set<char *>(blocks.begin(), blocks.end()).size());
        std::shuffle(blocks.begin(), blocks.end(), random);
        for (char * const block : blocks) {
            internal::giveToPool(block, size);
        }
    }
}

} // namespace
} // namespace ZEL::tests
