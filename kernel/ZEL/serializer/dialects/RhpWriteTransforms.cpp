#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/RhpConstants.h>
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

/// Leaves out the import of the library of primitive types: what it returns is equal to the element of the import and
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

} // namespace

RhpWriteTransforms::RhpWriteTransforms() : fUml(metaUri("uml")) {
    addHeadRules();
    addOmissionRules();
    addDroppedComponentRules();
    addTypeRules();
    addPortRules();
    addOperationRules();
    addElementRules();
    addGeneratingRules();
}

// --- the rules -------------------------------------------------------------------------------------------------------

Context RhpWriteTransforms::element(char const * parentType, char const * type, char const * role) const {
    Pattern pattern;
    if (parentType != nullptr) {
        pattern.parentType(fUml, parentType);
    }
    return pattern.type(fUml, type).role(role);
}

template <RhpWriteTransforms::Traversal traversal, class Note>
void RhpWriteTransforms::note(Context const & pattern, Note function) {
    addTransform(pattern, [this, function](Context const & context) -> ContextSequence {
        if (isSerializePhase() == (traversal == Traversal::Writing)) {
            function(context.getFirstValue());
        }
        return context;
    });
}

void RhpWriteTransforms::addStereotyped(Context const & pattern, Kind kind, std::string & current) {
    addTransform(pattern, [this, kind, &current](Context const & context) -> ContextSequence {
        current = context.getFirstValue();
        if (isSerializePhase()) {
            fStereotypes.add(kind, current);
        }
        return context;
    });
}

void RhpWriteTransforms::addHeadRules() {
    addTransform(Pattern().role(fUml, "Model"), [this](Context const & model) { return rewriteModel(model); });
    addTransform(Pattern().role(XmlConstants::XMLNS_ATTRIBUTE_NS_URI, "uml"), RhpTemplates::namespaces);
}

void RhpWriteTransforms::addOmissionRules() {
    std::string const & xmlns = XmlConstants::XMLNS_ATTRIBUTE_NS_URI;
    Context const patterns[] = {
        Pattern().role(XmiConstants::XMI_NS_URI, "Extension"),
        element("Component", "Connector", "ownedConnector"),
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
    addTransform(element("PackageImport", "Model", "importedPackage"), dropLibraryImport);
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
        note<Traversal::Collecting>(pattern, [this](std::string const & id) { fDroppedIds.insert(id); });
    }
    Context const nested = element("Component", "Component", "nestedClassifier");
    Context const packaged = element("Package", "Component", "packagedElement");
    addTransform(nested, [this](Context const & component) { return nestedComponent(component); });
    addTransform(packaged, [this](Context const & component) { return packagedComponent(component); });
    addPostTransform(nested, [this](Context const &) { return endPart(); });
    addPostTransform(packaged, [this](Context const &) { return endPart(); });
}

void RhpWriteTransforms::addTypeRules() {
    addTransform(element("Component", "DataType", "packagedElement"),
                 [this](Context const & dataType) { return moveDataType(dataType); });
    for (char const * const typed : {"Property", "Parameter", "Port"}) {
        addTransform(Pattern().parentType(fUml, typed).role("type"), leadToProfile);
    }
    addPreTransform(Pattern().parentType(fUml, "Port").role("type"),
                    [this](Context const &) { return emitMovedTypes(); });
}

void RhpWriteTransforms::addPortRules() {
    std::string const platform = metaUri("RhapsodyPlatform");
    // Ports of other classes get no stereotypes: what is applied to them must not go to the port before.
    note<Traversal::Collecting>(element(nullptr, "Port", "ownedAttribute"),
                                [this](std::string const &) { fCurrentPortId.clear(); });
    addStereotyped(element("Component", "Port", "ownedAttribute"), Kind::Port, fCurrentPortId);
    note<Traversal::Collecting>(Pattern().type(platform, "rhapsodyFlowPort").role("appliedStereotypeInstance"),
                                [this](std::string const &) { fStereotypes.addFlowPort(fCurrentPortId); });
    note<Traversal::Collecting>(
        Pattern().parentType(platform, "rhapsodyFlowPort").role("direction"),
        [this](std::string const & direction) { fStereotypes.setDirection(fCurrentPortId, direction); });
}

void RhpWriteTransforms::addOperationRules() {
    std::string const platform = metaUri("RhapsodyPlatform");
    note<Traversal::Writing>(element(nullptr, "Operation", "ownedOperation"),
                             [this](std::string const & id) { fStereotypes.addWrittenOperation(id); });
    note<Traversal::Writing>(element("Component", "Operation", "ownedOperation"), [this](std::string const & id) {
        fStereotypes.addWrittenOperation(id);
        fStereotypes.add(Kind::Operation, id);
    });
    // A behavior without a specification must not pass for one of the operation before.
    for (char const * const role : {"ownedBehavior", "nestedClassifier", "packagedElement"}) {
        note<Traversal::Collecting>(element(nullptr, "OpaqueBehavior", role),
                                    [this](std::string const &) { fCurrentBehaviorId.clear(); });
    }
    Context const ofComponent = element("Component", "OpaqueBehavior", "ownedBehavior");
    addTransform(ofComponent, [this](Context const & behavior) {
        fCurrentBehaviorId.clear();
        if (!isSerializePhase()) {
            fDataTypes.beginPart(std::nullopt);
        }
        return skipWhenWriting(behavior);
    });
    addPostTransform(ofComponent, [this](Context const &) { return endPart(); });
    note<Traversal::Collecting>(Pattern().parentType(fUml, "OpaqueBehavior").role("specification"),
                                [this](std::string const & id) { fCurrentBehaviorId = id; });
    note<Traversal::Collecting>(Pattern().parentType(fUml, "OpaqueBehavior").role("body"),
                                [this](std::string const & body) { fStereotypes.setBody(fCurrentBehaviorId, body); });
    note<Traversal::Collecting>(Pattern().parentType(platform, "rhapsodyComponent").role("constructor"),
                                [this](std::string const & id) { fStereotypes.add(Kind::Constructor, id); });
    note<Traversal::Collecting>(Pattern().parentType(platform, "rhapsodyComponent").role("destructor"),
                                [this](std::string const & id) { fStereotypes.add(Kind::Destructor, id); });
}

void RhpWriteTransforms::addElementRules() {
    std::pair<Context, Kind> const rows[] = {
        {element(nullptr, "Package", "packagedElement"), Kind::Package},
        {element(nullptr, "Component", "packagedElement"), Kind::Component},
        {element(nullptr, "DataType", "packagedElement"), Kind::DataType},
        {element("Component", "Property", "ownedAttribute"), Kind::Attribute},
        {element("Package", "Interface", "packagedElement"), Kind::Interface},
        {element("Package", "Dependency", "packagedElement"), Kind::Dependency},
        {element("Component", "InterfaceRealization", "interfaceRealization"), Kind::Realization},
    };
    for (auto const & [pattern, kind] : rows) {
        note<Traversal::Writing>(pattern, [this, kind = kind](std::string const & id) { fStereotypes.add(kind, id); });
    }

    // A class of a package, whose name directly follows; other classes get no stereotypes.
    note<Traversal::Collecting>(element(nullptr, "Class", "packagedElement"),
                                [this](std::string const &) { fCurrentClassId.clear(); });
    addStereotyped(element("Package", "Class", "packagedElement"), Kind::Class, fCurrentClassId);
    note<Traversal::Collecting>(Pattern().parentType(fUml, "Class").parentRole("packagedElement").role("name"),
                                [this](std::string const & name) { fStereotypes.setClassName(fCurrentClassId, name); });

    note<Traversal::Collecting>(
        Pattern().parentType(metaUri("RhapsodyPlatform"), "rhapsodyComponent").role("implementationProperty"),
        [this](std::string const & id) { fStereotypes.markReference(id); });
    note<Traversal::Collecting>(Pattern().parentType(metaUri("Tessel"), "algorithmicComponent").role("model"),
                                [this](std::string const & id) { fModelElementId = id; });
}

void RhpWriteTransforms::addGeneratingRules() {
    addPreTransform(element("Component", "TimeEvent", "packagedElement"), [this](Context const & timeEvent) {
        return isSerializePhase() ? RhpTemplates::stateMachine(fUml, timeEvent) : ContextSequence();
    });
    addPreTransform(Pattern().parentType(fUml, "Model"),
                    [this](Context const & child) { return emitProfileApplications(child); });
    addPostTransform(Pattern().role(fUml, "Model"), [this](Context const &) { return emitStereotypes(); });
}

// --- what they do ----------------------------------------------------------------------------------------------------

ContextSequence RhpWriteTransforms::rewriteModel(Context const & model) {
    fModelId = model.getFirstValue();
    Context rewritten = model;
    rewritten.setRole(Names::UML_2_1_1_NS_URI, model.getRoleName());
    return rewritten;
}

ContextSequence RhpWriteTransforms::skipWhenWriting(Context const & context) const {
    return isSerializePhase() ? skipped(context) : context;
}

ContextSequence RhpWriteTransforms::nestedComponent(Context const & component) {
    if (!isSerializePhase()) {
        fDataTypes.beginPart(component.getFirstValue());
        return component;
    }
    return fDroppedIds.count(component.getFirstValue()) != 0 ? skipped(component) : component;
}

ContextSequence RhpWriteTransforms::packagedComponent(Context const & component) {
    Context const kept = nestedComponent(component).front();
    if (isSerializePhase() && !kept.skipContext()) {
        fStereotypes.add(Kind::Component, component.getFirstValue());
    }
    return kept;
}

ContextSequence RhpWriteTransforms::endPart() {
    fDataTypes.endPart();
    return {};
}

ContextSequence RhpWriteTransforms::moveDataType(Context const & dataType) {
    if (isSerializePhase()) {
        return movesDataTypes() ? skipped(dataType) : dataType;
    }
    fDataTypes.beginType(dataType);
    // These beat all other rules, so that everything goes with the type until that has been left.
    addTransform(Context(), [this](Context const & context) { return moveContent(context); });
    addPostTransform(Context(), [this](Context const & context) { return endMovedElement(context); });
    return dataType;
}

ContextSequence RhpWriteTransforms::moveContent(Context const & context) {
    bool const isTypeOfProperty = context.getRoleName() == "type" && context.getParentTypeUri() == fUml &&
                                  context.getParentTypeName() == "Property";
    fDataTypes.add(isTypeOfProperty ? leadToProfile(context).front() : context);
    return context; // nothing is written now, and what lies in an element must find it as its parent
}

ContextSequence RhpWriteTransforms::endMovedElement(Context const & context) {
    if (context.isElement()) {
        fDataTypes.endElement(context.getFirstValue());
    }
    if (!fDataTypes.isInType()) {
        removeTransform(Context());
        removePostTransform(Context());
    }
    return {};
}

ContextSequence RhpWriteTransforms::emitMovedTypes() {
    if (!isSerializePhase()) {
        fDataTypes.notePort();
        return {};
    }
    removePreTransform(Pattern().parentType(fUml, "Port").role("type"));
    return movesDataTypes() ? fDataTypes.all() : ContextSequence();
}

bool RhpWriteTransforms::movesDataTypes() {
    if (!fMovesDataTypes.has_value()) {
        fMovesDataTypes = fDataTypes.havePlace(fDroppedIds);
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
    fStereotypes.add(Kind::Model, fModelId);
    return fStereotypes.build();
}

} // namespace ZEL::Serializer
