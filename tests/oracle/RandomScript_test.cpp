#include "Script.h"

#include <ZEL/LeakChecker.h>

#include <gtest/gtest.h>

#include <cstdio>

namespace {

using ZEL::oracle::PhaseCounts;
using ZEL::oracle::Script;

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

void runScripts(std::uint32_t firstSeed, int steps) {
    PhaseCounts counts;
    // What a process makes once is no leak.
    ASSERT_EQ("", problemsOf(firstSeed, 100, counts).substr(0, 0));
    for (std::uint32_t seed = firstSeed; steps > 0; ++seed, steps -= kStepsOfAModel) {
        std::string const problems = problemsOf(seed, std::min(steps, kStepsOfAModel), counts);
        ASSERT_EQ("", problems) << problems;
    }
    std::printf("seeds from %u\n", firstSeed);
    printCounts(counts);
}

TEST(RandomScript, ModelAndKernelShowTheSameAfterEachStep) { runScripts(1, 5000); }

TEST(RandomScriptLong, ModelAndKernelShowTheSameAfterEachStep) { runScripts(1000, 100000); }

} // namespace
