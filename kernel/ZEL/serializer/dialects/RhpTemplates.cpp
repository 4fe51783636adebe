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

/// By prefix.
constexpr std::pair<char const *, char const *> kNamespaces[] = {
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

/// By namespace: where the tool finds what it stands for.
constexpr std::pair<char const *, char const *> kSchemaLocations[] = {
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
    for (auto const & [uri, location] : kSchemaLocations) {
        text.append(text.empty() ? "" : " ").append(uri).append(" ").append(location);
    }
    return text;
}

/// Profiles, and the packages that stand for them in the tool's own terms.
constexpr std::pair<char const *, char const *> kAppliedProfiles[] = {
    {"http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_0",
     "http://schema.omg.org/spec/UML/2.1.1/StandardProfileL2.xmi#_HM-YYWftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_HRcCuGftEd250cs88OLFhA", "RhapsodyProfiles.xml#_HRcCumftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_HRcBomftEd250cs88OLFhA", "RhapsodyProfiles.xml#_HRcBpGftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_HRcJumftEd250cs88OLFhA", "RhapsodyProfiles.xml#_HRcJvGftEd250cs88OLFhA"},
    {"RhapsodyProfiles.xml#_5L1wNn7FEd2DRp78gaPFRQ", "RhapsodyProfiles.xml#_5L1wOH7FEd2DRp78gaPFRQ"},
    {"RhapsodyProfiles.xml#_5L1wUn7FEd2DRp78gaPFRQ", "RhapsodyProfiles.xml#_5L1wVH7FEd2DRp78gaPFRQ"},
};

QualifiedName local(std::string_view name) { return {XmlConstants::NULL_NS_URI, name}; }

/// Elements with new ids, one within the other.
class Template {
public:
    explicit Template(std::string const & uml) : fUml(uml) {}

    /// `parent` is one that this returned before, or the parent of what stands beside the template.
    Context element(Context const & parent, std::string_view name, QualifiedName type,
                    std::string id = ObjectId::makeNew()) {
        return add(parent, makeElement(local(name), type, std::move(id)));
    }
    Context add(Context const & parent, Context made) {
        made.setParent(parent);
        fContexts.addContext(made);
        return made;
    }
    void attribute(Context const & parent, std::string_view name, std::string value, QualifiedName type = {}) {
        Context attribute = makeAttribute(parent, name, std::move(value));
        attribute.setType(type);
        fContexts.addContext(std::move(attribute));
    }
    void reference(Context const & parent, std::string_view name, char const * type, std::string value) {
        fContexts.addContext(makeReference(parent, name, umlType(type), std::move(value)));
    }
    /// A child element with a link into another file.
    void externalLink(Context const & parent, std::string_view name, QualifiedName type, std::string value) {
        Context link;
        link.setRole(local(name));
        link.setType(type);
        link.addReference(std::move(value));
        add(parent, std::move(link));
    }

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
    for (auto const & [prefix, uri] : kNamespaces) {
        declaration.setRole(XmlConstants::XMLNS_ATTRIBUTE_NS_URI, prefix);
        declaration.setAttribute(uri);
        sequence.addContext(declaration);
    }
    declaration.setRole(XmlConstants::W3C_XML_SCHEMA_INSTANCE_NS_URI, "schemaLocation");
    declaration.setAttribute(schemaLocation());
    sequence.addContext(declaration);
    return sequence;
}

ContextSequence RhpTemplates::profileApplications(std::string const & uml, std::string const & modelId,
                                                  Context const & element) {
    Template result(uml);
    Context const parent = parentOf(element);
    for (auto const & [profile, package] : kAppliedProfiles) {
        Context const application =
            result.element(parent, "profileApplication", result.umlType("ProfileApplication"), {});
        result.reference(application, "applyingPackage", "Package", modelId);
        result.externalLink(application, "appliedProfile", result.umlType("Profile"), profile);
        Context const extension = result.add(application, makeExtension());
        result.attribute(extension, "extender", Names::ECORE_NS_URI);
        Context const annotations = result.element(extension, "eAnnotations", {Names::ECORE_NS_URI, "EAnnotation"}, {});
        result.attribute(annotations, "source", Names::EMF_UML_SOURCE);
        result.externalLink(annotations, "references", {Names::ECORE_NS_URI, "EPackage"}, package);
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
    auto const type = [&](char const * name) { return result.umlType(name); };
    Context const parent = parentOf(element);
    Context const machine = result.element(parent, "ownedBehavior", type("StateMachine"));
    result.attribute(machine, "name", "StateChartOfActiveObject");
    Context const region = result.element(machine, "region", type("Region"));
    result.attribute(region, "name", "ROOT");

    Context const state = result.element(region, "subvertex", type("State"), stateId);
    result.attribute(state, "name", "runState");
    result.reference(state, "outgoing", "Transition", runningId);
    result.reference(state, "incoming", "Transition", enteringId + " " + runningId);
    Context const start = result.element(region, "subvertex", type("Pseudostate"), startId);
    result.attribute(start, "name", "ROOT");
    result.reference(start, "outgoing", "Transition", enteringId);

    auto const addTransition = [&](std::string const & id, char const * name, std::string const & source) {
        Context const transition = result.element(region, "transition", type("Transition"), id);
        result.attribute(transition, "name", name);
        result.reference(transition, "target", "State", stateId);
        result.reference(transition, "source", "State", source);
        Context const effect = result.element(transition, "effect", type("OpaqueBehavior"));
        result.attribute(effect, "body", "runAlgo();", type("String"));
        return transition;
    };
    addTransition(enteringId, "0", startId);
    Context const running = addTransition(runningId, "1", stateId);
    Context const trigger = result.element(running, "trigger", type("Trigger"));
    result.reference(trigger, "event", "TimeEvent", eventId);

    Context const event = result.element(parent, "packagedElement", type("TimeEvent"), eventId);
    result.attribute(event, "isRelative", "true");
    Context const when = result.element(event, "when", type("LiteralString"));
    result.attribute(when, "value", "10");
    return result.take();
}

} // namespace ZEL::Serializer
