#include "kernel/ZEL/metamodel/ModelFixture.h"

#include <ZEL/metamodel/MetaClassView.h>

namespace ZEL::tests {
namespace {

struct PropertyViewTest : ModelFixture {
    template <class H> static PropertyView const & viewOf(H const & object, char const * name) {
        return *MetaClassView::ofInstance(object).find(name);
    }
};

TEST_F(PropertyViewTest, ReadsSingleValuesWithoutBoxes) {
    Property const property = make<Property>();
    Class const type = make<Class>();
    EXPECT_EQ("", viewOf(property, "name").textOf(property));
    EXPECT_FALSE(viewOf(property, "name").valueOf(property).isSet());
    EXPECT_EQ(1, viewOf(property, "lower").integerOf(property));
    EXPECT_EQ(nullptr, viewOf(property, "type").linkOf(property).getImplementationWithoutAssert());
    change([&] {
        property.setName("isbn");
        property.setIsReadOnly(true);
        property.setLower(-2);
        property.setUpper(UnlimitedNatural(0xFFFFFFFFU));
        property.setType(type);
    });
    ImmutableTypedElement const general(property);
    EXPECT_EQ("isbn", viewOf(general, "name").textOf(general));
    EXPECT_TRUE(viewOf(property, "isReadOnly").booleanOf(property));
    EXPECT_EQ(-2, viewOf(property, "lower").integerOf(property));
    EXPECT_EQ(0xFFFFFFFFU, viewOf(property, "upper").valueOf(property).number());
    EXPECT_EQ(type, viewOf(property, "type").linkOf(property));
    EXPECT_EQ(property.getNameView().data(), viewOf(property, "name").textOf(property).data());

    MetaModel const draft = model.createDeviantWithName("draft");
    Property const drafted = property.asDeviant(draft);
    Transaction transaction(draft.getDeviant());
    drafted.setName("ean");
    transaction.commit();
    EXPECT_EQ("ean", viewOf(drafted, "name").textOf(drafted));
    EXPECT_EQ("isbn", viewOf(property, "name").textOf(property));
    EXPECT_EQ(draft.getDeviant(), viewOf(drafted, "type").linkOf(drafted).getDeviant());
}

TEST_F(PropertyViewTest, OfASuperclassReadsInstancesOfAllSubclasses) {
    auto const view = MetaClassView::of(NamedElement::MetaClass());
    PropertyView const & name = *view->find("name");
    Package const package = make<Package>();
    Class const metaClass = make<Class>();
    change([&] {
        package.setName("library");
        metaClass.setName("Book");
    });
    EXPECT_EQ("library", name.textOf(package));
    EXPECT_EQ("Book", name.textOf(metaClass));
    EXPECT_EQ("Book", viewOf(package, "name").textOf(metaClass));
    EXPECT_RAISES("'ZEL.Comment' [id = 4 ] has no such property 'name'", name.textOf(make<Comment>()));

    // One that the subclass has narrowed.
    ExtensionEnd const end = make<ExtensionEnd>();
    Stereotype const stereotype = make<Stereotype>();
    change([&] { end.setStereotypeType(stereotype); });
    auto const typed = MetaClassView::of(TypedElement::MetaClass());
    EXPECT_EQ(stereotype, typed->find("type")->linkOf(end));
    EXPECT_EQ(stereotype, end.getOne(typed->find("type")->property));
}

TEST_F(PropertyViewTest, IsFoundAsTheMetamodelIsAtTheTime) {
    Package const package = make<Package>();
    change([&] { package.setName("library"); });
    ImmutableProperty const reading = Package::MetaClass().getProperty("name");
    Property const name(reading.getImplementation(), reading.getDeviant());
    name.getDeviant().beginTransaction();
    for (char const * const text : {"title", "label"}) {
        name.setName(text);
        EXPECT_EQ(nullptr, MetaClassView::ofInstance(package).find("name"));
        EXPECT_NE(nullptr, MetaClassView::ofInstance(package).find(text));
        EXPECT_EQ("library", package.getOne(text).toString());
    }
    name.setName("name");
    name.getDeviant().commitTransaction();
    EXPECT_EQ("library", viewOf(package, "name").textOf(package));
    EXPECT_EQ("library", package.getOne("name").toString());
}

TEST_F(PropertyViewTest, SaysWhatCannotBeReadInPlace) {
    Package const package = make<Package>();
    struct Refused {
        char const * property;
        char const * expected;
        std::function<void(PropertyView const &)> read;
    };
    Refused const refused[] = {
        {"qualifiedName", "value", [&](auto const & view) { (void)view.textOf(package); }},
        {"packagedElement", "link", [&](auto const & view) { (void)view.linkOf(package); }},
        {"containerZEL", "link", [&](auto const & view) { (void)view.linkOf(package); }},
        {"name", "Boolean", [&](auto const & view) { (void)view.booleanOf(package); }},
        {"name", "Integer", [&](auto const & view) { (void)view.integerOf(package); }},
        {"visibility", "text", [&](auto const & view) { (void)view.textOf(package); }},
    };
    for (Refused const & each : refused) {
        PropertyView const & view = viewOf(package, each.property);
        std::string const text =
            "property '" + view.name + "' of 'ZEL.Package' [id = 2 ] has no stored " + each.expected;
        EXPECT_RAISES(text.c_str(), each.read(view));
    }
    EXPECT_TRUE(viewOf(package, "name").isInPlace());
    EXPECT_FALSE(viewOf(package, "qualifiedName").isInPlace() || viewOf(package, "packagedElement").isInPlace());

    PropertyView const & name = viewOf(package, "name");
    EXPECT_RAISES(kNullRef, (void)name.textOf(Package()));
    EXPECT_RAISES(kNullRef, (void)MetaClassView::ofInstance(Package()));
    NSInterface::ObjectIntf * const state = package.getImplementation()->getReadDeviant(package.getDeviant());
    auto * const asObject =
        static_cast<NSInterface::ClassObjectIntf *>(state->cast(NSInterface::ClassObjectIntf::classInfo()));
    EXPECT_RAISES(kInternalError, (void)MetaClassView::ofInstance(*asObject));
    model = MetaModel();
    EXPECT_RAISES("object accessed after its model has been destroyed", (void)name.textOf(package));
}

} // namespace
} // namespace ZEL::tests
