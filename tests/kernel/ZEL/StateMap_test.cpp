#include "support/TestObjects.h"

#include <ZEL/StateMap.h>

#include <algorithm>
#include <map>
#include <random>

namespace ZEL {
namespace {

using testsupport::asState;
using testsupport::Thing;
using testsupport::ThingState;

class StateMapTest : public testing::Test {
protected:
    explicit StateMapTest(std::size_t count = 200) {
        for (std::size_t i = 0; i < count; ++i) {
            things.push_back(new Thing);
            things.back()->incRef();
        }
    }
    ~StateMapTest() override {
        for (Thing * const thing : things) {
            thing->decRef();
        }
        EXPECT_EQ(thingsBefore, Thing::numberAlive);
        EXPECT_EQ(0, ThingState::numberAlive);
    }

    int const thingsBefore = Thing::numberAlive;
    std::vector<Thing *> things;
};

TEST_F(StateMapTest, AgreesWithAnOrderedMapUnderRandomWork) {
    ThingState states[5];
    StateMap map;
    std::map<StateMap::Key, StateMap::State> expected;
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        Thing * const key = things[random() % things.size()];
        StateMap::State const state = &states[random() % 5];
        switch (random() % 8) {
        case 0:
        case 1:
        case 2: {
            StateMap::State const former = expected.count(key) != 0 ? expected[key] : nullptr;
            EXPECT_EQ(former, map.set(key, state));
            expected[key] = state;
            break;
        }
        case 3:
        case 4: {
            StateMap::State const former = expected.count(key) != 0 ? expected[key] : nullptr;
            EXPECT_EQ(former, map.erase(key));
            expected.erase(key);
            break;
        }
        case 5:
        case 6:
            EXPECT_EQ(expected.count(key) != 0 ? expected[key] : nullptr, map.get(key));
            break;
        default:
            if (random() % 50 == 0) {
                ASSERT_EQ(expected.size(), map.size());
                EXPECT_TRUE(
                    std::equal(map.begin(), map.end(), expected.begin(), [](auto const & left, auto const & right) {
                        return left.key == right.first && left.state == right.second;
                    }));
            }
            if (random() % 1000 == 0) {
                map.clear();
                expected.clear();
            }
        }
    }
    for (Thing * const thing : things) {
        EXPECT_EQ(expected.count(thing) != 0 ? 2 : 1, thing->numRef());
    }
    map.clear();
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.begin(), map.end());
    for (Thing * const thing : things) {
        EXPECT_EQ(1, thing->numRef());
    }
}

TEST_F(StateMapTest, KeysComeInTheOrderOfTheirAddresses) {
    std::shuffle(things.begin(), things.end(), std::mt19937(2));
    StateMap map;
    for (Thing * const thing : things) {
        static_cast<void>(map.set(thing, asState(Deviant::FallbackToRoot)));
    }
    std::vector<StateMap::Key> sorted(things.begin(), things.end());
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(sorted, map.keys());
    EXPECT_EQ(Deviant::FallbackToRoot, map.find(things[0])->state);
    Thing const absent;
    EXPECT_EQ(map.end(), map.find(&absent));
}

TEST_F(StateMapTest, CountsEachKeyOnceButNotTheModelOfTheMap) {
    Thing & model = *things[0];
    Thing & object = *things[1];
    {
        StateMap map(&model);
        static_cast<void>(map.set(&model, asState(Deviant::InvalidObject)));
        static_cast<void>(map.set(&object, asState(Deviant::InvalidObject)));
        static_cast<void>(map.set(&object, asState(Deviant::FallbackToRoot)));
        EXPECT_EQ(1, model.numRef());
        EXPECT_EQ(2, object.numRef());
        static_cast<void>(map.erase(&model));
        static_cast<void>(map.erase(&model));
        EXPECT_EQ(1, model.numRef());
    }
    EXPECT_EQ(1, object.numRef());
}

TEST_F(StateMapTest, DestroyAndClearGivesStatesBackAndKeepsSentinelsOut) {
    StateMap map;
    for (std::size_t i = 0; i < things.size(); ++i) {
        StateMap::State const state =
            i % 3 == 0 ? new ThingState : asState(i % 3 == 1 ? Deviant::InvalidObject : nullptr);
        static_cast<void>(map.set(things[i], state));
    }
    EXPECT_EQ(67, ThingState::numberAlive);
    map.destroyAndClear();
    EXPECT_EQ(0, ThingState::numberAlive);
    EXPECT_TRUE(map.empty());
}

TEST_F(StateMapTest, AMapMayHoldTheLastCountOfItsKey) {
    StateMap map;
    int const before = Thing::numberAlive;
    static_cast<void>(map.set(new Thing, new ThingState));
    map.destroyAndClear();
    EXPECT_EQ(before, Thing::numberAlive);
}

TEST_F(StateMapTest, SwapExchangesSmallAndLargeContents) {
    StateMap small;
    StateMap large;
    static_cast<void>(small.set(things[0], asState(Deviant::InvalidObject)));
    for (Thing * const thing : things) {
        static_cast<void>(large.set(thing, asState(Deviant::FallbackToRoot)));
    }
    small.swap(large);
    EXPECT_EQ(things.size(), small.size());
    EXPECT_EQ(1u, large.size());
    EXPECT_EQ(Deviant::InvalidObject, large.get(things[0]));
    EXPECT_EQ(Deviant::FallbackToRoot, small.get(things.back()));
}

} // namespace
} // namespace ZEL
