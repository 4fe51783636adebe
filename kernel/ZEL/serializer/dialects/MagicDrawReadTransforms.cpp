#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/Reference.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/MagicDrawConstants.h>
#include <ZEL/serializer/dialects/MagicDrawReadTransforms.h>

#include <utility>

namespace ZEL::Serializer {
namespace {

using Names = MagicDrawConstants;

/// Leaves out the element on which the attribute stands: what it returns is equal to that element and takes its place.
Context dropParent(Context const & attribute) { return skipped(parentOf(attribute)); }

/// Whether the property is one of those by which a profile's element names a unit.
bool namesUnit(Reference const & reference) {
    // Nearly all links end here: of a class only these few need the name.
    std::string const property = reference.property.getName();
    char const * const owner = property == "baseUnit" ? "NumericTypes.unit"
                               : property == "unit"   ? "NumericTypes.scalarQuantity"
                                                      : nullptr;
    return owner != nullptr && reference.object.getMetaClass().getQualifiedName().str() == owner;
}

} // namespace

MagicDrawReadTransforms::MagicDrawReadTransforms() {
    std::string const uml = NamespaceRegistry::instance()->getMetaUri("uml");

    addTransform(Pattern().role(Names::MD_NUMERIC_TYPES, "unit"), [this](Context const & context) -> ContextSequence {
        fUnit = context;
        return context;
    });
    addTransform(Pattern().parentRole(Names::MD_NUMERIC_TYPES, "unit").role("base_EnumerationLiteral"),
                 [this](Context const & context) { return noteLiteral(context); });
    addTransform(Pattern().role(Names::MD_PROFILE, "DiagramInfo"), skipped);
    addTransform(Pattern().role(Names::MD_PROFILE, "HyperlinkOwner"), skipped);
    addTransform(Pattern().role(Names::MD_STANDARD_PROFILE, "modelLibrary"), skipped);
    addTransform(Pattern().parentRole("packagedElement").parentType(uml, "Package").role("href"), dropParent);
    addTransform(Pattern().parentRole("ownedMember").parentType(XmiConstants::UML_2_0_NS_URI, "Package").role("href"),
                 dropParent);

    setOnCreate([this](Context const & context, ClassObject const & object) { enterUnit(context, object); });
    setResolveReference([this](std::string const &, Reference const & reference) { return leadToUnit(reference); });
}

ContextSequence MagicDrawReadTransforms::noteLiteral(Context const & context) {
    fLiteralByUnitId[std::exchange(fUnit, Context()).getFirstValue()] = context.getFirstValue();
    return context;
}

void MagicDrawReadTransforms::enterUnit(Context const & context, ClassObject const & object) {
    if (context.getUri() != Names::MD_NUMERIC_TYPES || context.getRoleName() != "unit") {
        return;
    }
    auto const found = fLiteralByUnitId.find(context.getFirstValue());
    if (found != fLiteralByUnitId.end()) {
        fUnitByLiteral[found->second] = object;
        // Links from other files name the file, too.
        fUnitByLiteral[object.getModelZEL().getUri().str() + "#" + found->second] = object;
        // The next unit of that id, or without one too, may have no literal: it must not find this one's.
        fLiteralByUnitId.erase(found);
    }
}

LinkedElement MagicDrawReadTransforms::leadToUnit(Reference const & reference) const {
    if (fUnitByLiteral.empty() || !namesUnit(reference)) {
        return {};
    }
    auto const found = fUnitByLiteral.find(reference.id);
    return found == fUnitByLiteral.end() ? LinkedElement()
                                         : LinkedElement{reference.object, reference.property, found->second};
}

} // namespace ZEL::Serializer
