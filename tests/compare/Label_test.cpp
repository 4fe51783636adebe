#include <ZEL/ZEL.h>
#include <ZEL/compare/Label.h>

#include <gtest/gtest.h>

namespace ZEL::Compare::tests {
namespace {

TEST(Label, NamesAnObjectWithWhatContainsItAndOneWithoutNameByThat) {
    MetaModel const model(FactoryRegistry::instance()->createModel("http://schema.omg.org/spec/MOF/2.0"));
    Factory const factory = model.getFactoryFactory();
    model.beginTransaction("a small model");
    model.setName("all");
    Package const library = factory.createPackage("library");
    model.setTopPackage(library);
    Class const book = factory.createClass();
    book.setName("Book");
    library.getPackagedElements().push_back(book);
    Comment const comment = factory.createComment();
    book.getOwnedComments().push_back(comment);
    Comment const loose = factory.createComment();
    model.commitTransaction();

    EXPECT_EQ(labelOf(book), "Class 'library.Book'");
    EXPECT_EQ(labelOf(comment), "Comment in Class 'library.Book'");
    EXPECT_EQ(labelOf(loose), "Comment");
    EXPECT_EQ(labelOf(model), "MetaModel 'all'");
    EXPECT_EQ(labelOf(ClassObject()), "nothing");
    EXPECT_EQ(nameOf(comment), "");
}

} // namespace
} // namespace ZEL::Compare::tests
