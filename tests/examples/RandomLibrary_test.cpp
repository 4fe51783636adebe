// The tools on a metamodel that is not the built-in one: they know it by reflection alone.

#include "host/TemporaryFolder.h"

#include <ZEL/FactoryRegistry.h>
#include <ZEL/LeakChecker.h>
#include <ZEL/Transaction.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <gtest/gtest.h>
#include <library/MetaModelRegistration.h>

#include <map>
#include <string>
#include <vector>

namespace {

std::map<std::string, int> census(ZEL::ImmutableClassObject const & root) {
    std::map<std::string, int> counts;
    std::vector<ZEL::ImmutableClassObject> open{root};
    while (!open.empty()) {
        ZEL::ImmutableClassObject const object = open.back();
        open.pop_back();
        ++counts[object.getMetaClass().getName().str()];
        for (ZEL::ImmutableClassObject const & child : object.getContaineeZELs()) {
            open.push_back(child);
        }
    }
    return counts;
}

TEST(RandomLibrary, ModelsOfAnApplicationAreMadeWrittenAndReadBackEqual) {
    Library::registerMetaModel();
    TemporaryFolder const folder;
    ZEL::LeakChecker checker;
    checker.beginTrackLifetime();
    for (unsigned int seed = 1; seed <= 5; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        ZEL::Model const model = ZEL::FactoryRegistry::instance()->createModel("http://example.org/library/1.0");
        ZEL::Transaction transaction(model.getRootDeviant());
        ZEL::createRandomModel(model, 4, 5, 200, seed);
        transaction.commit();

        std::map<std::string, int> const counts = census(model);
        for (char const * name : {"House", "Book", "Copy", "Reader", "Loan"}) {
            EXPECT_EQ(counts.count(name), 1U) << name;
        }
        EXPECT_EQ(counts.count("Comment"), 1U) << "of the metamodel that this one builds on";
        EXPECT_EQ(counts.count("LibraryModel"), 1U);

        ASSERT_TRUE(ZEL::Serializer::XmiWriter().write(folder.path("library.xmi"), model));
        ZEL::Serializer::XmiReader reader;
        ZEL::Object const again = reader.read(folder.path("library.xmi"));
        EXPECT_TRUE(reader.report().isEmpty());
        EXPECT_TRUE(ZEL::compare(model, again));
    }
    EXPECT_NO_THROW(checker.endTrackLifetime());
}

} // namespace
