#include <ZEL/NamespaceRegistry.h>
#include <ZEL/serializer/MagicDrawReadTransforms.h>
#include <ZEL/serializer/MagicDrawWriteTransforms.h>
#include <ZEL/serializer/StandardReadTransforms.h>

#include <gtest/gtest.h>
#include <kernel/ZEL/serializer/ContextText.h>

#include <string>
#include <vector>

namespace ZEL::Serializer {
namespace {

using Test::attributeOf;
using Test::below;
using Test::both;
using Test::element;
using Test::linkOf;
using Test::nested;
using Test::textOf;

std::string const kUml = "http://example.org/uml";
std::string const kUml20 = "http://schema.omg.org/spec/UML/2.0";
std::string const kMdUnits = "http://www.magicdraw.com/schemas/NumericTypes.xmi";
std::string const kMdProfile = "http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi";
std::string const kMdStandard = "http://www.magicdraw.com/schemas/UML_Standard_Profile.xmi";
std::string const kUnits = "http://www.quillon.example/schemas/NumericTypes.xmi";

/// With a metamodel of the prefix "uml" registered.
class MagicDraw : public testing::Test {
protected:
    MagicDraw() { NamespaceRegistry::instance()->bindMetaUriToPrefix(kUml, "uml"); }
    ~MagicDraw() override { NamespaceRegistry::instance()->unbindPrefixMetaUri(kUml); }
};

TEST_F(MagicDraw, ReadingLeavesOutWhatIsTheToolsOwn) {
    Context const unit = element(kMdUnits, "unit", "u");
    auto const withHref = [](Context const & parent) {
        ContextSequence sequence = both(parent, attributeOf(parent, "", "name", "n"));
        sequence.addContext(attributeOf(parent, "", "href", "other.mdzip#1"));
        return sequence;
    };
    struct Row {
        ContextSequence input;
        std::string expected;
    };
    std::vector<Row> const rows = {
        {both(unit, attributeOf(unit, "", "base_EnumerationLiteral", "l")),
         "e {" + kMdUnits + "}unit=u a {}base_EnumerationLiteral=l"},
        {element(kMdProfile, "DiagramInfo", "d"), "e! {" + kMdProfile + "}DiagramInfo=d"},
        {element(kMdProfile, "HyperlinkOwner", "h"), "e! {" + kMdProfile + "}HyperlinkOwner=h"},
        {element(kMdProfile, "Other", "o"), "e {" + kMdProfile + "}Other=o"},
        {element(kMdStandard, "modelLibrary", "m"), "e! {" + kMdStandard + "}modelLibrary=m"},
        {element(kMdProfile, "modelLibrary", "m"), "e {" + kMdProfile + "}modelLibrary=m"},
        // A package of another file goes with its attributes; anything else by a link is a link.
        {withHref(nested("packagedElement", kUml, "Package")), "e! {}packagedElement= a {}name=n"},
        {withHref(nested("ownedMember", kUml20, "Package")), "e! {}ownedMember= a {}name=n"},
        {withHref(nested("packagedElement", kUml20, "Package")), "r {}packagedElement=other.mdzip#1 a {}name=n"},
        {withHref(nested("ownedMember", kUml, "Package")), "r {}ownedMember=other.mdzip#1 a {}name=n"},
        {withHref(nested("packagedElement", kUml, "Class")), "r {}packagedElement=other.mdzip#1 a {}name=n"},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        MagicDrawReadTransforms dialect;
        StandardReadTransforms standard;
        EXPECT_EQ(textOf(standard.apply(dialect.apply(rows[i].input))), rows[i].expected) << "row " << i;
    }
}

TEST_F(MagicDraw, WritingPutsTheLiteralInPlaceOfTheUnit) {
    MagicDrawWriteTransforms transforms;
    // The first traversal reaches the units from the literals that they are applied to.
    Context const literal = nested("ownedLiteral", kUml, "EnumerationLiteral", "l1");
    Context const first = below(literal, nested("appliedStereotypeInstance", kUnits, "unit", "u1"));
    Context const second = below(literal, nested("appliedStereotypeInstance", kUnits, "unit", "u2"));
    EXPECT_EQ(textOf(transforms.apply(both(first, linkOf(first, "base_EnumerationLiteral", "l1")))),
              "e {}appliedStereotypeInstance=u1 r {}base_EnumerationLiteral=l1");
    EXPECT_EQ(textOf(transforms.apply(both(second, linkOf(second, "baseUnit", "u1")))),
              "e {}appliedStereotypeInstance=u2 r {}baseUnit=u1");

    // Before the second traversal nothing is rewritten.
    Context const quantity = element(kUnits, "scalarQuantity", "q");
    EXPECT_EQ(textOf(transforms.apply(linkOf(quantity, "unit", "u1"))), "r {}unit=u1");

    transforms.setSerializePhase(true);
    Context const unit = element(kUnits, "unit", "u2");
    Context outside = linkOf(quantity, "unit", "");
    outside.addReference("other.xmi#u9");
    outside.setFirstValue("other.xmi#u9");
    struct Row {
        Context input;
        std::string expected;
    };
    std::vector<Row> const rows = {
        {linkOf(quantity, "unit", "u1"), "r {}unit=l1"},
        {linkOf(quantity, "unit", "u2"), "r {}unit=u2"}, // stands on no literal
        {linkOf(quantity, "otherUnit", "u1"), "r {}otherUnit=u1"},
        {linkOf(unit, "baseUnit", "u1"), "r {}baseUnit=l1"},
        {linkOf(element(kMdUnits, "unit", "u2"), "baseUnit", "u1"), "r {}baseUnit=u1"},
        {outside, "r+ {}unit=other.xmi#u9"},
    };
    for (std::size_t i = 0; i < rows.size(); ++i) {
        EXPECT_EQ(textOf(transforms.apply(rows[i].input)), rows[i].expected) << "row " << i;
    }
    // What the second traversal meets teaches nothing more.
    static_cast<void>(transforms.apply(both(unit, linkOf(unit, "base_EnumerationLiteral", "l2"))));
    EXPECT_EQ(textOf(transforms.apply(linkOf(quantity, "unit", "u2"))), "r {}unit=u2");
}

} // namespace
} // namespace ZEL::Serializer
