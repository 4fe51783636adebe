// Each constraint on two tiny models, one that satisfies it and one that breaks it.

#include "host/TemporaryFolder.h"
#include "support/Texts.h"

#include <ZEL/ZEL.h>
#include <ZEL/compare/Check.h>

#include <gmock/gmock.h>
#include <uml/MetaModelRegistration.h>

#include <regex>
#include <set>
#include <string>

namespace uml {
namespace {

using ZEL::Compare::Diagnostics;
using ZEL::Compare::Rules;

struct Case {
    char const * rule;
    char const * owner; ///< class of the object that breaks it
    /// The model in short: `<tag Class id` is an element of that class, id and name, `<pe` a packaged element, and `@`
    /// where the two models differ. In a letter before it stands what is around: a class, machine, activity or
    /// interaction.
    char const * model;
    char const * sound;
    char const * broken;
};

void PrintTo(Case const & c, std::ostream * out) { *out << c.rule << " of " << c.owner; }

std::string framed(std::string const & model) {
    if (model[1] != ':') {
        return model;
    }
    std::string const inner = model.substr(2);
    switch (model[0]) {
    case 'C':
        return "<pe Class c>" + inner + "</pe>";
    case 'M':
        return "<pe StateMachine sm><region Region r>" + inner + "</region></pe>";
    case 'A':
        return "<pe Activity ac>" + inner + "</pe>";
    default:
        return "<pe Interaction in>" + inner + "</pe>";
    }
}

std::string fileOf(Case const & c, char const * filler) {
    std::string text = ZEL::tests::replaced(framed(c.model), "@", filler);
    text = ZEL::tests::replaced(text, "<pe ", "<packagedElement ");
    text = ZEL::tests::replaced(text, "</pe>", "</packagedElement>");
    text = std::regex_replace(text, std::regex("<(\\w+) ([A-Z]\\w*) (\\w+)"),
                              "<$1 xmi:type='uml:$2' xmi:id='$3' name='$3'");
    return "<xmi:XMI xmi:version='2.1' xmlns:xmi='http://schema.omg.org/spec/XMI/2.1' "
           "xmlns:uml='http://schema.omg.org/spec/UML/2.1'><uml:Model xmi:id='model' name='model'>" +
           text + "</uml:Model></xmi:XMI>";
}

Diagnostics checked(Case const & c, char const * filler) {
    registerMetaModel();
    TemporaryFolder const folder;
    ZEL::Serializer::XmiReader reader;
    ZEL::Model const model(reader.read(folder.file("model.xmi", fileOf(c, filler))));
    // Some classes have no name.
    EXPECT_TRUE(reader.report().skippedElements().empty() && reader.report().unresolvedReferences().empty() &&
                reader.report().rejectedValues().empty() && reader.report().uncontainedObjects().empty())
        << fileOf(c, filler);
    Diagnostics diagnostics = ZEL::Compare::check(model, Rules::ofMetamodels().only({c.rule}));
    std::erase_if(diagnostics, [&c](auto const & each) { return !each.label.starts_with(c.owner); });
    return diagnostics;
}

constexpr Case kCases[] = {
    // classifiers, their features and packages
    {"lower_ge_0", "Property", "C:<ownedAttribute Property p><lowerValue LiteralInteger v value='@'/></ownedAttribute>",
     "0", "-1"},
    {"upper_ge_lower", "Property",
     "C:<ownedAttribute Property p><upperValue LiteralUnlimitedNatural u value='@'/>"
     "<lowerValue LiteralInteger v value='2'/></ownedAttribute>",
     "*", "1"},
    {"lower_is_integer", "Property",
     "C:<ownedAttribute Property p><lowerValue LiteralString v value='@'/></ownedAttribute>", "3", "few"},
    {"upper_is_unlimitedNatural", "Property",
     "C:<ownedAttribute Property p><upperValue LiteralString v value='@'/></ownedAttribute>", "*", "many"},
    {"specialize_type", "Class",
     "<pe Interface i/><pe Class b/><pe Class c><generalization Generalization g general='@'/></pe>", "b", "i"},
    {"non_final_parents", "Class",
     "<pe Class b isFinalSpecialization='@'/><pe Class c><generalization Generalization g general='b'/></pe>", "false",
     "true"},
    {"maps_to_generalization_set", "Class",
     "<pe Class a/><pe Class p/><pe Class c><generalization Generalization g general='a'/></pe>"
     "<pe GeneralizationSet s generalization='g' powertype='@'/>",
     "p", "a"},
    {"generalization_same_classifier", "GeneralizationSet",
     "<pe Class a/><pe Class b/><pe Class c><generalization Generalization g general='a'/>"
     "<generalization Generalization h general='@'/></pe><pe GeneralizationSet s generalization='g h'/>",
     "a", "b"},
    {"visibility", "Interface", "<pe Interface i><ownedAttribute Property p visibility='@'/></pe>", "public",
     "private"},
    {"defining_feature", "InstanceSpecification",
     "<pe Class c><ownedAttribute Property p/></pe><pe Class d><ownedAttribute Property q/></pe>"
     "<pe InstanceSpecification i classifier='c'><slot Slot s definingFeature='@'/></pe>",
     "p", "q"},
    {"structural_feature", "InstanceSpecification",
     "<pe Class c><ownedAttribute Property p/><ownedAttribute Property q/></pe><pe InstanceSpecification i "
     "classifier='c'>"
     "<slot Slot s definingFeature='p'/><slot Slot t definingFeature='@'/></pe>",
     "q", "p"},
    {"association_ends", "Association",
     "<pe Class a><ownedAttribute Property w type='a'/></pe><pe Association as memberEnd='x y @'>"
     "<ownedEnd Property x type='a'/><ownedEnd Property y type='a'/><ownedEnd Property z type='a'/></pe>",
     "z", "z w"},
    {"binary_associations", "Association",
     "<pe Class a/><pe Association as memberEnd='x y'><ownedEnd Property x type='a' aggregation='shared'/>"
     "<ownedEnd Property y type='a' aggregation='@'/></pe>",
     "none", "composite"},
    {"ends_must_be_typed", "Association",
     "<pe Class a/><pe Association as memberEnd='x y'><ownedEnd Property x type='a'/><ownedEnd Property y @/></pe>",
     "type='a'", ""},
    {"specialized_end_number", "Association",
     "<pe Class a/><pe Association b memberEnd='x y @'><ownedEnd Property x type='a'/><ownedEnd Property y type='a'/>"
     "<ownedEnd Property z type='a'/></pe><pe Association as memberEnd='u v'><generalization Generalization g "
     "general='b'/>"
     "<ownedEnd Property u type='a'/><ownedEnd Property v type='a'/></pe>",
     "", "z"},
    {"specialized_end_types", "Association",
     "<pe Class a/><pe Class b/><pe Association s memberEnd='x y'><ownedEnd Property x type='a'/>"
     "<ownedEnd Property y type='a'/></pe><pe Association as memberEnd='u v'><generalization Generalization g "
     "general='s'/>"
     "<ownedEnd Property u type='a'/><ownedEnd Property v type='@'/></pe>",
     "a", "b"},
    {"associations", "Association",
     "<pe Actor a/><pe UseCase u/><pe Interface i/><pe Association as memberEnd='x y'><ownedEnd Property x type='a'/>"
     "<ownedEnd Property y type='@'/></pe>",
     "u", "i"},
    {"no_association_to_use_case", "Association",
     "<pe Class s/><pe UseCase u subject='s'/><pe UseCase v subject='@'/><pe Class t/>"
     "<pe Association as memberEnd='x y'><ownedEnd Property x type='u'/><ownedEnd Property y type='v'/></pe>",
     "t", "s"},
    {"multiplicity_of_composite", "Property",
     "<pe Class a/><pe Association as memberEnd='x y'><ownedEnd Property x type='a' aggregation='composite'/>"
     "<ownedEnd Property y type='a'><upperValue LiteralUnlimitedNatural v value='@'/></ownedEnd></pe>",
     "1", "2"},
    {"subsetted_property_names", "Property",
     "C:<ownedAttribute Property p/><ownedAttribute xmi:type='uml:Property' xmi:id='q' name='@' "
     "subsettedProperty='p'/>",
     "q", "p"},
    {"subsetting_rules", "Property",
     "<pe Class a/><pe Class b/><pe Class c><ownedAttribute Property p type='a'/>"
     "<ownedAttribute Property q type='@' subsettedProperty='p'/></pe>",
     "a", "b"},
    {"derived_union_is_derived", "Property", "C:<ownedAttribute Property p isDerivedUnion='true' isDerived='@'/>",
     "true", "false"},
    {"derived_union_is_read_only", "Property", "C:<ownedAttribute Property p isDerivedUnion='true' isReadOnly='@'/>",
     "true", "false"},
    {"qualified_is_association_end", "Property",
     "<pe Class c><ownedAttribute Property p type='c'><qualifier Property q/></ownedAttribute></pe>"
     "<pe Association as memberEnd='x @'><ownedEnd Property x type='c'/></pe>",
     "p", ""},
    {"at_most_one_return", "Operation",
     "C:<ownedOperation Operation o><ownedParameter Parameter p direction='return'/>"
     "<ownedParameter Parameter q direction='@'/></ownedOperation>",
     "in", "return"},
    {"only_body_for_query", "Operation",
     "C:<ownedOperation Operation o isQuery='@' bodyCondition='k'><ownedRule Constraint k/></ownedOperation>", "true",
     "false"},
    {"not_exception", "Parameter",
     "C:<ownedOperation Operation o><ownedParameter Parameter p isException='true' direction='@'/></ownedOperation>",
     "out", "in"},
    {"stream_and_exception", "Parameter",
     "C:<ownedOperation Operation o><ownedParameter Parameter p isException='@' isStream='true'/></ownedOperation>",
     "false", "true"},
    {"elements_public_or_private", "Package", "<pe Package p><pe Class c visibility='@'/></pe>", "private",
     "protected"},
    {"public_or_private", "PackageImport",
     "<pe Package p/><pe Package q><packageImport PackageImport i importedPackage='p' visibility='@'/></pe>", "private",
     "protected"},
    {"visibility_public_or_private", "ElementImport",
     "<pe Class c/><pe Package q><elementImport ElementImport i importedElement='c' visibility='@'/></pe>", "private",
     "protected"},
    {"not_apply_to_self", "Constraint", "C:<ownedRule Constraint k constrainedElement='@'/>", "c", "k"},
    {"language_body_size", "OpaqueExpression",
     "C:<ownedAttribute Property p><defaultValue OpaqueExpression "
     "e><language>C</language>@<body>1</body></defaultValue>"
     "</ownedAttribute>",
     "", "<language>Ada</language>"},
    {"parameter_substitution_formal", "TemplateBinding",
     "<pe Class t><ownedTemplateSignature TemplateSignature s parameter='p'><ownedParameter TemplateParameter p "
     "parameteredElement='x'/>"
     "</ownedTemplateSignature></pe><pe Class u><ownedTemplateSignature TemplateSignature s2 parameter='q'>"
     "<ownedParameter TemplateParameter q parameteredElement='x'/></ownedTemplateSignature></pe><pe Class x/>"
     "<pe Class b><templateBinding TemplateBinding tb signature='s'><parameterSubstitution "
     "TemplateParameterSubstitution ps formal='@' actual='x'/>"
     "</templateBinding></pe>",
     "p", "q"},
    // inner structure
    {"class_behavior", "Class",
     "<pe Class c isActive='true' classifierBehavior='b'><ownedOperation Operation o/>"
     "<ownedBehavior OpaqueBehavior b @/></pe>",
     "", "specification='o'"},
    {"passive_class", "Class", "<pe Class c isActive='@' classifierBehavior='b'><ownedBehavior OpaqueBehavior b/></pe>",
     "true", "false"},
    {"no_nested_classifiers", "Component", "<pe Component c><@ Class d/></pe>", "packagedElement", "nestedClassifier"},
    {"port_aggregation", "Port", "C:<ownedAttribute Port p aggregation='@'/>", "composite", "none"},
    {"default_value", "Port",
     "<pe Interface i/><pe DataType d/><pe Class c><ownedAttribute Port p type='@'>"
     "<defaultValue LiteralInteger v value='1'/></ownedAttribute></pe>",
     "d", "i"},
    {"roles", "Connector",
     "<pe Class d><ownedAttribute Property z/></pe><pe Class c><ownedAttribute Property p/><ownedAttribute Property q/>"
     "<ownedConnector Connector k><end ConnectorEnd e role='p'/><end ConnectorEnd f role='@'/></ownedConnector></pe>",
     "q", "z"},
    {"role_and_part_with_port", "ConnectorEnd",
     "<pe Class d><ownedAttribute Port z aggregation='composite'/></pe><pe Class c><ownedAttribute Property p "
     "type='d'/>"
     "<ownedAttribute Property q/><ownedConnector Connector k><end ConnectorEnd e role='@' partWithPort='p'/>"
     "<end ConnectorEnd f role='q'/></ownedConnector></pe>",
     "z", "q"},
    {"part_with_port_empty", "ConnectorEnd",
     "C:<ownedAttribute Port p aggregation='composite'/><ownedAttribute Property q/><ownedConnector Connector k>"
     "<end ConnectorEnd e role='p' @/><end ConnectorEnd f role='q'/></ownedConnector>",
     "", "partWithPort='q'"},
    {"self_part_with_port", "ConnectorEnd",
     "C:<ownedAttribute Port p aggregation='composite'/><ownedAttribute Property q/><ownedConnector Connector k>"
     "<end ConnectorEnd e role='p' partWithPort='@'/><end ConnectorEnd f role='q'/></ownedConnector>",
     "q", "p"},
    // use cases and behaviors
    {"must_have_name", "Actor", "<packagedElement xmi:type='uml:Actor' xmi:id='a' @/>", "name='a'", ""},
    {"must_have_name", "UseCase", "<packagedElement xmi:type='uml:UseCase' xmi:id='a' @/>", "name='a'", ""},
    {"must_have_name", "ExtensionPoint",
     "<pe UseCase u><extensionPoint xmi:type='uml:ExtensionPoint' xmi:id='a' @/></pe>", "name='a'", ""},
    {"cannot_include_self", "UseCase 'a'",
     "<pe UseCase a><include Include i addition='b'/></pe><pe UseCase b><include Include j addition='@'/></pe><pe "
     "UseCase c/>",
     "c", "a"},
    {"extension_points", "Extend",
     "<pe UseCase a><extensionPoint ExtensionPoint p/></pe><pe UseCase b><extensionPoint ExtensionPoint q/>"
     "<extend Extend e extendedCase='a' extensionLocation='@'/></pe>",
     "p", "q"},
    {"trigger_with_ports", "Trigger",
     "<pe AnyReceiveEvent r/><pe ChangeEvent h/><pe Class c><ownedAttribute Port p aggregation='composite'/>"
     "<ownedTrigger Trigger t event='@' port='p'/></pe>",
     "r", "h"},
    {"one_output_parameter", "FunctionBehavior",
     "<pe FunctionBehavior f><ownedParameter Parameter p direction='@'/></pe>", "return", "in"},
    // state machines
    {"connection_points", "StateMachine", "<pe StateMachine m><connectionPoint Pseudostate p kind='@'/></pe>",
     "entryPoint", "choice"},
    {"classifier_context", "StateMachine", "<pe @ StateMachine m/></pe>", "Class c><ownedBehavior",
     "Interface i><nestedClassifier"},
    {"method", "StateMachine",
     "<pe Class c><ownedOperation Operation o/><ownedBehavior StateMachine m @>"
     "<connectionPoint Pseudostate p kind='entryPoint'/></ownedBehavior></pe>",
     "", "specification='o'"},
    {"initial_vertex", "Region", "M:<subvertex Pseudostate a/><subvertex Pseudostate b kind='@'/>", "choice",
     "initial"},
    {"deep_history_vertex", "Region",
     "M:<subvertex Pseudostate a kind='deepHistory'/><subvertex Pseudostate b kind='@'/>", "shallowHistory",
     "deepHistory"},
    {"shallow_history_vertex", "Region",
     "M:<subvertex Pseudostate a kind='shallowHistory'/><subvertex Pseudostate b kind='@'/>", "deepHistory",
     "shallowHistory"},
    {"composite_states", "State", "M:<subvertex State a>@<connectionPoint Pseudostate p kind='exitPoint'/></subvertex>",
     "<region Region s/>", ""},
    {"submachine_states", "State", "M:<subvertex State a @><connection ConnectionPointReference p/></subvertex>",
     "submachine='sm'", ""},
    {"submachine_or_regions", "State", "M:<subvertex State a @><region Region s/></subvertex>", "", "submachine='sm'"},
    {"entry_or_exit", "State",
     "M:<subvertex State a><region Region s/><connectionPoint Pseudostate p kind='@'/></subvertex>", "exitPoint",
     "fork"},
    {"no_outgoing_transitions", "FinalState",
     "M:<subvertex FinalState f/><subvertex State a/><transition Transition t source='@' target='a'/>", "a", "f"},
    {"no_regions", "FinalState", "M:<subvertex @ a><region Region s/></subvertex>", "State", "FinalState"},
    {"cannot_reference_submachine", "FinalState", "M:<subvertex @ a submachine='sm'/>", "State", "FinalState"},
    {"no_entry_behavior", "FinalState", "M:<subvertex FinalState a>@</subvertex>", "", "<entry OpaqueBehavior b/>"},
    {"no_exit_behavior", "FinalState", "M:<subvertex FinalState a>@</subvertex>", "", "<exit OpaqueBehavior b/>"},
    {"no_state_behavior", "FinalState", "M:<subvertex FinalState a>@</subvertex>", "",
     "<doActivity OpaqueBehavior b/>"},
    {"initial_vertex", "Pseudostate",
     "M:<subvertex Pseudostate i/><subvertex State a/><transition Transition t source='i' target='a'/>"
     "<transition Transition u source='@' target='a'/>",
     "a", "i"},
    {"history_vertices", "Pseudostate",
     "M:<subvertex Pseudostate i kind='deepHistory'/><subvertex State a/><transition Transition t source='i' "
     "target='a'/>"
     "<transition Transition u source='@' target='a'/>",
     "a", "i"},
    {"join_vertex", "Pseudostate",
     "M:<subvertex Pseudostate j kind='join'/><subvertex State a/><transition Transition t source='a' target='j'/>"
     "<transition Transition u source='a' target='@'/><transition Transition v source='j' target='a'/>",
     "j", "a"},
    {"fork_vertex", "Pseudostate",
     "M:<subvertex Pseudostate j kind='fork'/><subvertex State a/><transition Transition t source='j' target='a'/>"
     "<transition Transition u source='@' target='a'/><transition Transition v source='a' target='j'/>",
     "j", "a"},
    {"junction_vertex", "Pseudostate",
     "M:<subvertex Pseudostate j kind='junction'/><subvertex State a/><transition Transition t source='j' target='a'/>"
     "<transition Transition u source='a' target='@'/>",
     "j", "a"},
    {"choice_vertex", "Pseudostate",
     "M:<subvertex Pseudostate j kind='choice'/><subvertex State a/><transition Transition t source='@' target='a'/>"
     "<transition Transition u source='a' target='j'/>",
     "j", "a"},
    {"outgoing_from_initial", "Pseudostate",
     "M:<subvertex Pseudostate i/><subvertex State a/><transition Transition t source='i' target='a'>@</transition>",
     "", "<guard Constraint g/>"},
    {"entry_pseudostates", "ConnectionPointReference",
     "M:<subvertex State a submachine='sm'><connection ConnectionPointReference p entry='@'/></subvertex>"
     "<subvertex Pseudostate e kind='entryPoint'/><subvertex Pseudostate x kind='exitPoint'/>",
     "e", "x"},
    {"exit_pseudostates", "ConnectionPointReference",
     "M:<subvertex State a submachine='sm'><connection ConnectionPointReference p exit='@'/></subvertex>"
     "<subvertex Pseudostate e kind='entryPoint'/><subvertex Pseudostate x kind='exitPoint'/>",
     "x", "e"},
    {"fork_segment_guards", "Transition",
     "M:<subvertex Pseudostate f kind='fork'/><subvertex State a/><transition Transition t source='f' target='a'>@"
     "</transition>",
     "", "<guard Constraint g/>"},
    {"join_segment_guards", "Transition",
     "M:<subvertex Pseudostate f kind='join'/><subvertex State a/><transition Transition t source='a' target='f'>@"
     "</transition>",
     "", "<trigger Trigger g/>"},
    {"fork_segment_state", "Transition",
     "M:<subvertex Pseudostate f kind='fork'/><subvertex State a/><subvertex Pseudostate b kind='choice'/>"
     "<transition Transition t source='f' target='@'/>",
     "a", "b"},
    {"join_segment_state", "Transition",
     "M:<subvertex Pseudostate f kind='join'/><subvertex State a/><subvertex Pseudostate b kind='choice'/>"
     "<transition Transition t source='@' target='f'/>",
     "a", "b"},
    {"outgoing_pseudostates", "Transition",
     "M:<subvertex Pseudostate c kind='choice'/><subvertex State a/><transition Transition t source='@' target='a'>"
     "<trigger Trigger g/></transition>",
     "a", "c"},
    {"state_is_external", "Transition",
     "M:<subvertex Pseudostate e kind='entryPoint'/><subvertex State a/>"
     "<transition Transition t source='e' target='a' kind='@'/>",
     "local", "external"},
    {"state_is_internal", "Transition",
     "M:<subvertex State a/><subvertex State b/><transition Transition t source='a' target='@' kind='internal'/>", "a",
     "b"},
    {"state_is_local", "Transition",
     "M:<subvertex State a>@</subvertex><subvertex State b/><transition Transition t source='a' target='b' "
     "kind='local'/>",
     "<region Region s/>", ""},
    {"protocol_transitions", "ProtocolStateMachine",
     "<pe ProtocolStateMachine m><region Region r><subvertex State a/><transition @ t source='a' "
     "target='a'/></region></pe>",
     "ProtocolTransition", "Transition"},
    {"belongs_to_psm", "ProtocolTransition",
     "<pe @ m><region Region r><subvertex State a/><transition ProtocolTransition t source='a' "
     "target='a'/></region></pe>",
     "ProtocolStateMachine", "StateMachine"},
    {"associated_actions", "ProtocolTransition",
     "<pe ProtocolStateMachine m><region Region r><subvertex State a/>"
     "<transition ProtocolTransition t source='a' target='a'>@</transition></region></pe>",
     "", "<effect OpaqueBehavior b/>"},
    // activities
    {"no_incoming_edges", "InitialNode",
     "A:<node InitialNode i/><node OpaqueAction a/><edge ControlFlow e source='a' target='@'/>", "a", "i"},
    {"control_edges", "InitialNode",
     "A:<node InitialNode i/><node CentralBufferNode b/><edge @ e source='i' target='b'/>", "ControlFlow",
     "ObjectFlow"},
    {"no_outgoing_edges", "ActivityFinalNode",
     "A:<node ActivityFinalNode f/><node OpaqueAction a/><edge ControlFlow e source='@' target='a'/>", "a", "f"},
    {"one_incoming_edge", "ForkNode",
     "A:<node ForkNode f/><node OpaqueAction a/><edge ControlFlow e source='a' target='@'/>", "f", "a"},
    {"one_outgoing_edge", "JoinNode",
     "A:<node JoinNode f/><node OpaqueAction a/><edge ControlFlow e source='@' target='a'/>", "f", "a"},
    {"incoming_object_flow", "JoinNode",
     "A:<node JoinNode j/><node CentralBufferNode b/><edge ObjectFlow e source='b' target='j'/>"
     "<edge @ f source='j' target='b'/>",
     "ObjectFlow", "ControlFlow"},
    {"one_outgoing_edge", "MergeNode",
     "A:<node MergeNode f/><node OpaqueAction a/><edge ControlFlow e source='@' target='a'/>", "f", "a"},
    {"incoming_outgoing_edges", "DecisionNode",
     "A:<node DecisionNode f/><node OpaqueAction a/><edge ControlFlow e source='a' target='@'/>"
     "<edge ControlFlow g source='f' target='a'/>",
     "f", "a"},
    {"source_and_target", "ControlFlow",
     "<pe Activity x><node OpaqueAction a/><edge ControlFlow e source='a' target='@'/></pe>"
     "<pe Activity y><node OpaqueAction b/></pe>",
     "a", "b"},
    {"object_nodes", "ControlFlow",
     "A:<node CentralBufferNode b isControlType='@'/><node OpaqueAction a/><edge ControlFlow e source='b' target='a'/>",
     "true", "false"},
    {"no_executable_nodes", "ObjectFlow",
     "A:<node CentralBufferNode b/><node OpaqueAction a/><edge ObjectFlow e source='b' target='@'/>", "b", "a"},
    {"is_multicast_or_is_multireceive", "ObjectFlow",
     "A:<node CentralBufferNode b/><edge ObjectFlow e source='b' target='b' isMulticast='true' isMultireceive='@'/>",
     "false", "true"},
    {"has_parameters", "ActivityParameterNode",
     "<pe Activity x><ownedParameter Parameter p/><node ActivityParameterNode n parameter='@'/></pe>"
     "<pe Activity y><ownedParameter Parameter q/></pe>",
     "p", "q"},
    {"no_edges", "ActivityParameterNode",
     "A:<ownedParameter Parameter p/><node ActivityParameterNode n parameter='p'/><node CentralBufferNode b/>"
     "<edge ObjectFlow e source='b' target='n'/><edge ObjectFlow f source='@' target='b'/>",
     "b", "n"},
    {"control_pins", "InputPin",
     "A:<node OpaqueAction a><inputValue InputPin p isControl='true' isControlType='@'/></node>", "true", "false"},
    {"no_incoming_edges", "ValuePin",
     "A:<node OpaqueAction a><inputValue ValuePin p><value LiteralNull v/></inputValue></node><node CentralBufferNode "
     "b/>"
     "<edge ObjectFlow e source='b' target='@'/>",
     "b", "p"},
    {"region_as_input_or_output", "ExpansionNode",
     "A:<node ExpansionRegion r inputElement='n' @/><node ExpansionNode n/>", "", "outputElement='n'"},
    {"dimension_not_contained", "ActivityPartition",
     "A:<group ActivityPartition p><subpartition ActivityPartition q isDimension='@'/></group>", "false", "true"},
    {"classifier_not_abstract", "CreateObjectAction",
     "<pe Class c isAbstract='@'/><pe Activity x><node CreateObjectAction a classifier='c'><result OutputPin "
     "p/></node></pe>",
     "false", "true"},
    // interactions
    {"selector_specified", "Lifeline",
     "<pe Class c><ownedAttribute Property p><upperValue LiteralUnlimitedNatural u value='@'/></ownedAttribute></pe>"
     "<pe Interaction i><lifeline Lifeline l represents='p'><selector LiteralInteger s value='1'/></lifeline></pe>",
     "*", "1"},
    {"signature_refer_to", "Message",
     "<pe Signal s/><pe Class c/><pe Interaction i><message Message m signature='@'/></pe>", "s", "c"},
    {"signature_is_operation_request", "Message",
     "<pe Class c><ownedOperation Operation o><ownedParameter Parameter p/></ownedOperation></pe>"
     "<pe Interaction i><message Message m signature='o'><argument LiteralNull a/>@</message></pe>",
     "", "<argument LiteralNull b/>"},
    {"signature_is_signal", "Message",
     "<pe Signal s><ownedAttribute Property p/></pe><pe Interaction i>"
     "<message Message m signature='s' messageSort='asynchSignal'><argument LiteralNull a/>@</message></pe>",
     "", "<argument LiteralNull b/>"},
    {"consider_and_ignore", "CombinedFragment", "I:<fragment CombinedFragment f interactionOperator='@'/>", "alt",
     "consider"},
    {"opt_loop_break_neg", "CombinedFragment",
     "I:<fragment CombinedFragment f interactionOperator='@'><operand InteractionOperand a/><operand "
     "InteractionOperand b/>"
     "</fragment>",
     "par", "opt"},
    {"consider_or_ignore", "ConsiderIgnoreFragment", "I:<fragment ConsiderIgnoreFragment f interactionOperator='@'/>",
     "ignore", "alt"},
    {"minint_maxint", "InteractionConstraint",
     "I:<fragment CombinedFragment f interactionOperator='@'><operand InteractionOperand a><guard "
     "InteractionConstraint g>"
     "<minint LiteralInteger v value='1'/></guard></operand></fragment>",
     "loop", "opt"},
    {"first_or_last_interaction_fragment", "Continuation",
     "I:<fragment CombinedFragment f><operand InteractionOperand a><fragment StateInvariant s/><fragment Continuation "
     "c/>@"
     "</operand></fragment>",
     "", "<fragment StateInvariant t/>"},
    {"same_lifeline", "ActionExecutionSpecification",
     "I:<lifeline Lifeline k/><lifeline Lifeline l/><fragment OccurrenceSpecification a covered='k'/>"
     "<fragment ActionExecutionSpecification x start='a' finish='b'/><fragment OccurrenceSpecification b covered='@'/>",
     "k", "l"},
    {"irreflexive_transitive_closure", "GeneralOrdering 'in.a.g'",
     "I:<fragment OccurrenceSpecification a><generalOrdering GeneralOrdering g before='a' after='b'/>"
     "<generalOrdering GeneralOrdering h before='b' after='@'/></fragment><fragment OccurrenceSpecification b/>"
     "<fragment OccurrenceSpecification c/>",
     "c", "a"},
    // profiles
    {"is_binary", "Extension",
     "<pe Class c><ownedAttribute Property b type='s'/></pe><pe Stereotype s/><pe Extension e memberEnd='x @'>"
     "<ownedEnd ExtensionEnd x type='s' aggregation='composite'/></pe>",
     "b", ""},
    {"non_owned_end", "Extension",
     "<pe DataType d/><pe Class c/><pe Stereotype s><ownedAttribute Property b type='@'/></pe>"
     "<pe Extension e memberEnd='x b'><ownedEnd ExtensionEnd x type='s' aggregation='composite'/></pe>",
     "c", "d"},
    {"multiplicity", "ExtensionEnd",
     "<pe Stereotype s/><pe Extension e memberEnd='x'><ownedEnd ExtensionEnd x type='s' aggregation='composite'>"
     "<upperValue LiteralUnlimitedNatural u value='@'/></ownedEnd></pe>",
     "1", "2"},
    {"aggregation", "ExtensionEnd",
     "<pe Stereotype s/><pe Extension e memberEnd='x'><ownedEnd ExtensionEnd x type='s' aggregation='@'/></pe>",
     "composite", "none"},
    {"generalize", "Stereotype",
     "<pe Class c/><pe Stereotype t/><pe Stereotype s><generalization Generalization g general='@'/></pe>", "t", "c"},
};

class Constraints : public testing::TestWithParam<Case> {};

TEST_P(Constraints, TellOfTheModelThatBreaksThemAndNotOfTheSoundOne) {
    EXPECT_TRUE(checked(GetParam(), GetParam().sound).empty());
    EXPECT_EQ(checked(GetParam(), GetParam().broken).size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(Of, Constraints, testing::ValuesIn(kCases), [](testing::TestParamInfo<Case> const & info) {
    std::string const owner = info.param.owner;
    return owner.substr(0, owner.find(' ')) + '_' + info.param.rule;
});

TEST(ConstraintsOfUml, AllHaveACase) {
    registerMetaModel();
    std::set<std::string> cases;
    for (Case const & c : kCases) {
        cases.insert(c.rule);
    }
    std::set<std::string> const standard{"containment", "generalizationCycle", "oppositeEnds", "uniqueNames",
                                         "unresolvedLink"};
    for (std::string const & name : Rules::ofMetamodels().names()) {
        EXPECT_TRUE(cases.count(name) != 0 || standard.count(name) != 0) << name;
    }
}

} // namespace
} // namespace uml
