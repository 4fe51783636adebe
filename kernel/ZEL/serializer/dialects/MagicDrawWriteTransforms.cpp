#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/MagicDrawConstants.h>
#include <ZEL/serializer/dialects/MagicDrawWriteTransforms.h>

#include <utility>

namespace ZEL::Serializer {

MagicDrawWriteTransforms::MagicDrawWriteTransforms() {
    char const * const profile = MagicDrawConstants::ZEL_NUMERIC_TYPES;
    auto const unit = [this](Context const & context) { return noteUnit(context); };
    auto const literal = [this](Context const & context) { return noteLiteral(context); };
    auto const link = [this](Context const & context) { return rewriteLink(context); };

    addTransform(Pattern().role(profile, "unit"), unit);
    addTransform(Pattern().parentRole(profile, "scalarQuantity").role("unit"), link);
    addTransform(Pattern().parentRole(profile, "unit").role("baseUnit"), link);
    addTransform(Pattern().parentRole(profile, "unit").role("base_EnumerationLiteral"), literal);
    // In the first traversal a unit is reached from its literal and has the name of that property, not its own.
    addTransform(Pattern().type(profile, "unit").role("appliedStereotypeInstance"), unit);
    addTransform(Pattern().parentType(profile, "unit").role("base_EnumerationLiteral"), literal);
}

ContextSequence MagicDrawWriteTransforms::noteUnit(Context const & context) {
    fUnit = context;
    return context;
}

ContextSequence MagicDrawWriteTransforms::noteLiteral(Context const & context) {
    if (!isSerializePhase()) {
        fLiteralByUnitId[std::exchange(fUnit, Context()).getFirstValue()] = context.getFirstValue();
    }
    return context;
}

ContextSequence MagicDrawWriteTransforms::rewriteLink(Context const & context) {
    if (isSerializePhase()) {
        auto const found = fLiteralByUnitId.find(context.getFirstValue());
        if (found != fLiteralByUnitId.end()) {
            Context link = context;
            link.setReference(found->second);
            return link;
        }
    }
    return context;
}

} // namespace ZEL::Serializer
