#include <ZEL/serializer/ObjectId.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/dialects/RhpConstants.h>
#include <ZEL/serializer/dialects/RhpTemplates.h>

#include <utility>

namespace ZEL::Serializer {
namespace {

using HASP::XmlConstants;
using Names = RhpConstants;

struct Namespace {
    char const * prefix;
    char const * uri;
};

constexpr Namespace kNamespaces[] = {
    {"xsi", XmlConstants::W3C_XML_SCHEMA_INSTANCE_NS_URI},
    {"PredefinedTypes_profile", Names::PREDEFINED_TYPES_NS_URI},
    {"PredefinedTypesCpp_profile", Names::PREDEFINED_TYPES_CPP_NS_URI},
    {"RHP", Names::RHP_NS_URI},
    {"RhapsodyProfile", Names::RHAPSODY_PROFILE_NS_URI},
    {"Standard", Names::STANDARD_PROFILE_NS_URI},
    {"ecore", Names::ECORE_NS_URI},
    {"Tessel", Names::TESSEL_NS_URI},
    {"CG", Names::CG_NS_URI},
    {"CPP_CG", Names::CPP_CG_NS_URI},
};

/// Where the tool finds what a namespace stands for.
constexpr struct {
    char const * uri;
    char const * location;
} kSchemaLocations[] = {
    {Names::PREDEFINED_TYPES_CPP_NS_URI, "RhapsodyProfiles.xml#_HRcKwWftEd250cs88OLFhA"},
    {Names::PREDEFINED_TYPES_NS_URI, "RhapsodyProfiles.xml#_HRcJvGftEd250cs88OLFhA"},
    {Names::RHP_NS_URI, "RhapsodyProfiles.xml#_HRcCumftEd250cs88OLFhA"},
    {Names::RHAPSODY_PROFILE_NS_URI, "RhapsodyProfiles.xml#_HRcBpGftEd250cs88OLFhA"},
    {Names::EMF_STANDARD_NS_URI, "http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_HM-YYWftEd250cs88OLFhA"},
    {Names::TESSEL_NS_URI, "RhapsodyProfiles.xml#_D6tGRHUNEd24iMNaL4DaEg"},
    {Names::CG_NS_URI, "RhapsodyProfiles.xml#_5L1wOH7FEd2DRp78gaPFRQ"},
    {Names::CPP_CG_NS_URI, "RhapsodyProfiles.xml#_5L1wVH7FEd2DRp78gaPFRQ"},
};

std::string schemaLocation() {
    std::string text;
    for (auto const & row : kSchemaLocations) {
        text.append(text.empty() ? "" : " ").append(row.uri).append(" ").append(row.location);
    }
    return text;
}

/// A profile, and the package that stands for it in the tool's own terms.
struct AppliedProfile {
    char const * profile;
    char const * package;
};

constexpr AppliedProfile kAppliedProfiles[] = {
    {"http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_0",
     "http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_HM-YYWftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_HRcCuGftEd250cs88OLFhA", "RhapsodyProfiles.xml#_HRcCumftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_HRcBomftEd250cs88OLFhA", "RhapsodyProfiles.xml#_HRcBpGftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_HRcJumftEd250cs88OLFhA", "RhapsodyProfiles.xml#_HRcJvGftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_5L1wNn7FEd2DRp78gaPFRQ", "RhapsodyProfiles.xml#_5L1wOH7FEd2DRp78gaPFRQ"},
    {"RhapsodyProfiles.xml#_5L1wUn7FEd2DRp78gaPFRQ", "RhapsodyProfiles.xml#_5L1wVH7FEd2DRp78gaPFRQ"},
};

QualifiedName local(std::string_view name) { return {XmlConstants::NULL_NS_URI, name}; }

/// A child element with a link into another file.
Context makeExternalLink(Context const & parent, std::string_view name, QualifiedName type, std::string value) {
    Context link;
    link.setRole(local(name));
    link.setType(type);
    link.setParent(parent);
    link.addReference(std::move(value));
    return link;
}

/// Elements with new ids, one within the other.
class Template {
public:
    explicit Template(std::string const & uml) : fUml(uml) {}

    /// `parent` is one that this returned before.
    Context element(Context const & parent, std::string_view name, char const * type,
                    std::string id = ObjectId::makeNew()) {
        Context made = makeElement(local(name), umlType(type), std::move(id));
        made.setParent(parent);
        fContexts.addContext(made);
        return made;
    }
    /// Beside `sibling`, which is no part of the template.
    Context elementBeside(Context const & sibling, std::string_view name, char const * type,
                          std::string id = ObjectId::makeNew()) {
        Context made = makeElement(local(name), umlType(type), std::move(id));
        made.setParentType(sibling.getParentType());
        made.setParentRole(sibling.getParentRole());
        fContexts.addContext(made);
        return made;
    }
    void attribute(Context const & parent, std::string_view name, std::string value) {
        fContexts.addContext(makeAttribute(parent, name, std::move(value)));
    }
    void reference(Context const & parent, std::string_view name, char const * type, std::string value) {
        fContexts.addContext(makeReference(parent, name, umlType(type), std::move(value)));
    }
    void add(Context context) { fContexts.addContext(std::move(context)); }

    [[nodiscard]] QualifiedName umlType(char const * name) const { return {fUml, name}; }
    [[nodiscard]] ContextSequence take() { return std::move(fContexts); }

private:
    std::string const & fUml;
    ContextSequence fContexts;
};

} // namespace

ContextSequence RhpTemplates::namespaces(Context const & umlDeclaration) {
    Context declaration = umlDeclaration;
    declaration.setFirstValue(Names::UML_2_1_1_NS_URI);
    ContextSequence sequence(declaration);
    for (Namespace const & row : kNamespaces) {
        declaration.setRole(XmlConstants::XMLNS_ATTRIBUTE_NS_URI, row.prefix);
        declaration.setAttribute(row.uri);
        sequence.addContext(declaration);
    }
    declaration.setRole(XmlConstants::W3C_XML_SCHEMA_INSTANCE_NS_URI, "schemaLocation");
    declaration.setAttribute(schemaLocation());
    sequence.addContext(declaration);
    return sequence;
}

ContextSequence RhpTemplates::profileApplications(std::string const & uml, std::string const & modelId,
                                                  Context const & element) {
    QualifiedName const extensionRole(XmiConstants::XMI_NS_URI, "Extension");
    Template result(uml);
    for (AppliedProfile const & applied : kAppliedProfiles) {
        Context const application = result.elementBeside(element, "profileApplication", "ProfileApplication", {});
        result.reference(application, "applyingPackage", "Package", modelId);
        result.add(makeExternalLink(application, "appliedProfile", result.umlType("Profile"), applied.profile));

        Context extension = makeElement(extensionRole, {}, {});
        extension.setParent(application);
        extension.setExtension(true);
        result.add(extension);
        result.attribute(extension, "extender", Names::ECORE_NS_URI);

        Context annotations = makeElement(local("eAnnotations"), {Names::ECORE_NS_URI, "EAnnotation"}, {});
        annotations.setParent(extension);
        result.add(annotations);
        result.attribute(annotations, "source", Names::EMF_UML_SOURCE);
        result.add(makeExternalLink(annotations, "references", {Names::ECORE_NS_URI, "EPackage"}, applied.package));
    }
    return result.take();
}

ContextSequence RhpTemplates::stateMachine(std::string const & uml, Context const & element) {
    std::string const stateId = ObjectId::makeNew();
    std::string const startId = ObjectId::makeNew();
    std::string const enteringId = ObjectId::makeNew();
    std::string const runningId = ObjectId::makeNew();
    std::string const eventId = ObjectId::makeNew();

    Template result(uml);
    Context const machine = result.elementBeside(element, "ownedBehavior", "StateMachine");
    result.attribute(machine, "name", "StateChartOfActiveObject");
    Context const region = result.element(machine, "region", "Region");
    result.attribute(region, "name", "ROOT");

    Context const state = result.element(region, "subvertex", "State", stateId);
    result.attribute(state, "name", "runState");
    result.reference(state, "outgoing", "Transition", runningId);
    result.reference(state, "incoming", "Transition", enteringId + " " + runningId);
    Context const start = result.element(region, "subvertex", "Pseudostate", startId);
    result.attribute(start, "name", "ROOT");
    result.reference(start, "outgoing", "Transition", enteringId);

    auto const addTransition = [&](std::string const & id, char const * name, std::string const & source) {
        Context const transition = result.element(region, "transition", "Transition", id);
        result.attribute(transition, "name", name);
        result.reference(transition, "target", "State", stateId);
        result.reference(transition, "source", "State", source);
        Context const effect = result.element(transition, "effect", "OpaqueBehavior");
        Context body = makeAttribute(effect, "body", "runAlgo();");
        body.setType(result.umlType("String"));
        result.add(std::move(body));
        return transition;
    };
    addTransition(enteringId, "0", startId);
    Context const running = addTransition(runningId, "1", stateId);
    Context const trigger = result.element(running, "trigger", "Trigger");
    result.reference(trigger, "event", "TimeEvent", eventId);

    Context const event = result.elementBeside(element, "packagedElement", "TimeEvent", eventId);
    result.attribute(event, "isRelative", "true");
    Context const when = result.element(event, "when", "LiteralString");
    result.attribute(when, "value", "10");
    return result.take();
}

} // namespace ZEL::Serializer
