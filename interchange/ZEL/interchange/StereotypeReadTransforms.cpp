#include <ZEL/interchange/StereotypeReadTransforms.h>
#include <ZEL/interchange/StereotypeTags.h>
#include <ZEL/interchange/StereotypeTyping.h>
#include <ZEL/metamodel/Constants.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/MagicDrawConstants.h>
#include <ZEL/serializer/reader/ReadFile.h>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::MagicDrawConstants;
using Serializer::makeAttribute;
using Serializer::XmiConstants;

namespace {

constexpr std::string_view kBase = "base_";
constexpr char kApplication[] = "StereotypeApplication";

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
        setOnNamespace([this](std::string const & prefix, std::string const & uri) {
            if (!prefix.empty()) {
                fPrefixes.try_emplace(uri, prefix);
            }
        });
        setOnRead([this](Serializer::ReadFile & file) { giveTypes(file); });
    }
}

StereotypeReadTransforms::~StereotypeReadTransforms() = default;

void StereotypeReadTransforms::giveTypes(Serializer::ReadFile & file) {
    if (!fHasAny) {
        return;
    }
    if (fTyping == nullptr) {
        fTyping = std::make_unique<StereotypeTyping>(file.models());
    }
    fTyping->type(file);
}

/// Whether the element is a value of the application around it, whose names are not those of its class here.
bool StereotypeReadTransforms::isValue(Context const & element) const {
    return !fFromFile.isEmpty() && !element.getRole().hasUri() && element.getParentRole() == fFromFile.getRole() &&
           element.getParentType() == fFromFile.getType();
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
    if (isValue(element)) {
        Context value = element;
        value.setSkipState(true);
        return value;
    }
    if (!isForeign(element)) {
        fHasAny = fHasAny || (element.getTypeUri() == fUri && element.getTypeName() == kApplication);
        return element;
    }
    fHasAny = true;
    fFromFile = element;
    fValues.clear();
    fTranslated = element;
    fTranslated.setType(fUri, kApplication);
    if (element.getParentUri() == XmiConstants::XMI_NS_URI) {
        fTranslated.setRole(fTranslated.getType());
    } else {
        fTranslated.setRole({}, fInstances);
    }
    ContextSequence sequence(fTranslated);
    sequence.addContext(makeAttribute(fTranslated, "profile", element.getUri()));
    if (auto const prefix = fPrefixes.find(element.getUri()); prefix != fPrefixes.end()) {
        sequence.addContext(makeAttribute(fTranslated, "prefix", prefix->second));
    }
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
