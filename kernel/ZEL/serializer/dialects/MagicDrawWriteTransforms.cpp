#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/MagicDrawConstants.h>
#include <ZEL/serializer/dialects/MagicDrawWriteTransforms.h>

#include <utility>

namespace ZEL::Serializer {

MagicDrawWriteTransforms::MagicDrawWriteTransforms() {
    auto const noteUnit = [this](Context const & context) -> ContextSequence {
        fUnit = context;
        return context;
    };
    auto const noteLiteral = [this](Context const & context) -> ContextSequence {
        if (!isSerializePhase()) {
            fLiteralByUnitId[std::exchange(fUnit, Context()).getFirstValue()] = context.getFirstValue();
        }
        return context;
    };
    auto const rewriteLink = [this](Context const & context) -> ContextSequence {
        auto const found = fLiteralByUnitId.find(context.getFirstValue());
        if (!isSerializePhase() || found == fLiteralByUnitId.end()) {
            return context;
        }
        Context link = context;
        link.setReference(found->second);
        return link;
    };

    char const * const profile = MagicDrawConstants::ZEL_NUMERIC_TYPES;
    addTransform(Pattern().role(profile, "unit"), noteUnit);
    addTransform(Pattern().parentRole(profile, "scalarQuantity").role("unit"), rewriteLink);
    addTransform(Pattern().parentRole(profile, "unit").role("baseUnit"), rewriteLink);
    addTransform(Pattern().parentRole(profile, "unit").role("base_EnumerationLiteral"), noteLiteral);
    // In the first traversal a unit is reached from its literal and has the name of that property, not its own.
    addTransform(Pattern().type(profile, "unit").role("appliedStereotypeInstance"), noteUnit);
    addTransform(Pattern().parentType(profile, "unit").role("base_EnumerationLiteral"), noteLiteral);
}

} // namespace ZEL::Serializer
