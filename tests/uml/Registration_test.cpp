// How UML and its profiles come and go in one process.

#include "host/TemporaryFolder.h"

#include <ZEL/ZEL.h>
#include <ZEL/base/Cleanup.h>

#include <NumericTypes/MetaModelRegistration.h>
#include <NumericTypes/NumericTypesFactory.h>
#include <RhapsodyPlatform/MetaModelRegistration.h>
#include <gtest/gtest.h>
#include <uml/Class.h>
#include <uml/MetaModelRegistration.h>
#include <uml/Model.h>
#include <uml/UmlFactory.h>

namespace uml {
namespace {

constexpr char kUri[] = "http://schema.omg.org/spec/UML/2.1";
constexpr char kOldUri[] = "http://schema.omg.org/spec/UML/2.0";

/// Begins and ends without the metamodels.
class UmlRegistration : public testing::Test {
protected:
    UmlRegistration() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        takeBack();
    }
    ~UmlRegistration() override { takeBack(); }

    static void takeBack() {
        NumericTypes::unregisterMetaModel();
        RhapsodyPlatform::unregisterMetaModel();
        unregisterMetaModel();
    }
};

TEST_F(UmlRegistration, ItIsFoundUnderBothUrisAndNamedByTheFirst) {
    registerMetaModel();
    for (char const * const uri : {kUri, kOldUri}) {
        Model const model(ZEL::FactoryRegistry::instance()->createModel(uri));
        ASSERT_TRUE(model.isValid()) << uri;
        EXPECT_EQ(model.getMetaClass(), Model::MetaClass()) << uri;
        UmlFactory const factory(ZEL::FactoryRegistry::instance()->createFactory(uri, model));
        ASSERT_TRUE(factory.isValid()) << uri;
        EXPECT_EQ(ZEL::MetaModelRegistry::instance()->getModelFromUri(uri), getMetaModel()) << uri;
    }
    EXPECT_EQ(getMetaModel().getUri(), kUri);
    EXPECT_EQ(ZEL::NamespaceRegistry::instance()->getMetaUri("uml"), kUri);
}

TEST_F(UmlRegistration, AProfileComesWithWhatItBuildsOnAndHasNoModels) {
    NumericTypes::registerMetaModel();
    ASSERT_TRUE(getMetaModel().isValid());
    EXPECT_FALSE(RhapsodyPlatform::getMetaModel().isValid());
    Model const model = UmlFactory::createNewModel();
    for (char const * const uri :
         {"http://www.quillon.example/schemas/NumericTypes.xmi", "http://www.magicdraw.com/schemas/NumericTypes.xmi"}) {
        EXPECT_FALSE(ZEL::FactoryRegistry::instance()->createModel(uri).isValid()) << uri;
        EXPECT_TRUE(
            NumericTypes::NumericTypesFactory(ZEL::FactoryRegistry::instance()->createFactory(uri, model)).isValid())
            << uri;
    }
    EXPECT_EQ(ZEL::NamespaceRegistry::instance()->getMetaUri("NumericTypes"),
              "http://www.quillon.example/schemas/NumericTypes.xmi");
}

// Their models have no file, so the links between them and to the built-in metamodel stay whole and are found again. What
// an end in those would have to take up is refused: a read writes to no model but its own.
TEST_F(UmlRegistration, LinksOfWhatDescribesThemAreFoundAgain) {
    NumericTypes::registerMetaModel();
    TemporaryFolder const folder;
    std::string const path = folder.path("m.xmi");
    for (ZEL::ImmutableMetaModel const & metaModel : {getMetaModel(), NumericTypes::getMetaModel()}) {
        ASSERT_TRUE(ZEL::Serializer::XmiWriter().writeObject(path, metaModel));
        ZEL::Serializer::XmiReader reader;
        ASSERT_TRUE(reader.read(path).isValid());
        EXPECT_TRUE(reader.report().unresolvedReferences().empty()) << metaModel.getUri().str();
        EXPECT_TRUE(reader.report().unreadFiles().empty()) << metaModel.getUri().str();
    }
}

TEST_F(UmlRegistration, LeavesTheBuiltInMetamodelAndTheRegistriesAsTheyWere) {
    // What is made once for the process is made by now.
    RhapsodyPlatform::registerMetaModel();
    NumericTypes::registerMetaModel();
    takeBack();

    int const objects = ZEL::Cleanup::numberOfActiveObjects();
    int const subClasses = ZEL::Class::MetaClass().getSubClasses().size();
    for (int i = 0; i < 2; ++i) {
        RhapsodyPlatform::registerMetaModel();
        NumericTypes::registerMetaModel();
        NumericTypes::registerMetaModel();
        EXPECT_EQ(ZEL::Class::MetaClass().getSubClasses().size(), subClasses + 1) << "uml.Class";
        EXPECT_TRUE(ZEL::TypeInfoRegistry::hasType("RhapsodyPlatform.FlowDirection"));
        {
            Model const model = UmlFactory::createNewModel();
            model.beginTransaction("");
            model.getPackagedElements().push_back(UmlFactory(model.getFactory()).createClass());
            model.commitTransaction();
        }
        takeBack();
        for (char const * const uri : {kUri, kOldUri}) {
            EXPECT_FALSE(ZEL::FactoryRegistry::instance()->createModel(uri).isValid()) << uri;
            EXPECT_FALSE(ZEL::MetaModelRegistry::instance()->getModelFromUri(uri).isValid()) << uri;
        }
        EXPECT_FALSE(getMetaModel().isValid());
        EXPECT_FALSE(ZEL::TypeInfoRegistry::hasType("uml.PseudostateKind"));
        EXPECT_FALSE(ZEL::TypeInfoRegistry::hasType("RhapsodyPlatform.FlowDirection"));
        EXPECT_EQ(ZEL::Class::MetaClass().getSubClasses().size(), subClasses);
        EXPECT_EQ(ZEL::Cleanup::numberOfActiveObjects(), objects);
    }
}

} // namespace
} // namespace uml
