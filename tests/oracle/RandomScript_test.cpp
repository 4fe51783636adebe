#include "Script.h"
#include "support/LongRuns.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ZEL::tests::oracle {
namespace {

constexpr int kStepsOfAModel = 1000; ///< then a new model begins

/// Runs one script with its model and says what went wrong, leaks included.
std::string problemsOf(std::uint32_t seed, int steps, PhaseCounts & counts) {
    LeakChecker leaks;
    leaks.beginTrackLifetime();
    std::string problems;
    {
        Script script(seed, counts);
        script.run(steps);
        problems = script.problems();
    }
    try {
        leaks.endTrackLifetime();
    } catch (std::exception const & leak) {
        problems += "seed " + std::to_string(seed) + ": " + leak.what() + '\n';
    }
    return problems;
}

/// What a process makes once, with the first model, is no leak.
class RandomScript : public testing::Test {
protected:
    static void SetUpTestSuite() {
        PhaseCounts counts;
        static_cast<void>(problemsOf(1, 100, counts));
    }
};
class RandomScriptLong : public RandomScript {};

PhaseCounts runScripts(std::uint32_t firstSeed, int steps) {
    PhaseCounts counts;
    for (std::uint32_t seed = firstSeed; steps > 0 && !testing::Test::HasFailure(); ++seed, steps -= kStepsOfAModel) {
        std::string const problems = problemsOf(seed, std::min(steps, kStepsOfAModel), counts);
        EXPECT_TRUE(problems.empty()) << problems;
    }
    return counts;
}

/// A script whose choices have become poor would hide what it no longer tries.
void expectEachOperationInItsPhases(PhaseCounts counts) {
    auto const expectMet = [&](std::string const & what, std::initializer_list<char const *> phases) {
        for (char const * const phase : phases) {
            EXPECT_NE(0, counts[what][phase]) << what << ' ' << phase;
        }
    };
    for (auto const & [what, operation] : NaiveModel::operations()) {
        if (operation.isOnObject) {
            expectMet(what, {"transaction", "nested"});
        } else {
            expectMet(what, {"idle"});
        }
    }
    expectMet("listen", {"modifier", "validator", "observer"});
    expectMet("unlisten", {"modifier", "validator", "observer"});
    expectMet("disable undo", {"transaction", "modifier", "observer"});
    for (char const * const phase : {"modifier", "observer"}) {
        auto const hasMet = [phase](auto const & each) { return each.second.count(phase) != 0; };
        EXPECT_LE(8, std::count_if(counts.begin(), counts.end(), hasMet)) << phase;
    }
}

TEST_F(RandomScript, KernelShowsWhatTheNaiveModelShowsAfterEachStep) {
    expectEachOperationInItsPhases(runScripts(1, 10000));
}

/// Each has found a difference once.
TEST_F(RandomScript, SeedsThatFailedOncePass) { runScripts(1323, kStepsOfAModel); }

TEST_F(RandomScriptLong, KernelShowsWhatTheNaiveModelShowsAfterEachStep) { runScripts(1000, longRun(400000, 4)); }

} // namespace
} // namespace ZEL::tests::oracle
