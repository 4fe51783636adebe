#include <ZEL/interchange/UmlVersions.h>

namespace ZEL::Interchange {
namespace {

using enum UmlForm;

constexpr UmlClassName kClassNames[] = {
    {Version20, "Action", "OpaqueAction"},
    {Version20, "CollaborationOccurrence", "CollaborationUse"},
    {Version20, "EventOccurrence", "MessageOccurrenceSpecification"},
    {Version20, "ExecutionOccurrence", "BehaviorExecutionSpecification"},
    {Version20, "Implementation", "InterfaceRealization"},
    {Version20, "InteractionOccurrence", "InteractionUse"},
    {Version20, "PrimitiveFunction", "FunctionBehavior"},
    {Version20, "StartOwnedBehaviorAction", "StartClassifierBehaviorAction"},
};

constexpr UmlPropertyName kPropertyNames[] = {
    {Version20, "ActivityEdge", "redefinedElement", "redefinedEdge"},
    {Version20, "ActivityNode", "redefinedElement", "redefinedNode"},
    {Version20, "ActivityPartition", "containedEdge", "edge"},
    {Version20, "ActivityPartition", "containedNode", "node"},
    {Version20, "ActivityPartition", "subgroup", "subpartition"},
    {Version20, "Behavior", "parameter", "ownedParameter"},
    {Version20, "BehavioredClassifier", "implementation", "interfaceRealization"},
    {Version20, "Classifier", "occurrence", "collaborationUse"},
    {Version20, "InterruptibleActivityRegion", "containedNode", "node"},
    {Version20, "Package", "appliedProfile", "profileApplication"},
    {Version20, "ProfileApplication", "importedProfile", "appliedProfile"},
    {Version20, "StructuredActivityNode", "containedEdge", "edge"},
    {Version20, "StructuredActivityNode", "containedNode", "node"},
    {Version24, "Package", "URI", "uri"},
    {Version251, "State", "redefinedVertex", "redefinedState"},
    {Ecore, "Activity", "ownedGroup", "group"},
    {Ecore, "Activity", "ownedNode", "node"},
};

constexpr UmlSubset kSubsets[] = {
    {Eclipse, "Profile", "metaclassReference", "elementImport"},
    {Eclipse, "Profile", "metamodelReference", "packageImport"},
    {Eclipse, "ProtocolTransition", "postCondition", "ownedRule"},
    {Eclipse, "ProtocolTransition", "preCondition", "ownedRule"},
    {Eclipse, "State", "stateInvariant", "ownedRule"},
    {Eclipse, "Transition", "guard", "ownedRule"},
};

constexpr UmlImpliedType kImpliedTypes[] = {
    {Eclipse, "TimeEvent", "when", "TimeExpression"},
};

constexpr UmlDefault kDefaults[] = {
    {Version25, "Behavior", "isReentrant", true},
};

} // namespace

std::span<UmlClassName const> umlClassNames() noexcept { return kClassNames; }
std::span<UmlPropertyName const> umlPropertyNames() noexcept { return kPropertyNames; }
std::span<UmlSubset const> umlSubsets() noexcept { return kSubsets; }
std::span<UmlImpliedType const> umlImpliedTypes() noexcept { return kImpliedTypes; }
std::span<UmlDefault const> umlDefaults() noexcept { return kDefaults; }

} // namespace ZEL::Interchange
