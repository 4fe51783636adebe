// What is written is read back equal, by all roads together. Random models do so in tests/proofs.

#include <ZEL/metamodel/Constants.h>

#include <host/TemporaryFolder.h>
#include <kernel/ZEL/tools/TestModel.h>

#include <memory>

namespace ZEL::tests {
namespace {

using Serializer::Merger;
using Serializer::XmiReader;
using Serializer::XmiWriter;

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

TEST(RoundTrip, TheBuiltInMetaModelIsReadBackEqual) {
    TemporaryFolder const folder;
    MetaModel const original(MetaModelRegistry::instance()->getModelFromUri(METAMODEL_URI));
    ASSERT_TRUE(XmiWriter().writeObject(folder.path("zel.xmi"), original));
    MetaModel const copy = readModel(folder.path("zel.xmi"));
    Transaction transaction(copy.getDeviant());
    copy.setUri(original.getUri()); // that of the file otherwise
    EXPECT_EQ("", difference(original, copy));
    readModel(folder.path("zel.xmi"), std::make_unique<Merger>(copy));
    copy.setUri(original.getUri());
    EXPECT_EQ("", difference(original, copy)) << "what is read into it again changes nothing";
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

    readModel(file, std::make_unique<Merger>(copy));
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
} // namespace ZEL::tests
