#include "support/TestObjects.h"

#include <ZEL/deviants/StateMap.h>

#include <algorithm>
#include <map>
#include <random>

namespace ZEL::tests {
namespace {

struct StateMapTest : DeviantFixture {
    StateMapTest() : DeviantFixture(Kind::Things) {
        std::generate(things.begin(), things.end(), [this] { return makeBody(); });
        std::shuffle(things.begin(), things.end(), std::mt19937(2));
    }
    ~StateMapTest() override {
        map.destroyAndClear();
        for (ClassObjectIntf * const thing : things) {
            EXPECT_EQ(1, thing->numRef());
        }
    }
    static StateMap::State absent() { return asState(Deviant::InvalidObject); }
    static StateMap::State following() { return asState(Deviant::FallbackToRoot); }

    std::vector<ClassObjectIntf *> things = std::vector<ClassObjectIntf *>(200);
    StateMap map;
};

TEST_F(StateMapTest, AgreesWithAnOrderedMapUnderRandomWork) {
    ThingState states[5];
    std::map<StateMap::Key, StateMap::State> expected;
    auto const isSame = [](auto const & left, auto const & right) {
        return left.key == right.first && left.state == right.second;
    };
    std::mt19937 random(1);
    for (int round = 0; round < 20'000; ++round) {
        ClassObjectIntf * const key = things[random() % things.size()];
        auto const present = expected.find(key);
        StateMap::State const former = present == expected.end() ? nullptr : present->second;
        auto const choice = random() % 1000;
        if (choice < 400) {
            StateMap::State const state = &states[random() % 5];
            EXPECT_EQ(former, map.set(key, state));
            expected[key] = state;
        } else if (choice < 650) {
            EXPECT_EQ(former, map.erase(key));
            expected.erase(key);
        } else if (choice < 900) {
            EXPECT_EQ(former, map.get(key));
            EXPECT_EQ(former == nullptr, map.find(key) == map.end());
        } else {
            EXPECT_EQ(expected.size(), map.size());
            EXPECT_TRUE(std::equal(map.begin(), map.end(), expected.begin(), expected.end(), isSame))
                << "in the order of the addresses";
            if (choice == 999) {
                map.clear();
                expected.clear();
            }
        }
    }
    std::vector<StateMap::Key> keys;
    for (auto const & [key, state] : expected) {
        keys.push_back(key);
        EXPECT_EQ(2, const_cast<ClassObjectIntf *>(key)->numRef());
    }
    EXPECT_EQ(keys, map.keys());
    map.clear();
    EXPECT_TRUE(map.empty());
    EXPECT_EQ(map.begin(), map.end());
}

TEST_F(StateMapTest, CountsEachKeyOnceButNotTheModelOfTheMap) {
    ClassObjectIntf & model = *things[0];
    ClassObjectIntf & object = *things[1];
    StateMap ofModel(&model);
    static_cast<void>(ofModel.set(&model, absent()));
    static_cast<void>(ofModel.set(&object, absent()));
    static_cast<void>(ofModel.set(&object, following()));
    EXPECT_EQ(1, model.numRef());
    EXPECT_EQ(2, object.numRef());
    static_cast<void>(ofModel.erase(&model));
    static_cast<void>(ofModel.erase(&model));
    EXPECT_EQ(1, model.numRef());
}

TEST_F(StateMapTest, DestroyAndClearEndsStatesAndLeavesSentinelsAlone) {
    int const before = numberAlive();
    for (std::size_t i = 0; i < things.size(); ++i) {
        static_cast<void>(map.set(things[i], i % 3 == 0 ? new ThingState : i % 3 == 1 ? absent() : nullptr));
    }
    static_cast<void>(map.set(new Thing, new ThingState)); // the last count of its key
    EXPECT_EQ(before + 69, numberAlive());
    map.destroyAndClear();
    EXPECT_EQ(before, numberAlive());
    EXPECT_TRUE(map.empty());
}

TEST_F(StateMapTest, SwapExchangesSmallAndLargeContents) {
    StateMap small;
    static_cast<void>(small.set(things[0], absent()));
    for (ClassObjectIntf * const thing : things) {
        static_cast<void>(map.set(thing, following()));
    }
    small.swap(map);
    EXPECT_EQ(things.size(), small.size());
    EXPECT_EQ(1u, map.size());
    EXPECT_EQ(Deviant::InvalidObject, map.get(things[0]));
    for (ClassObjectIntf * const thing : things) {
        EXPECT_EQ(Deviant::FallbackToRoot, small.get(thing));
    }
}

} // namespace
} // namespace ZEL::tests
