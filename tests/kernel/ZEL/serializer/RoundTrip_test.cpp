// What is written is read back equal, by all roads together. Random models do so in tests/proofs.

#include <ZEL/metamodel/Constants.h>

#include <host/TemporaryFolder.h>
#include <kernel/ZEL/tools/TestModel.h>

namespace ZEL::tests {
namespace {

using Serializer::Merger;
using Serializer::XmiReader;
using Serializer::XmiWriter;

MetaModel readModel(std::string const & file, std::unique_ptr<Merger> merger = nullptr) {
    XmiReader reader;
    reader.setMerger(merger.release());
    MetaModel const model(reader.read(file));
    EXPECT_TRUE(model.isValid());
    EXPECT_TRUE(reader.report().isEmpty());
    return model;
}

TEST(RoundTrip, TheBuiltInMetaModelIsReadBackEqual) {
    TemporaryFolder const folder;
    MetaModel const original(MetaModelRegistry::instance()->getModelFromUri(METAMODEL_URI));
    ASSERT_TRUE(XmiWriter().writeObject(folder.path("zel.xmi"), original));
    MetaModel const copy = readModel(folder.path("zel.xmi"));
    Transaction transaction(copy.getDeviant());
    copy.setUri(original.getUri()); // that of the file otherwise
    EXPECT_TRUE(compare(original, copy));
    readModel(folder.path("zel.xmi"), std::make_unique<Merger>(copy));
    copy.setUri(original.getUri());
    EXPECT_TRUE(compare(original, copy)) << "what is read into it again changes nothing";
}

// A tree as deep as this one leaves no room for recursion, nor the time for a walk to the top at each step.
TEST(RoundTrip, NestingIsBoundedByMemoryAloneOnEveryRoad) {
    TemporaryFolder const folder;
    std::string const file = folder.path("deep.xmi");
    TestModel sample("p");
    Package const bottom = sample.nestedPackage(100'000);
    EXPECT_RAISES("Cyclic composition", sample.top.setNestingPackage(bottom));
    sample.transaction.commit();
    ASSERT_TRUE(XmiWriter().write(file, sample.model));
    MetaModel const copy = readModel(file);
    EXPECT_TRUE(compare(sample.model, copy));

    readModel(file, std::make_unique<Merger>(copy));
    EXPECT_TRUE(compare(sample.model, copy));

    copy.beginTransaction("clone and destroy");
    ClassObject const clone = copy.getTopPackage().clone(copy);
    EXPECT_TRUE(compare(copy.getTopPackage(), clone));
    clone.destroy();
    copy.getTopPackage().destroy();
    copy.commitTransaction();
    EXPECT_FALSE(copy.getTopPackage().isValid());
    copy.undo();
    EXPECT_TRUE(compare(sample.model, copy));
}

} // namespace
} // namespace ZEL::tests
