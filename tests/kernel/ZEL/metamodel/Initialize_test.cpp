#include "support/RunAgain.h"

#include <ZEL/ZEL.h>
#include <ZEL/base/Cleanup.h>
#include <ZEL/metamodel/GlobalXMIIdToObjectMap.h>

#include <gmock/gmock.h>

#include <cstdlib>

namespace ZEL::tests {
namespace {

char const * const kUris[] = {"http://schema.omg.org/spec/MOF/2.0", "http://schema.omg.org/spec/MOF/2.0/cmof.xml",
                              "http://schema.omg.org/spec/MOF/2.0/emof.xml"};

TEST(Initialize, HasHappenedAtLoadAndDoesNothingMore) {
    int const objects = Cleanup::numberOfActiveObjects();
    auto const created = Cleanup::creationNumber();
    std::size_t const keys = GlobalXMIIdToObjectMap::getMap().size();
    EXPECT_TRUE(initialize());
    EXPECT_TRUE(initialize());
    EXPECT_EQ(objects, Cleanup::numberOfActiveObjects());
    EXPECT_EQ(created, Cleanup::creationNumber());
    EXPECT_EQ(keys, GlobalXMIIdToObjectMap::getMap().size());
}

TEST(Initialize, BindsTheMetamodelToItsUrisAndPrefix) {
    for (char const * const uri : kUris) {
        EXPECT_EQ(MetaModel::MetaClass(), MetaModelRegistry::instance()->getModelFromUri(uri)) << uri;
        Model const model = FactoryRegistry::instance()->createModel(uri);
        ASSERT_TRUE(model.isValid()) << uri;
        EXPECT_EQ("ZEL.MetaModel", model.getFullyQualifiedOrcaTypeName().str());
        FactoryObject const factory = FactoryRegistry::instance()->createFactory(uri, model);
        ASSERT_TRUE(factory.isValid()) << uri;
        EXPECT_EQ("ZEL.Factory", factory.getFullyQualifiedOrcaTypeName().str());
        EXPECT_EQ(model, factory.getModelZEL());
    }
    EXPECT_EQ("ZEL", NamespaceRegistry::instance()->getPrefixFromMetaUri(kUris[0]));
    EXPECT_EQ(kUris[0], NamespaceRegistry::instance()->getMetaUri("ZEL"));
}

TEST(Initialize, CountsTheMetamodelAsPartOfTheProcess) {
    LeakChecker checker;
    checker.beginTrackLifetime();
    {
        MetaModel const model = Factory::createNewModel();
        static_cast<void>(Comment::MetaClass().getProperty(String("body")).getOwnedComments().size());
    }
    EXPECT_NO_THROW(checker.endTrackLifetime());
}

/// Used by the test below, in a process of its own.
TEST(Initialize, RunsWithAHandleThatOutlivesTheLibrary) {
    static MetaModel model;
    static Comment comment;
    if (std::getenv("ZEL_TEST_KEEP_HANDLES") != nullptr) {
        model = Factory::createNewModel();
        model.beginTransaction();
        comment = model.getFactoryFactory().createComment();
        model.commitTransaction();
    }
}

TEST(Initialize, IsUndoneAtProcessEndWithoutALeak) {
    auto const run = runAgain("Initialize.BindsTheMetamodelToItsUrisAndPrefix");
    EXPECT_EQ(0, run.status) << run.output;
    EXPECT_THAT(run.output, testing::HasSubstr("[  PASSED  ] 1 test"));
    EXPECT_THAT(run.output, testing::Not(testing::HasSubstr("leaked object")));
}

TEST(Initialize, LetsHandlesOutliveIt) {
    auto const run = runAgain("Initialize.RunsWithAHandleThatOutlivesTheLibrary", "ZEL_TEST_KEEP_HANDLES=1");
    EXPECT_EQ(0, run.status) << run.output;
    EXPECT_THAT(run.output, testing::HasSubstr("[  PASSED  ] 1 test"));
}

} // namespace
} // namespace ZEL::tests
