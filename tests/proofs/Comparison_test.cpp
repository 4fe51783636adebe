// The comparator sees each single difference, and where it is.

#include "Changes.h"
#include "host/TemporaryFolder.h"
#include "support/LongRuns.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

namespace ZEL::tests::proofs {
namespace {

std::string nameOf(ImmutableClass const & metaClass, ImmutableProperty const & property) {
    return metaClass.getName().str() + "." + property.getName().str();
}

/// Objects of two models, and an object and its copy, differ in their model without being different. Where an object
/// stands is compared from above, by its position in the container; where the compared trees stand does not matter.
bool isCompared(ImmutableProperty const & property) {
    ImmutableProperty const opposite = property.getOpposite();
    bool const isContainer = opposite.isValid() && opposite.isComposite();
    return !property.isDerived() && !property.isReadOnly() && !isContainer && property.getName() != "modelZEL";
}

class Comparison : public testing::TestWithParam<Subject> {
protected:
    void runSeed(unsigned int seed) {
        TemporaryFolder const folder;
        Model const model = fullModel(GetParam(), seed);
        ASSERT_TRUE(Serializer::XmiWriter().write(folder.path("m.xmi"), model));
        copy = Model(Serializer::XmiReader().read(folder.path("m.xmi")));
        ASSERT_EQ("", difference(model, copy));
        original = model;
        originals = contentOf(model);
        copies = contentOf(copy);
        ASSERT_EQ(originals.size(), copies.size());
        Changes changes(GetParam(), copy, seed);
        for (ImmutableClass const & metaClass : concreteClasses(GetParam())) {
            for (ImmutableProperty const & property : metaClass.getOwnedAttributes()) {
                SCOPED_TRACE("seed " + std::to_string(seed) + ", " + nameOf(metaClass, property));
                changeInstances(changes, metaClass, property);
            }
        }
        EXPECT_EQ("", difference(model, copy)) << "after all has been cancelled";
    }

    /// Each kind of change once, on the first instances that it has an effect on.
    void changeInstances(Changes & changes, ImmutableClass const & metaClass, ImmutableProperty const & property) {
        if (!isCompared(property)) {
            return;
        }
        std::set<std::string> done;
        int tries = 12;
        for (std::size_t i = 0; i < copies.size() && tries > 0; ++i) {
            if (copies[i].getMetaClass() != metaClass) {
                continue;
            }
            --tries;
            for (Change const & change : changes.of(copies[i], property)) {
                // Parts that have changed places are compared with each other: the difference is in them, if any.
                bool const isAboutParts = property.isComposite() && ImmutableClass(property.getType()).isValid();
                if (change.what == "swap" && isAboutParts) {
                    continue;
                }
                if (done.count(change.what) == 0 && isSeen(copies[i], property, change)) {
                    done.insert(change.what);
                }
            }
        }
        fHasChanged[nameOf(metaClass, property)] |= !done.empty();
    }

    /// False if the change has no effect.
    bool isSeen(ClassObject const & object, ImmutableProperty const & property, Change const & change) {
        std::vector<Object> const before = object.get(property).toVector();
        copy.getRootDeviant().beginTransaction("one change");
        change.make();
        std::vector<Object> const after = object.get(property).toVector();
        bool const hasEffect = !std::equal(before.begin(), before.end(), after.begin(), after.end(), areAlike);
        if (hasEffect) {
            expectDifferenceAt(object, change);
        }
        copy.getRootDeviant().cancelTransaction();
        return hasEffect;
    }

    void expectDifferenceAt(ClassObject const & object, Change const & change) const {
        Comparator comparator(original, copy);
        EXPECT_FALSE(comparator.compare()) << change.what;
        std::vector<ClassObject> places = change.partners;
        places.push_back(object);
        auto const place = std::find(places.begin(), places.end(), comparator.getFailedSecond());
        EXPECT_NE(places.end(), place) << change.what << " found elsewhere";
        auto const index = std::find(copies.begin(), copies.end(), comparator.getFailedSecond()) - copies.begin();
        EXPECT_EQ(comparator.getFailedFirst(), originals.at(static_cast<std::size_t>(index)));
    }

    Model original;
    Model copy;
    std::vector<ClassObject> originals;
    std::vector<ClassObject> copies;
    std::map<std::string, bool> fHasChanged; ///< by class and property
};
class ComparisonLong : public Comparison {};

TEST_P(Comparison, FindsEachChangeOfOnePropertyAtItsObject) {
    for (unsigned int seed : {1U, 2U}) {
        runSeed(seed);
    }
    for (auto const & [property, hasChanged] : fHasChanged) {
        // The built-in metamodel has no stereotype that could be applied.
        bool const isPossible = !property.ends_with(".appliedStereotypeInstance") || GetParam().name != "zel";
        EXPECT_EQ(isPossible, hasChanged) << property;
    }
}

TEST_P(ComparisonLong, FindsEachChangeOfOnePropertyAtItsObject) {
    for (int i = 0; i < longRun(40) && !HasFailure(); ++i) {
        runSeed(1000U + static_cast<unsigned int>(i));
    }
}

INSTANTIATE_TEST_SUITE_P(Of, Comparison, testing::ValuesIn(subjects()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Of, ComparisonLong, testing::ValuesIn(subjects()), testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests::proofs
