#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/RhpConstants.h>
#include <ZEL/serializer/dialects/RhpMovedDataTypes.h>
#include <ZEL/serializer/dialects/RhpStereotypes.h>
#include <ZEL/serializer/dialects/RhpTemplates.h>
#include <ZEL/serializer/dialects/RhpWriteTransforms.h>

#include <hasp_util/Uri.h>

namespace ZEL::Serializer {
namespace {

using HASP::XmlConstants;
using Names = RhpConstants;
using Kind = RhpStereotypes::Kind;

std::string metaUri(char const * prefix) { return NamespaceRegistry::instance()->getMetaUri(prefix); }

/// The text after "#"; empty if the value is no URI that has any.
std::string fragmentOf(std::string const & value) {
    HASP::Uri const uri(value);
    return uri.isValid() && uri.hasFragment() ? uri.getFragment() : std::string();
}

/// Leaves out the import of the library of primitive types: what is given is equal to the element of the import and
/// takes its place.
ContextSequence dropLibraryImport(Context const & link) {
    if (fragmentOf(link.getFirstValue()) != Names::LIBRARY_ID) {
        return link;
    }
    QualifiedName const role(XmlConstants::NULL_NS_URI, "packageImport");
    return skipped(makeElement(role, link.getParentType(), {}));
}

/// Leads a link to one of the library's types to the tool's own. The tool cannot follow any other link out of the file.
ContextSequence leadToProfile(Context const & link) {
    std::string const fragment = fragmentOf(link.getFirstValue());
    if (fragment.empty()) {
        return link;
    }
    Context lead;
    lead.setRole(link.getRole());
    lead.setType(link.getType());
    lead.setParentRole(link.getParentRole());
    lead.setParentType(link.getParentType());
    if (fragment == Names::LIBRARY_INTEGER_ID || fragment == Names::LIBRARY_UNLIMITED_ID) {
        lead.addReference(Names::PROFILE_INTEGER);
    } else if (fragment == Names::LIBRARY_BOOLEAN_ID) {
        lead.addReference(Names::PROFILE_BOOLEAN);
    }
    return lead;
}

/// A rule that changes nothing, but calls `note` with the value of the Context: in the first traversal.
template <class Note> RuleFunction whileCollecting(Transformer const & transformer, Note note) {
    return [&transformer, note](Context const & context) -> ContextSequence {
        if (!transformer.isSerializePhase()) {
            note(context.getFirstValue());
        }
        return context;
    };
}

/// The same in the second traversal.
template <class Note> RuleFunction whileWriting(Transformer const & transformer, Note note) {
    return [&transformer, note](Context const & context) -> ContextSequence {
        if (transformer.isSerializePhase()) {
            note(context.getFirstValue());
        }
        return context;
    };
}

/// For elements that get stereotype instances of one kind and need nothing else.
RuleFunction stereotype(Transformer const & transformer, RhpStereotypes & stereotypes, Kind kind) {
    return whileWriting(transformer,
                        [&stereotypes, kind](std::string const & id) { stereotypes.addWritten(kind, id); });
}

} // namespace

RhpWriteTransforms::RhpWriteTransforms()
    : fUml(metaUri("uml")),
      fDataTypes(std::make_unique<RhpMovedDataTypes>()),
      fStereotypes(std::make_unique<RhpStereotypes>()) {
    addHeadRules();
    addOmissionRules();
    addDroppedComponentRules();
    addTypeRules();
    addPortRules();
    addOperationRules();
    addElementRules();
    addGeneratingRules();
}

RhpWriteTransforms::~RhpWriteTransforms() = default;

// --- the rules ---------------------------------------------------------------------------------------------------------

void RhpWriteTransforms::addHeadRules() {
    addTransform(Pattern().role(fUml, "Model"), [this](Context const & model) { return rewriteModel(model); });
    addTransform(Pattern().role(XmlConstants::XMLNS_ATTRIBUTE_NS_URI, "uml"), RhpTemplates::namespaces);
}

void RhpWriteTransforms::addOmissionRules() {
    std::string const & xmlns = XmlConstants::XMLNS_ATTRIBUTE_NS_URI;
    Context const patterns[] = {
        Pattern().role(XmiConstants::XMI_NS_URI, "Extension"),
        Pattern().parentType(fUml, "Component").type(fUml, "Connector").role("ownedConnector"),
        Pattern().parentType(fUml, "Port").role("end"),
        Pattern().role(xmlns, "GenericComponent"),
        Pattern().role(xmlns, "Tessel"),
        Pattern().role(xmlns, "NumericTypes"),
        Pattern().parentType(fUml, "Operation").role("method"),
        Pattern().parentType(fUml, "Model").role("uri"),
    };
    for (Context const & pattern : patterns) {
        addTransform(pattern, [this](Context const & context) { return skipWhenWriting(context); });
    }
    addTransform(Pattern().parentType(fUml, "PackageImport").type(fUml, "Model").role("importedPackage"),
                 dropLibraryImport);
}

/// Components that stand for the source platform carry a stereotype that says so, and are left out.
void RhpWriteTransforms::addDroppedComponentRules() {
    std::string const platform = metaUri("GenericComponent");
    Context const patterns[] = {
        Pattern().parentType(platform, "algorithm").role("base_Property"),
        Pattern().parentType(platform, "adapter").role("base_Property"),
        Pattern().parentType(platform, "adapterComponent").role("base_Component"),
        Pattern().parentType(metaUri("Tessel"), "algorithmicComponent").role("base_Component"),
        Pattern().parentType(platform, "softwareComponent").role("base_Component"),
    };
    for (Context const & pattern : patterns) {
        addTransform(pattern, whileCollecting(*this, [this](std::string const & id) { fDroppedIds.insert(id); }));
    }
    Context const nested = Pattern().parentType(fUml, "Component").type(fUml, "Component").role("nestedClassifier");
    Context const packaged = Pattern().parentType(fUml, "Package").type(fUml, "Component").role("packagedElement");
    addTransform(nested, [this](Context const & component) { return nestedComponent(component); });
    addTransform(packaged, [this](Context const & component) { return packagedComponent(component); });
    for (Context const & pattern : {nested, packaged}) {
        addPostTransform(pattern, [this](Context const &) -> ContextSequence {
            fDataTypes->endPart();
            return {};
        });
    }
}

void RhpWriteTransforms::addTypeRules() {
    addTransform(Pattern().parentType(fUml, "Component").type(fUml, "DataType").role("packagedElement"),
                 [this](Context const & dataType) { return moveDataType(dataType); });
    for (char const * const typed : {"Property", "Parameter", "Port"}) {
        addTransform(Pattern().parentType(fUml, typed).role("type"), leadToProfile);
    }
    addPreTransform(Pattern().parentType(fUml, "Port").role("type"),
                    [this](Context const & type) { return emitMovedTypes(type); });
}

void RhpWriteTransforms::addPortRules() {
    std::string const platform = metaUri("RhapsodyPlatform");
    // Ports of other classes get no stereotypes: what is applied to them must not go to the port before.
    addTransform(Pattern().type(fUml, "Port").role("ownedAttribute"),
                 whileCollecting(*this, [this](std::string const &) { fCurrentPortId.clear(); }));
    addTransform(Pattern().parentType(fUml, "Component").type(fUml, "Port").role("ownedAttribute"),
                 [this](Context const & port) -> ContextSequence {
                     fCurrentPortId = port.getFirstValue();
                     if (isSerializePhase()) {
                         fStereotypes->addWritten(Kind::Port, fCurrentPortId);
                     }
                     return port;
                 });
    addTransform(Pattern().type(platform, "rhapsodyFlowPort").role("appliedStereotypeInstance"),
                 whileCollecting(*this, [this](std::string const &) { fStereotypes->addFlowPort(fCurrentPortId); }));
    addTransform(Pattern().parentType(platform, "rhapsodyFlowPort").role("direction"),
                 whileCollecting(*this, [this](std::string const & direction) {
                     fStereotypes->setDirection(fCurrentPortId, direction);
                 }));
}

void RhpWriteTransforms::addOperationRules() {
    std::string const platform = metaUri("RhapsodyPlatform");
    addTransform(Pattern().type(fUml, "Operation").role("ownedOperation"),
                 whileWriting(*this, [this](std::string const & id) { fStereotypes->addWrittenOperation(id); }));
    addTransform(Pattern().parentType(fUml, "Component").type(fUml, "Operation").role("ownedOperation"),
                 whileWriting(*this, [this](std::string const & id) {
                     fStereotypes->addWrittenOperation(id);
                     fStereotypes->addWritten(Kind::Operation, id);
                 }));
    // A behavior without a specification must not pass for one of the operation before.
    for (char const * const role : {"ownedBehavior", "nestedClassifier", "packagedElement"}) {
        addTransform(Pattern().type(fUml, "OpaqueBehavior").role(role),
                     whileCollecting(*this, [this](std::string const &) { fCurrentBehaviorId.clear(); }));
    }
    Context const ofComponent =
        Pattern().parentType(fUml, "Component").type(fUml, "OpaqueBehavior").role("ownedBehavior");
    addTransform(ofComponent, [this](Context const & behavior) {
        fCurrentBehaviorId.clear();
        if (!isSerializePhase()) {
            fDataTypes->beginOmission();
        }
        return skipWhenWriting(behavior);
    });
    addPostTransform(ofComponent, [this](Context const &) -> ContextSequence {
        fDataTypes->endPart();
        return {};
    });
    addTransform(Pattern().parentType(fUml, "OpaqueBehavior").role("specification"),
                 whileCollecting(*this, [this](std::string const & id) { fCurrentBehaviorId = id; }));
    addTransform(
        Pattern().parentType(fUml, "OpaqueBehavior").role("body"),
        whileCollecting(*this, [this](std::string const & body) { fStereotypes->setBody(fCurrentBehaviorId, body); }));
    addTransform(Pattern().parentType(platform, "rhapsodyComponent").role("constructor"),
                 whileCollecting(*this, [this](std::string const & id) { fStereotypes->markConstructor(id); }));
    addTransform(Pattern().parentType(platform, "rhapsodyComponent").role("destructor"),
                 whileCollecting(*this, [this](std::string const & id) { fStereotypes->markDestructor(id); }));
}

void RhpWriteTransforms::addElementRules() {
    auto const of = [this](Kind kind) { return stereotype(*this, *fStereotypes, kind); };
    addTransform(Pattern().type(fUml, "Package").role("packagedElement"), of(Kind::Package));
    addTransform(Pattern().type(fUml, "Component").role("packagedElement"), of(Kind::Component));
    addTransform(Pattern().type(fUml, "DataType").role("packagedElement"), of(Kind::DataType));
    addTransform(Pattern().parentType(fUml, "Component").type(fUml, "Property").role("ownedAttribute"),
                 of(Kind::Attribute));
    addTransform(Pattern().parentType(fUml, "Package").type(fUml, "Interface").role("packagedElement"),
                 of(Kind::Interface));
    addTransform(Pattern().parentType(fUml, "Package").type(fUml, "Dependency").role("packagedElement"),
                 of(Kind::Dependency));
    addTransform(
        Pattern().parentType(fUml, "Component").type(fUml, "InterfaceRealization").role("interfaceRealization"),
        of(Kind::Realization));

    // A class of a package, whose name directly follows; other classes get no stereotypes.
    addTransform(Pattern().type(fUml, "Class").role("packagedElement"),
                 whileCollecting(*this, [this](std::string const &) { fCurrentClassId.clear(); }));
    addTransform(Pattern().parentType(fUml, "Package").type(fUml, "Class").role("packagedElement"),
                 [this](Context const & element) -> ContextSequence {
                     fCurrentClassId = element.getFirstValue();
                     if (isSerializePhase()) {
                         fStereotypes->addWritten(Kind::Class, fCurrentClassId);
                     }
                     return element;
                 });
    addTransform(Pattern().parentType(fUml, "Class").parentRole("packagedElement").role("name"),
                 whileCollecting(
                     *this, [this](std::string const & name) { fStereotypes->setClassName(fCurrentClassId, name); }));

    addTransform(Pattern().parentType(metaUri("RhapsodyPlatform"), "rhapsodyComponent").role("implementationProperty"),
                 whileCollecting(*this, [this](std::string const & id) { fStereotypes->markReference(id); }));
    addTransform(Pattern().parentType(metaUri("Tessel"), "algorithmicComponent").role("model"),
                 whileCollecting(*this, [this](std::string const & id) { fModelElementId = id; }));
}

void RhpWriteTransforms::addGeneratingRules() {
    addPreTransform(Pattern().parentType(fUml, "Component").type(fUml, "TimeEvent").role("packagedElement"),
                    [this](Context const & timeEvent) {
                        return isSerializePhase() ? RhpTemplates::stateMachine(fUml, timeEvent) : ContextSequence();
                    });
    addPreTransform(Pattern().parentType(fUml, "Model"),
                    [this](Context const & child) { return emitProfileApplications(child); });
    addPostTransform(Pattern().role(fUml, "Model"), [this](Context const &) { return emitStereotypes(); });
}

// --- what they do ------------------------------------------------------------------------------------------------------

ContextSequence RhpWriteTransforms::rewriteModel(Context const & model) {
    fModelId = model.getFirstValue();
    Context element = model;
    element.setRole(Names::UML_2_1_1_NS_URI, model.getRoleName());
    return element;
}

ContextSequence RhpWriteTransforms::skipWhenWriting(Context const & context) const {
    return isSerializePhase() ? skipped(context) : context;
}

ContextSequence RhpWriteTransforms::nestedComponent(Context const & component) {
    if (!isSerializePhase()) {
        fDataTypes->beginComponent(component.getFirstValue());
        return component;
    }
    return fDroppedIds.count(component.getFirstValue()) != 0 ? skipped(component) : component;
}

ContextSequence RhpWriteTransforms::packagedComponent(Context const & component) {
    Context const kept = nestedComponent(component).front();
    if (isSerializePhase() && !kept.skipContext()) {
        fStereotypes->addWritten(Kind::Component, component.getFirstValue());
    }
    return kept;
}

ContextSequence RhpWriteTransforms::moveDataType(Context const & dataType) {
    if (isSerializePhase()) {
        return movesDataTypes() ? skipped(dataType) : dataType;
    }
    fDataTypes->beginType(dataType);
    // These beat all other rules, so that everything goes with the type until that has been left.
    addTransform(Context(), [this](Context const & context) { return moveContent(context); });
    addPostTransform(Context(), [this](Context const & context) { return endMovedElement(context); });
    return dataType;
}

ContextSequence RhpWriteTransforms::moveContent(Context const & context) {
    bool const isTypeOfProperty = context.getRoleName() == "type" && context.getParentTypeUri() == fUml &&
                                  context.getParentTypeName() == "Property";
    fDataTypes->add(isTypeOfProperty ? leadToProfile(context).front() : context);
    return context; // nothing is written now, and what lies in an element must find it as its parent
}

ContextSequence RhpWriteTransforms::endMovedElement(Context const & context) {
    if (context.isElement()) {
        fDataTypes->endElement(context.getFirstValue());
    }
    if (!fDataTypes->isInType()) {
        removeTransform(Context());
        removePostTransform(Context());
    }
    return {};
}

ContextSequence RhpWriteTransforms::emitMovedTypes(Context const & portType) {
    if (!isSerializePhase()) {
        fDataTypes->notePort();
        return {};
    }
    Context pattern;
    pattern.setParentType(portType.getParentType());
    pattern.setRole(portType.getRole());
    removePreTransform(pattern);
    return movesDataTypes() ? fDataTypes->all() : ContextSequence();
}

bool RhpWriteTransforms::movesDataTypes() {
    if (!fMovesDataTypes.has_value()) {
        fMovesDataTypes = fDataTypes->havePlace(fDroppedIds);
    }
    return *fMovesDataTypes;
}

ContextSequence RhpWriteTransforms::emitProfileApplications(Context const & child) {
    if (!isSerializePhase() || !child.isElement()) {
        return {};
    }
    removePreTransform(Pattern().parentType(fUml, "Model"));
    return RhpTemplates::profileApplications(fUml, fModelId, child);
}

ContextSequence RhpWriteTransforms::emitStereotypes() {
    if (!isSerializePhase()) {
        return {};
    }
    // What the generated instances replace comes next.
    addTransform(Context(), [this](Context const & context) { return skipWhenWriting(context); });
    fStereotypes->addWritten(Kind::Model, fModelId);
    return fStereotypes->build();
}

} // namespace ZEL::Serializer
