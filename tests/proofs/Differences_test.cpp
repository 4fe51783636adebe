// What differs between two models, applied to the one, makes it the other.

#include "Changes.h"
#include "Copies.h"
#include "support/LongRuns.h"
#include "support/OneTree.h"

#include <ZEL/compare/Differences.h>

#include <gtest/gtest.h>

namespace ZEL::tests::proofs {
namespace {

using Compare::apply;
using Compare::diff;
using Compare::Differences;

class DifferencesOfModels : public testing::TestWithParam<Subject> {
protected:
    /// Makes one the other, and takes that back, by their differences, undo and the differences turned round.
    void expectApplied(Model const & from, Model const & to, Compare::MatchSettings const & settings = {}) {
        tidy(from);
        tidy(to);
        Differences const differences = diff(from, to, settings);
        Differences const back = differences.turnedRound();
        std::string const forth = told(differences);
        ASSERT_TRUE(apply(differences, from));
        EXPECT_EQ("", difference(from, to)) << forth << "\nleft over:\n" << told(diff(from, to, settings));
        expectOneTree(from);
        // By structure alone, equal trees can still be matched in another way.
        if (settings.ids != Compare::MatchSettings::Ids::Ignore) {
            EXPECT_TRUE(diff(from, to).empty());
        }
        from.getRootDeviant().undo();

        std::string const backwards = told(back);
        ASSERT_TRUE(apply(back, to));
        EXPECT_EQ("", difference(to, from)) << backwards << "\nleft over:\n" << told(diff(to, from, settings));
        to.getRootDeviant().undo();
    }

    void runSeed(unsigned int seed, int changeCount) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        Model const model = copyOf(randomModel(GetParam(), seed));
        EXPECT_TRUE(diff(model, copyOf(model)).empty());
        Model const copy = changedCopyOf(GetParam(), model, seed, changeCount);
        expectApplied(model, copy);
        Compare::MatchSettings withoutIds;
        withoutIds.ids = Compare::MatchSettings::Ids::Ignore;
        expectApplied(model, copy, withoutIds);
    }
};
class DifferencesOfModelsLong : public DifferencesOfModels {};

TEST_P(DifferencesOfModels, AppliedMakeTheOneTheOther) {
    for (unsigned int seed = 1; seed <= 10 && !HasFailure(); ++seed) {
        runSeed(seed, 3);
        runSeed(seed, 40);
    }
}

TEST_P(DifferencesOfModelsLong, AppliedMakeTheOneTheOther) {
    for (int i = 0; i < longRun(500) && !HasFailure(); ++i) {
        runSeed(1000U + static_cast<unsigned int>(i), 1 + i % 60);
    }
}

TEST_P(DifferencesOfModels, OfEachChangeOfOnePropertyMakeTheOneTheOther) {
    Model const model = copyOf(fullModel(GetParam(), 1));
    Model const copy = copyOf(model);
    Changes changes(GetParam(), copy, 1);
    std::vector<ClassObject> const content = contentOf(copy);
    std::set<std::string> done;
    for (ClassObject const & object : content) {
        for (ImmutableProperty const & property : object.getMetaClass().getOwnedAttributes()) {
            if (property.getName() == "modelZEL" || object == content.front()) {
                continue;
            }
            for (Change const & change : changes.of(object, property)) {
                std::string const what =
                    object.getMetaClass().getName().str() + "." + property.getName().str() + " " + change.what;
                if (!done.insert(what).second || HasFailure()) {
                    continue;
                }
                SCOPED_TRACE(what);
                Transaction transaction(copy.getRootDeviant(), "one change"); // cancelled at the end
                try {
                    change.make();
                } catch (Exception const &) {
                    continue; // refused, as an object in its own part is
                }
                Model const changed = copyOf(copy);
                tidy(model);
                tidy(changed);
                Differences const differences = diff(model, changed);
                std::string const forth = told(differences);
                ASSERT_TRUE(apply(differences, model));
                EXPECT_EQ("", difference(model, changed)) << forth;
                model.getRootDeviant().undo();
            }
        }
    }
    EXPECT_GT(done.size(), 20U);
}

INSTANTIATE_TEST_SUITE_P(Of, DifferencesOfModels, testing::ValuesIn(subjects()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Of, DifferencesOfModelsLong, testing::ValuesIn(subjects()), testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests::proofs
