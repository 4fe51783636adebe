// What is written is read back equal, by all roads together.

#include "WriterFixture.h"

#include <ZEL/Integer.h>
#include <ZEL/MetaModelRegistry.h>
#include <ZEL/serializer/Merger.h>
#include <ZEL/serializer/XmiReader.h>
#include <ZEL/serializer/XmiWriter.h>
#include <ZEL/tools/Comparator.h>
#include <ZEL/tools/RandomModelGenerator.h>

#include <memory>
#include <regex>
#include <set>

namespace ZEL::Serializer {
namespace {

MetaModel readModel(std::string const & file, std::unique_ptr<Merger> merger = nullptr) {
    XmiReader reader;
    if (merger != nullptr) {
        reader.setMerger(merger.release());
    }
    MetaModel const model(reader.read(file));
    EXPECT_TRUE(model.isValid());
    EXPECT_TRUE(reader.report().isEmpty());
    return model;
}

/// Where two models differ, for the message of a failed expectation.
std::string difference(ImmutableObject const & a, ImmutableObject const & b) {
    Comparator comparator(a, b);
    if (comparator.compare()) {
        return "";
    }
    ImmutableClassObject const first = comparator.getFailedFirst();
    return first.isValid() ? first.getFullyQualifiedOrcaTypeName().str() + " " + first.getSiid().str() : "the models";
}

void expectEachIdOnce(std::string const & text) {
    std::set<std::string> seen;
    std::regex const pattern("xmi:id=\"([^\"]*)\"");
    for (std::sregex_iterator match(text.begin(), text.end(), pattern), end; match != end; ++match) {
        EXPECT_TRUE(seen.insert((*match)[1]).second) << "twice: " << (*match)[1];
    }
}

/// Seed, depth, breadth and number of associations of a random model.
struct Shape {
    unsigned int seed;
    int depth;
    int breadth;
    int associations;
};

class RandomModels : public testing::TestWithParam<Shape> {};

TEST_P(RandomModels, AreReadEqualAndWrittenTheSameAgain) {
    Shape const shape = GetParam();
    TemporaryFolder const folder;
    std::string const file = folder.path("m.xmi");
    MetaModel const model(FactoryRegistry::instance()->createModel(METAMODEL_URI));
    {
        Transaction transaction(model.getDeviant());
        Package const top = model.getFactoryFactory().createPackage("top");
        model.setTopPackage(top);
        createRandomModel(top, shape.depth, shape.breadth, shape.associations, shape.seed);
        transaction.commit();
    }
    ASSERT_TRUE(model.getUnparented().empty());
    ASSERT_TRUE(XmiWriter().write(file, model));
    std::string const text = folder.content("m.xmi");
    expectEachIdOnce(text);

    MetaModel const copy = readModel(file);
    EXPECT_EQ("", difference(model, copy));
    EXPECT_EQ(model.getUuidBase(), copy.getUuidBase());
    EXPECT_EQ(model.getNextIdValue(), copy.getNextIdValue());

    ASSERT_TRUE(XmiWriter().write(file, copy));
    EXPECT_EQ(text, folder.content("m.xmi"));
}

INSTANTIATE_TEST_SUITE_P(Shapes, RandomModels,
                         testing::Values(Shape{1, 2, 3, 20}, Shape{2, 3, 4, 100}, Shape{3, 4, 4, 300},
                                         Shape{4, 6, 2, 100}, Shape{5, 1, 60, 200}, Shape{6, 8, 2, 400},
                                         Shape{7, 3, 6, 50}, Shape{8, 5, 3, 800}));

TEST(RoundTrip, TheBuiltInMetaModelIsReadBackEqual) {
    TemporaryFolder const folder;
    MetaModel const original(MetaModelRegistry::instance()->getModelFromUri(METAMODEL_URI));
    ASSERT_TRUE(XmiWriter().writeObject(folder.path("zel.xmi"), original));
    MetaModel const copy = readModel(folder.path("zel.xmi"));
    Transaction transaction(copy.getDeviant());
    copy.setUri(original.getUri()); // that of the file otherwise
    EXPECT_EQ("", difference(original, copy));
    EXPECT_EQ(42, [&copy] {
        int classes = 1; // the metamodel itself is the class of models
        for (ImmutableObject const & type : copy.getTopPackage().getOwnedTypes()) {
            classes += ImmutableClass(type).isValid() ? 1 : 0;
        }
        return classes;
    }());
}

TEST(RoundTrip, NestingIsBoundedByMemoryAloneOnEveryRoad) {
    constexpr int kDepth = 100'000;
    TemporaryFolder const folder;
    std::string const file = folder.path("deep.xmi");
    MetaModel const model(FactoryRegistry::instance()->createModel(METAMODEL_URI));
    {
        Transaction transaction(model.getDeviant());
        Package package = model.getFactoryFactory().createPackage("p");
        model.setTopPackage(package);
        for (int i = 0; i < kDepth; ++i) {
            Package const inner = model.getFactoryFactory().createPackage("p");
            package.getPackagedElements().push_back(inner);
            package = inner;
        }
        transaction.commit();
    }
    ASSERT_TRUE(XmiWriter().write(file, model));
    MetaModel const copy = readModel(file);
    EXPECT_TRUE(compare(model, copy));

    static_cast<void>(readModel(file, std::make_unique<Merger>(copy)));
    EXPECT_TRUE(compare(model, copy));

    copy.beginTransaction("clone and destroy");
    ClassObject const clone = copy.getTopPackage().clone(copy);
    EXPECT_TRUE(compare(copy.getTopPackage(), clone));
    clone.destroy();
    copy.getTopPackage().destroy();
    copy.commitTransaction();
    EXPECT_FALSE(copy.getTopPackage().isValid());
    copy.undo();
    EXPECT_TRUE(compare(model, copy));
}

} // namespace
} // namespace ZEL::Serializer
