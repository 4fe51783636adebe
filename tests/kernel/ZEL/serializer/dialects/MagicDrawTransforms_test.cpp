#include "DialectTest.h"

#include <ZEL/serializer/dialects/MagicDrawReadTransforms.h>
#include <ZEL/serializer/dialects/MagicDrawWriteTransforms.h>
#include <ZEL/serializer/dialects/StandardReadTransforms.h>

#include <tuple>

namespace ZEL::tests {
namespace {

using Serializer::MagicDrawReadTransforms;
using Serializer::MagicDrawWriteTransforms;
using Serializer::StandardReadTransforms;

std::string const kMdUnits = "http://www.magicdraw.com/schemas/NumericTypes.xmi";
std::string const kMdProfile = "http://www.magicdraw.com/schemas/MagicDraw_Profile.xmi";
std::string const kMdStandard = "http://www.magicdraw.com/schemas/UML_Standard_Profile.xmi";
std::string const kUnits = "http://www.quillon.example/schemas/NumericTypes.xmi";

struct MagicDraw : DialectTest {
    /// An element with a name, of another file.
    static ContextSequence outside(std::string const & role, std::string const & typeUri, std::string const & type) {
        Context const parent = nested(role, typeUri, type);
        ContextSequence sequence = both(parent, attributeOf(parent, "", "name", "n"));
        sequence.addContext(attributeOf(parent, "", "href", "other.mdzip#1"));
        return sequence;
    }
};

TEST_F(MagicDraw, ReadingLeavesOutWhatIsTheToolsOwn) {
    std::vector<std::pair<ContextSequence, std::string>> const rows = {
        {element(kMdProfile, "DiagramInfo", "d"), "e! {" + kMdProfile + "}DiagramInfo=d"},
        {element(kMdProfile, "HyperlinkOwner", "h"), "e! {" + kMdProfile + "}HyperlinkOwner=h"},
        {element(kMdProfile, "modelLibrary", "m"), "e {" + kMdProfile + "}modelLibrary=m"},
        {element(kMdStandard, "modelLibrary", "m"), "e! {" + kMdStandard + "}modelLibrary=m"},
        // A package of another file goes with its attributes; anything else by a link is a link.
        {outside("packagedElement", kUml, "Package"), "e! {}packagedElement= a {}name=n"},
        {outside("ownedMember", kUml20, "Package"), "e! {}ownedMember= a {}name=n"},
        {outside("packagedElement", kUml20, "Package"), "r {}packagedElement=other.mdzip#1 a {}name=n"},
        {outside("ownedMember", kUml, "Package"), "r {}ownedMember=other.mdzip#1 a {}name=n"},
        {outside("packagedElement", kUml, "Class"), "r {}packagedElement=other.mdzip#1 a {}name=n"},
    };
    for (auto const & [input, expected] : rows) {
        EXPECT_EQ(textOf(StandardReadTransforms().apply(MagicDrawReadTransforms().apply(input))), expected);
    }
}

TEST_F(MagicDraw, WritingPutsTheLiteralInPlaceOfTheUnit) {
    // The first traversal reaches the units from the literals that they are applied to.
    Context const literal = nested("ownedLiteral", kUml, "EnumerationLiteral", "l1");
    Context const first = below(literal, nested("appliedStereotypeInstance", kUnits, "unit", "u1"));
    Context const second = below(literal, nested("appliedStereotypeInstance", kUnits, "unit", "u2"));
    Context const unit = element(kUnits, "unit", "u2");
    Context const quantity = element(kUnits, "scalarQuantity", "q");
    // Whether it is the second traversal; what goes in; what comes out.
    std::vector<std::tuple<bool, ContextSequence, std::string>> const rows = {
        {false, both(first, linkOf(first, "base_EnumerationLiteral", "l1")),
         "e {}appliedStereotypeInstance=u1 r {}base_EnumerationLiteral=l1"},
        {false, both(second, linkOf(second, "baseUnit", "u1")), "e {}appliedStereotypeInstance=u2 r {}baseUnit=u1"},
        {false, linkOf(quantity, "unit", "u1"), "r {}unit=u1"},
        {true, linkOf(quantity, "unit", "u1"), "r {}unit=l1"},
        {true, linkOf(quantity, "otherUnit", "u1"), "r {}otherUnit=u1"},
        {true, linkOf(unit, "baseUnit", "u1"), "r {}baseUnit=l1"},
        {true, linkOf(element(kMdUnits, "unit", "u2"), "baseUnit", "u1"), "r {}baseUnit=u1"},
        // What the second traversal meets teaches nothing more.
        {true, both(unit, linkOf(unit, "base_EnumerationLiteral", "l2")),
         "e {" + kUnits + "}unit=u2 r {}base_EnumerationLiteral=l2"},
        {true, linkOf(quantity, "unit", "u2"), "r {}unit=u2"},
    };
    MagicDrawWriteTransforms transforms;
    for (auto const & [isSecond, input, expected] : rows) {
        transforms.setSerializePhase(isSecond);
        EXPECT_EQ(textOf(transforms.apply(input)), expected);
    }
}

} // namespace
} // namespace ZEL::tests
