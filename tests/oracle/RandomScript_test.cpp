#include "Script.h"

#include <ZEL/LeakChecker.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <string>

namespace {

using ZEL::oracle::PhaseCounts;
using ZEL::oracle::Script;
using ZEL::oracle::What;

constexpr int kStepsOfAModel = 1000; ///< then a new model begins

/// Runs one script with its model and says what went wrong, leaks included.
std::string problemsOf(std::uint32_t seed, int steps, PhaseCounts & counts) {
    ZEL::LeakChecker leaks;
    leaks.beginTrackLifetime();
    std::string problems;
    {
        Script script(seed);
        script.run(steps);
        problems = script.problems();
        for (auto const & [what, phases] : script.counts()) {
            for (auto const & [phase, count] : phases) {
                counts[what][phase] += count;
            }
        }
    }
    try {
        leaks.endTrackLifetime();
    } catch (std::exception const & leak) {
        problems += "seed " + std::to_string(seed) + ": " + leak.what() + '\n';
    }
    return problems;
}

void printCounts(PhaseCounts const & counts) {
    for (auto const & [what, phases] : counts) {
        std::printf("%-18s", ZEL::oracle::nameOf(what));
        for (auto const & [phase, count] : phases) {
            std::printf(" %s %d", phase.c_str(), count);
        }
        std::printf("\n");
    }
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

void runScripts(std::uint32_t firstSeed, int steps) {
    PhaseCounts counts;
    for (std::uint32_t seed = firstSeed; steps > 0; ++seed, steps -= kStepsOfAModel) {
        std::string const problems = problemsOf(seed, std::min(steps, kStepsOfAModel), counts);
        ASSERT_TRUE(problems.empty()) << problems;
    }
    std::printf("seeds from %u\n", firstSeed);
    printCounts(counts);
}

TEST_F(RandomScript, KernelShowsWhatTheNaiveModelShowsAfterEachStep) { runScripts(1, 5000); }

TEST_F(RandomScriptLong, KernelShowsWhatTheNaiveModelShowsAfterEachStep) { runScripts(1000, 100000); }

// Seeds that have found a difference once.
TEST_F(RandomScript, SeedsThatFailedOncePass) {
    PhaseCounts counts;
    for (std::uint32_t const seed : {2U, 1000U, 5273U}) {
        std::string const problems = problemsOf(seed, kStepsOfAModel, counts);
        EXPECT_TRUE(problems.empty()) << problems;
    }
}

TEST_F(RandomScript, EveryOperationMeetsItsPhases) {
    PhaseCounts counts;
    for (std::uint32_t seed = 1; seed <= 5; ++seed) {
        static_cast<void>(problemsOf(seed, kStepsOfAModel, counts));
    }
    for (What what = What::Create; what <= What::Destroy; what = static_cast<What>(static_cast<int>(what) + 1)) {
        EXPECT_NE(0, counts[what]["transaction"]) << ZEL::oracle::nameOf(what);
        EXPECT_NE(0, counts[what]["nested"]) << ZEL::oracle::nameOf(what);
    }
    for (What what = What::Begin; what <= What::Listen; what = static_cast<What>(static_cast<int>(what) + 1)) {
        EXPECT_NE(0, counts[what]["idle"]) << ZEL::oracle::nameOf(what);
    }
    for (char const * const phase : {"modifier", "observer"}) {
        int met = 0;
        for (auto const & [what, phases] : counts) {
            met += phases.count(phase) != 0 ? 1 : 0;
        }
        EXPECT_LE(8, met) << phase;
    }
}

} // namespace
