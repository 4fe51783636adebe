#include <ZEL/interchange/StereotypeReadTransforms.h>
#include <ZEL/interchange/StereotypeWriteTransforms.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/MagicDrawConstants.h>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::MagicDrawConstants;
using Serializer::makeAttribute;
using Serializer::XmiConstants;

namespace {

constexpr std::string_view kBase = "base_";

/// Whether the element stands where stereotypes do: at the top of the file, or in the model.
bool isInPlace(Context const & element) {
    return (element.getParentUri() == XmiConstants::XMI_NS_URI && element.getParentRoleName() == "XMI") ||
           element.getParentTypeName() == "Model";
}

/// Whether the element's dialect has a rule for it.
bool isOfDialect(Context const & element) {
    std::string const & name = element.getRoleName();
    return (element.getUri() == MagicDrawConstants::MD_PROFILE &&
            (name == "DiagramInfo" || name == "HyperlinkOwner")) ||
           (element.getUri() == MagicDrawConstants::MD_STANDARD_PROFILE && name == "modelLibrary");
}

bool isForeign(Context const & element) {
    return isInPlace(element) && element.getRole().hasUri() && element.getUri() != XmiConstants::XMI_NS_URI &&
           element.getType() == element.getRole() && !isOfDialect(element) &&
           NamespaceRegistry::instance()->getPrefixFromMetaUri(element.getUri()).empty() &&
           !MetaModelRegistry::instance()->getModelFromUri(element.getUri()).isValid();
}

} // namespace

StereotypeReadTransforms::StereotypeReadTransforms() : fUri(NamespaceRegistry::instance()->getMetaUri("Foreign")) {
    if (!fUri.empty()) {
        using Role = internal::PropertyView::Role;
        fInstances = internal::MetaClassView::of(ClassObject::MetaClass())->find(Role::StereotypeInstances)->name;
        addTransform(Context(), [this](Context const & context) { return translate(context); });
    }
}

ContextSequence StereotypeReadTransforms::translate(Context const & context) {
    if (context.isElement()) {
        return translateElement(context);
    }
    bool const isOfStereotype = !fTranslated.isEmpty() && context.getParentRole() == fFromFile.getRole() &&
                                context.getParentType() == fFromFile.getType();
    return isOfStereotype ? translateValue(context) : ContextSequence(context);
}

ContextSequence StereotypeReadTransforms::translateElement(Context const & element) {
    fTranslated = Context();
    if (!isForeign(element)) {
        return element;
    }
    fFromFile = element;
    fValues.clear();
    fTranslated = element;
    fTranslated.setType(fUri, "StereotypeApplication");
    if (element.getParentUri() == XmiConstants::XMI_NS_URI) {
        fTranslated.setRole(fTranslated.getType());
    } else {
        fTranslated.setRole({}, fInstances);
    }
    ContextSequence sequence(fTranslated);
    sequence.addContext(makeAttribute(fTranslated, "profile", element.getUri()));
    sequence.addContext(makeAttribute(fTranslated, "stereotype", element.getRoleName()));
    return sequence;
}

ContextSequence StereotypeReadTransforms::translateValue(Context const & attribute) {
    if (attribute.getUri() == XmiConstants::XMI_NS_URI) {
        Context kept = attribute; // for the reader to say that it has no place for it
        kept.setParent(fTranslated);
        return kept;
    }
    if (attribute.getRoleName().starts_with(kBase)) {
        ContextSequence sequence(makeAttribute(fTranslated, "base", attribute.getRoleName().substr(kBase.size())));
        sequence.addContext(makeAttribute(fTranslated, "base_Element", attribute.getFirstValue()));
        return sequence;
    }
    StereotypeValues::append(fValues, attribute.getRoleName(), attribute.getFirstValue());
    return makeAttribute(fTranslated, "values", fValues); // takes the place of the one before
}

} // namespace ZEL::Interchange
