// A metamodel that builds on an application's one.

#include "host/TemporaryFolder.h"

#include <ZEL/FactoryRegistry.h>
#include <ZEL/Logger.h>
#include <ZEL/MetaModelRegistry.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>

#include <archive/ArchiveFactory.h>
#include <archive/Archived.h>
#include <archive/MetaModelRegistration.h>
#include <archive/Paper.h>
#include <archive/Report.h>
#include <archive/Restored.h>
#include <gtest/gtest.h>
#include <library/Book.h>
#include <library/House.h>
#include <library/LibraryFactory.h>
#include <library/LibraryModel.h>
#include <library/MetaModelRegistration.h>

#include <string>

namespace archive {
namespace {

class ArchiveTest : public testing::Test {
protected:
    ArchiveTest() {
        ZEL::Logger::instance()->setDefaultHandlerLevel(ZEL::LogLevel::off);
        unregisterMetaModel();
        Library::unregisterMetaModel();
        registerMetaModel();
    }
    ~ArchiveTest() override { unregisterMetaModel(); }
};

TEST_F(ArchiveTest, IsRegisteredBehindWhatItBuildsOn) {
    EXPECT_TRUE(Library::getMetaModel().isValid());
    EXPECT_TRUE(getMetaModel().isValid());
    Library::LibraryModel const model = Library::LibraryFactory::createNewModel();
    for (char const * const uri :
         {"http://example.org/archive", "http://example.org/archive/2", "http://example.org/archive/old"}) {
        EXPECT_FALSE(ZEL::FactoryRegistry::instance()->createModel(uri).isValid()) << uri;
        EXPECT_TRUE(ArchiveFactory(ZEL::FactoryRegistry::instance()->createFactory(uri, model)).isValid()) << uri;
        EXPECT_EQ(ZEL::MetaModelRegistry::instance()->getModelFromUri(uri), getMetaModel()) << uri;
    }
}

TEST_F(ArchiveTest, ItsObjectsLiveInModelsOfTheOtherAndReachTheirFiles) {
    Library::LibraryModel const model = Library::LibraryFactory::createNewModel();
    Library::LibraryFactory const books(model.getFactory());
    ArchiveFactory const factory = ArchiveFactory::createNewFactory(model);
    model.beginTransaction("fill");
    Library::House const house = books.createHouse();
    model.getHouses().push_back(house);
    Library::Book const book = books.createBook();
    book.setHouse(house);
    Archived const archived = factory.createArchived();
    archived.setBase_NamedElement(house);
    archived.setPaper(Paper::Rag);
    Restored const restored = factory.createRestored();
    restored.setBase_NamedElement(book);
    restored.setHouse(house);
    Report const report = factory.createReport();
    report.setBody("new spine");
    restored.getReports().push_back(report);
    model.commitTransaction();
    EXPECT_EQ(archived.getRootModel(), model);
    EXPECT_TRUE(book.getRarities().empty()) << "of another stereotype";

    TemporaryFolder const folder;
    ASSERT_TRUE(ZEL::Serializer::XmiWriter().write(folder.path("archive.xmi"), model));
    ZEL::Serializer::XmiReader reader;
    Library::LibraryModel const again(reader.read(folder.path("archive.xmi")));
    ASSERT_TRUE(again.isValid());
    EXPECT_TRUE(reader.report().isEmpty());
    EXPECT_TRUE(ZEL::compare(model, again));
    Library::House const houseAgain = again.getHouses().at(0);
    EXPECT_EQ(Archived(houseAgain.getAppliedStereotypeInstances().at(0)).getPaper(), Paper::Rag);
    Restored const restoredAgain(houseAgain.getBooks().at(0).getAppliedStereotypeInstances().at(0));
    ASSERT_TRUE(restoredAgain.isValid());
    EXPECT_EQ(restoredAgain.getHouse(), houseAgain);
    EXPECT_EQ(restoredAgain.getReports().at(0).getBody(), "new spine");
}

} // namespace
} // namespace archive
