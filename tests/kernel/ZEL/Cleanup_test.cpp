#include "support/ExpectRaises.h"

#include <ZEL/Cleanup.h>
#include <ZEL/Exception.h>
#include <ZEL/LeakChecker.h>
#include <ZEL/LiveObjectTable.h>
#include <ZEL/ObjectPool.h>
#include <ZEL/ReferenceCountingImpl.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <map>
#include <memory>
#include <random>
#include <set>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace ZEL {
namespace {

struct Tracked : Cleanup {};

/// Takes what is written to `std::cout`.
class CapturedOutput {
public:
    CapturedOutput() : fFormer(std::cout.rdbuf(fText.rdbuf())) {}
    ~CapturedOutput() { std::cout.rdbuf(fFormer); }
    CapturedOutput(CapturedOutput const &) = delete;
    CapturedOutput & operator=(CapturedOutput const &) = delete;
    [[nodiscard]] std::string text() const { return fText.str(); }

private:
    std::ostringstream fText;
    std::streambuf * fFormer;
};

std::string leakLine(int number) {
    return "== " + std::to_string(number) + " == leaked object: " + typeid(Tracked).name() + "\n";
}

int leaksAbove(int minimum) {
    CapturedOutput const captured;
    return Cleanup::printLeakedObjects(minimum);
}

class CleanupTest : public testing::Test {
protected:
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
}

TEST_F(CleanupTest, AnObjectThatDiesWhilePendingIsNeverCounted) {
    int const created = Cleanup::creationNumber();
    for (int i = 0; i < 10; ++i) {
        Tracked const temporary;
    }
    EXPECT_EQ(created, Cleanup::creationNumber());
}

TEST_F(CleanupTest, ListsLiveObjectsAboveANumber) {
    int const created = Cleanup::creationNumber();
    Tracked const one;
    Tracked const two(one); // a copy is an object of its own
    CapturedOutput const captured;
    EXPECT_EQ(2, Cleanup::printLeakedObjects(created - 1));
    EXPECT_EQ(1, Cleanup::printLeakedObjects(created));
    EXPECT_EQ(0, Cleanup::printLeakedObjects(created + 1));
    std::string const both = captured.text();
    EXPECT_NE(std::string::npos, both.find(leakLine(created)));
    EXPECT_NE(std::string::npos, both.find(leakLine(created + 1)));
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

TEST_F(CleanupTest, AnObjectThatDiesWhileTrackingIsOffIsNotLookedAtLater) {
    auto object = std::make_unique<Tracked>();
    Cleanup::stopTrackingObjects();
    object.reset();
    Cleanup::startTrackingObjects();
    int const created = Cleanup::creationNumber();
    Tracked const next;
    EXPECT_EQ(created, Cleanup::creationNumber());
}

TEST_F(CleanupTest, WithTrackingOffNothingIsEnteredButEnteredObjectsStillLeave) {
    int const active = Cleanup::numberOfActiveObjects();
    auto entered = std::make_unique<Tracked>();
    leaksAbove(0);
    EXPECT_EQ(active + 1, Cleanup::numberOfActiveObjects());
    Cleanup::stopTrackingObjects();
    Tracked const first;
    Tracked const second;
    EXPECT_EQ(active + 1, Cleanup::numberOfActiveObjects());
    entered.reset();
    EXPECT_EQ(active, Cleanup::numberOfActiveObjects());
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
    std::string text;
    {
        CapturedOutput const captured;
        try {
            Tracked const spare;
            Tracked const leaked;
            checker.endTrackLifetime();
        } catch (Exception const & failure) {
            text = failure.GetMessageTxt();
        }
        EXPECT_NE("", captured.text());
    }
    EXPECT_EQ("detected object leaks", text);
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
    bool copyDestroyed = false;
    {
        Body const copy(*body);
        EXPECT_EQ(0, const_cast<Body &>(copy).numRef());
    }
    destroyed = copyDestroyed;
    body->decRef();
    EXPECT_FALSE(destroyed);
    EXPECT_EQ(1, body->numRef());
    body->decRef();
    EXPECT_TRUE(destroyed);
}

TEST(ReferenceCounting, ACountBelowZeroIsAnInternalError) {
    struct Body : ReferenceCountingImpl {};
    Body body;
    EXPECT_RAISES("An Internal Error has occurred", body.decRef());
    EXPECT_RAISES("An Internal Error has occurred", body.incRef());
    EXPECT_EQ(-1, body.numRef());
}

TEST(LiveObjectTable, AgreesWithAMapUnderRandomWork) {
    constexpr std::size_t kPlaces = 1 << 16; // 8 bytes apart, over 128 pages
    auto const heap = std::make_unique<double[]>(kPlaces);
    std::vector<void *> places;
    for (std::size_t i = 0; i < kPlaces; ++i) {
        places.push_back(&heap[i]);
    }
    constexpr std::size_t kSizes = 40; // of the pool's blocks, in steps of 8 bytes
    std::vector<void *> blocks;
    for (std::size_t i = 0; i < kPlaces / 4; ++i) {
        blocks.push_back(internal::takeFromPool(8 * (1 + i % kSizes)));
    }
    places.insert(places.end(), blocks.begin(), blocks.end());
    internal::LiveObjectTable table;
    struct Expected {
        std::uint32_t number;
        bool inSection;
        bool operator==(Expected const &) const = default;
    };
    std::map<Cleanup const *, Expected> expected;
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
    std::map<Cleanup const *, Expected> found;
    table.forEach([&](Cleanup const & object, std::uint32_t number, bool inSection) {
        if (ours.contains(&object)) { // and not one of the process's own
            found[&object] = {number, inSection};
        }
    });
    EXPECT_TRUE(expected == found);
    for (auto const & [object, entry] : expected) {
        table.erase(const_cast<Cleanup *>(object));
    }
    EXPECT_EQ(0u, table.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        internal::giveToPool(blocks[i], 8 * (1 + i % kSizes));
    }
}

} // namespace
} // namespace ZEL
