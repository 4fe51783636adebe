// What comes of two changes of one model.

#include "Changes.h"
#include "Copies.h"
#include "support/LongRuns.h"
#include "support/OneTree.h"

#include <ZEL/compare/Merge.h>
#include <ZEL/compare/Sentence.h>

#include <gtest/gtest.h>

namespace ZEL::tests::proofs {
namespace {

using Compare::Conflict;
using Compare::diff;
using Compare::Merge;
using Compare::Resolution;

std::string storyOf(Merge const & merge) {
    std::string lines = "ours:\n" + told(merge.ours()) + "theirs:\n" + told(merge.theirs());
    for (Conflict const & conflict : merge.conflicts()) {
        lines += "conflict " + sentenceOf(conflict) + "\n";
    }
    return lines;
}

class MergeOfModels : public testing::TestWithParam<Subject> {
protected:
    struct Result {
        Model model;
        std::size_t conflicts;
        std::string story;
    };

    static Result merged(Model const & base, Model const & ours, Model const & theirs) {
        Result result{copyOf(ours), 0, {}};
        tidy(ours);
        tidy(theirs);
        Merge const merge(base, result.model, theirs);
        result.conflicts = merge.conflicts().size();
        result.story = storyOf(merge);
        EXPECT_TRUE(merge.apply(result.model)) << result.story;
        expectOneTree(result.model);
        return result;
    }

    void runSeed(unsigned int seed, int changeCount) {
        SCOPED_TRACE("seed " + std::to_string(seed) + ", changes " + std::to_string(changeCount));
        Model const base = copyOf(randomModel(GetParam(), seed));
        Model const ours = changedCopyOf(GetParam(), base, seed, changeCount);
        Model const theirs = changedCopyOf(GetParam(), base, seed + 77777U, changeCount);
        tidy(base);

        Model const untouched = copyOf(base);
        tidy(base);
        EXPECT_EQ("", difference(merged(base, untouched, theirs).model, theirs)) << "nothing is done by ours";
        EXPECT_EQ("", difference(merged(base, ours, untouched).model, ours)) << "nothing is done by theirs";

        Result const forth = merged(base, ours, theirs);
        Result const back = merged(base, theirs, ours);
        EXPECT_EQ(forth.conflicts == 0, back.conflicts == 0) << forth.story << "\n" << back.story;
        if (forth.conflicts == 0 && back.conflicts == 0) {
            EXPECT_EQ("", difference(forth.model, back.model)) << forth.story << "\nbetween:\n"
                                                               << told(diff(forth.model, back.model));
            ++fWithoutConflicts;
            return;
        }
        Model const model = copyOf(ours);
        tidy(ours);
        Merge merge(base, model, theirs);
        std::string const story = storyOf(merge);
        merge.resolve([](Conflict const &) { return Resolution::Theirs; });
        EXPECT_TRUE(merge.isResolved());
        ASSERT_TRUE(merge.apply(model)) << story;
        expectOneTree(model);
        model.getRootDeviant().undo();
        EXPECT_EQ("", difference(model, ours)) << story;
    }

    int fWithoutConflicts = 0;
};
class MergeOfModelsLong : public MergeOfModels {};

TEST_P(MergeOfModels, KeepsWhatBothSidesDoInEitherOrder) {
    for (unsigned int seed = 1; seed <= 20 && !HasFailure(); ++seed) {
        runSeed(seed, 2);
        runSeed(seed, 25);
    }
    EXPECT_GT(fWithoutConflicts, 10);
}

TEST_P(MergeOfModelsLong, KeepsWhatBothSidesDoInEitherOrder) {
    for (int i = 0; i < longRun(5000) && !HasFailure(); ++i) {
        EXPECT_NO_THROW(runSeed(1000U + static_cast<unsigned int>(i), 1 + i % 30)) << i;
    }
}

INSTANTIATE_TEST_SUITE_P(Of, MergeOfModels, testing::ValuesIn(subjects()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Of, MergeOfModelsLong, testing::ValuesIn(subjects()), testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests::proofs
