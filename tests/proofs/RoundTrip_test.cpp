// What is written is read back equal, and written the same again.

#include "Changes.h"
#include "host/TemporaryFolder.h"
#include "support/LongRuns.h"

#include <gtest/gtest.h>

#include <set>

namespace ZEL::tests::proofs {
namespace {

void expectEachIdOnce(std::string const & text) {
    static std::string const mark = "xmi:id=\"";
    std::set<std::string> seen;
    for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at)) {
        at += mark.size();
        std::string const id = text.substr(at, text.find('"', at) - at);
        EXPECT_TRUE(seen.insert(id).second) << "twice: " << id;
    }
    EXPECT_FALSE(seen.empty());
}

/// The names of the classes that the model has objects of.
std::set<std::string> expectRoundTrip(Subject const & subject, unsigned int seed, TemporaryFolder const & folder) {
    std::string const file = folder.path("m.xmi");
    Model const model = seed % 5 == 0 ? fullModel(subject, seed) : randomModel(subject, seed);
    EXPECT_TRUE(model.getUnparented().empty());
    EXPECT_TRUE(Serializer::XmiWriter().write(file, model));
    std::string const text = folder.content("m.xmi");
    expectEachIdOnce(text);

    Serializer::XmiReader reader;
    Model const copy(reader.read(file));
    EXPECT_TRUE(copy.isValid());
    EXPECT_TRUE(reader.report().isEmpty());
    EXPECT_EQ("", difference(model, copy));
    EXPECT_EQ(model.getUuidBase(), copy.getUuidBase());
    EXPECT_EQ(model.getNextIdValue(), copy.getNextIdValue());

    EXPECT_TRUE(Serializer::XmiWriter().write(file, copy));
    EXPECT_EQ(text, folder.content("m.xmi"));

    std::set<std::string> classes;
    for (ClassObject const & object : contentOf(model)) {
        classes.insert(object.getMetaClass().getName());
    }
    return classes;
}

class RoundTrip : public testing::TestWithParam<Subject> {
protected:
    /// What a process makes once, with the first model, is no leak.
    static void SetUpTestSuite() {
        for (Subject const & subject : subjects()) {
            static_cast<void>(expectRoundTrip(subject, 1, TemporaryFolder()));
        }
    }
    static std::set<std::string> runSeeds(unsigned int first, unsigned int last) {
        TemporaryFolder const folder;
        std::set<std::string> classes;
        for (unsigned int seed = first; seed <= last && !HasFailure(); ++seed) {
            SCOPED_TRACE("seed " + std::to_string(seed));
            LeakChecker leaks;
            leaks.beginTrackLifetime();
            classes.merge(expectRoundTrip(GetParam(), seed, folder));
            EXPECT_NO_THROW(leaks.endTrackLifetime());
        }
        return classes;
    }
};
class RoundTripLong : public RoundTrip {};

TEST_P(RoundTrip, RandomModelsAreReadEqualAndWrittenTheSameAgain) {
    std::set<std::string> const classes = runSeeds(1, 30);
    for (ImmutableClass const & metaClass : concreteClasses(GetParam())) {
        EXPECT_EQ(1U, classes.count(metaClass.getName())) << "never seen: " << metaClass.getName().str();
    }
    EXPECT_EQ(1U, classes.count("Comment")) << "of the metamodel that others build on";
}

TEST_P(RoundTripLong, RandomModelsAreReadEqualAndWrittenTheSameAgain) {
    runSeeds(1000, 1000U + static_cast<unsigned int>(longRun(600)) - 1);
}

INSTANTIATE_TEST_SUITE_P(Of, RoundTrip, testing::ValuesIn(subjects()), testing::PrintToStringParamName());
INSTANTIATE_TEST_SUITE_P(Of, RoundTripLong, testing::ValuesIn(subjects()), testing::PrintToStringParamName());

} // namespace
} // namespace ZEL::tests::proofs
