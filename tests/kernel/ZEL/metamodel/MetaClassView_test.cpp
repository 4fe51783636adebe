#include "kernel/ZEL/metamodel/ModelFixture.h"

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaClassView.h>

namespace ZEL::tests {
namespace {

using internal::MetaClassView;
using internal::PropertyView;
using Role = PropertyView::Role;

struct MetaClassViewTest : ModelFixture {};

TEST_F(MetaClassViewTest, KnowsWhatAPropertyIsAndWhereAClassComesFrom) {
    std::shared_ptr<MetaClassView const> const package = MetaClassView::of(Package::MetaClass());
    EXPECT_EQ("Package", package->name());
    EXPECT_EQ(package->properties().size(), static_cast<std::size_t>(Package::MetaClass().getOwnedAttributes().size()));
    EXPECT_TRUE(package->inheritsFrom(Element::MetaClass().getImplementation()));
    EXPECT_FALSE(package->inheritsFrom(Comment::MetaClass().getImplementation()));
    EXPECT_FALSE(package->inheritsFrom(nullptr));
    EXPECT_FALSE(package->isModel());
    EXPECT_TRUE(MetaClassView::of(model.getMetaClass())->isModel());

    EXPECT_EQ(nullptr, package->find("nothing"));
    EXPECT_EQ(package->find("name"), package->find(Role::Name));
    EXPECT_EQ(Package::MetaClass().getProperty("name"), package->nameProperty());
    EXPECT_FALSE(MetaClassView::of(Comment::MetaClass())->nameProperty().isValid());
    EXPECT_TRUE(package->find("id")->isIdentity());
    EXPECT_TRUE(package->find("modelZEL")->isIdentity() && package->find("modelZEL")->isOfModel);
    EXPECT_TRUE(package->find("packagedElement")->isPart());
    EXPECT_TRUE(package->find("ownedElement")->isComposite && !package->find("ownedElement")->isPart());
    EXPECT_TRUE(package->find("nestingPackage")->isContainer);
    EXPECT_TRUE(package->find("owner")->isOfContainer);
    EXPECT_TRUE(package->find("name")->isDataType && !package->find("name")->isMany);
    EXPECT_RAISES(kInternalError, MetaClassView::of(ImmutableClass()));
}

TEST_F(MetaClassViewTest, KnowsWhereTheValuesOfGeneratedClassesLie) {
    std::shared_ptr<MetaClassView const> const property = MetaClassView::of(Property::MetaClass());
    EXPECT_STREQ("NamedElement", property->find("name")->descriptor->owner->name);
    EXPECT_NE(nullptr, property->find("name")->value);
    EXPECT_NE(nullptr, property->find("type")->links);
    for (char const * const elsewhere : {"id", "qualifiedName", "containerZEL"}) {
        PropertyView const * const found = property->find(elsewhere);
        EXPECT_TRUE(found->value == nullptr && found->links == nullptr) << elsewhere;
    }

    // What a class of a user's own says is no generated code's.
    Class const own = make<Class>();
    Property const ownName = make<Property>();
    change([&] {
        ownName.setName("name");
        own.getOwnedAttributes().push_back(ownName);
    });
    EXPECT_EQ(nullptr, MetaClassView::of(own)->descriptor());
    EXPECT_EQ(nullptr, MetaClassView::of(own)->find("name")->descriptor);
}

TEST_F(MetaClassViewTest, IsKeptUntilAMetamodelThatItWasReadFromChangesOrEnds) {
    Class const metaClass = make<Class>();
    Property const property = make<Property>();
    change([&] {
        property.setName("before");
        metaClass.getOwnedAttributes().push_back(property);
    });
    std::shared_ptr<MetaClassView const> const first = MetaClassView::of(metaClass);
    EXPECT_EQ(MetaClassView::of(metaClass), first);
    change([&] { make<Comment>().setBody("a metamodel may say more of itself"); });

    std::shared_ptr<MetaClassView const> const second = MetaClassView::of(metaClass);
    EXPECT_NE(nullptr, second->find("before"));
    open();
    property.setName("within");
    EXPECT_NE(nullptr, MetaClassView::of(metaClass)->find("within"));
    property.setName("after");
    EXPECT_NE(nullptr, MetaClassView::of(metaClass)->find("after"));
    model.commitTransaction();
    EXPECT_EQ(nullptr, MetaClassView::of(metaClass)->find("within"));
    model.undo();
    EXPECT_NE(nullptr, MetaClassView::of(metaClass)->find("before"));
    EXPECT_EQ("before", first->properties().at(0).name) << "who holds a view may go on reading it";

    int const before = Cleanup::numberOfActiveObjects();
    {
        MetaModel const other = openModel();
        Class const otherClass = Factory(other.getFactory()).createClass();
        other.commitTransaction();
        static_cast<void>(MetaClassView::of(otherClass));
    }
    static_cast<void>(Cleanup::printLeakedObjects(0x7FFFFFFF));
    EXPECT_EQ(before, Cleanup::numberOfActiveObjects()) << "a view keeps nothing alive";
}

} // namespace
} // namespace ZEL::tests
