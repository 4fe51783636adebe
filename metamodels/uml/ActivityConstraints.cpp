// What is well-formed in activities.

#include "Constraints.h"

#include <ZEL/Boolean.h>
#include <ZEL/sequences/Sequence.h>

#include <uml/Activity.h>
#include <uml/ActivityEdge.h>
#include <uml/ActivityEdgeIntf.h>
#include <uml/ActivityNode.h>
#include <uml/ActivityParameterNodeIntf.h>
#include <uml/ActivityPartition.h>
#include <uml/ActivityPartitionIntf.h>
#include <uml/Classifier.h>
#include <uml/ControlFlow.h>
#include <uml/ControlFlowIntf.h>
#include <uml/CreateObjectActionIntf.h>
#include <uml/DecisionNodeIntf.h>
#include <uml/ExecutableNode.h>
#include <uml/ExpansionNodeIntf.h>
#include <uml/ExpansionRegion.h>
#include <uml/FinalNodeIntf.h>
#include <uml/ForkNodeIntf.h>
#include <uml/InitialNodeIntf.h>
#include <uml/JoinNodeIntf.h>
#include <uml/MergeNodeIntf.h>
#include <uml/ObjectFlow.h>
#include <uml/ObjectFlowIntf.h>
#include <uml/ObjectNode.h>
#include <uml/Parameter.h>
#include <uml/PinIntf.h>
#include <uml/ValuePinIntf.h>

namespace uml::NSInterface {

namespace {

using internal::allOf;
using internal::countOf;
using internal::nearestAround;
using ZEL::Deviant;

bool isDataNode(ActivityNode const & node) {
    ObjectNode const objects(node);
    return objects.isValid() && !objects.isControlType();
}

bool isObjectFlow(ActivityEdge const & edge) { return ObjectFlow(edge).isValid(); }

} // namespace

// --- control nodes ---------------------------------------------------------------------------------------------------

bool InitialNodeIntf::satisfiesNoIncomingEdges(Deviant deviant) const { return getIncomings(deviant).empty(); }

bool InitialNodeIntf::satisfiesControlEdges(Deviant deviant) const {
    return allOf(getOutgoings(deviant), [](ActivityEdge const & edge) { return ControlFlow(edge).isValid(); });
}

bool FinalNodeIntf::satisfiesNoOutgoingEdges(Deviant deviant) const { return getOutgoings(deviant).empty(); }

bool ForkNodeIntf::satisfiesOneIncomingEdge(Deviant deviant) const { return getIncomings(deviant).size() == 1; }

bool JoinNodeIntf::satisfiesOneOutgoingEdge(Deviant deviant) const { return getOutgoings(deviant).size() == 1; }

bool JoinNodeIntf::satisfiesIncomingObjectFlow(Deviant deviant) const {
    bool const joinsObjects = countOf(getIncomings(deviant), isObjectFlow) > 0;
    return allOf(getOutgoings(deviant),
                 [joinsObjects](ActivityEdge const & edge) { return isObjectFlow(edge) == joinsObjects; });
}

bool MergeNodeIntf::satisfiesOneOutgoingEdge(Deviant deviant) const { return getOutgoings(deviant).size() == 1; }

bool DecisionNodeIntf::satisfiesIncomingOutgoingEdges(Deviant deviant) const {
    int const incoming = getIncomings(deviant).size();
    return (incoming == 1 || incoming == 2) && !getOutgoings(deviant).empty();
}

// --- edges -----------------------------------------------------------------------------------------------------------

bool ActivityEdgeIntf::satisfiesSourceAndTarget(Deviant deviant) const {
    ActivityNode const source = getSource(deviant);
    ActivityNode const target = getTarget(deviant);
    ActivityEdge const self(const_cast<ActivityEdgeIntf *>(this), deviant);
    Activity const activity = nearestAround<Activity>(self);
    return !activity.isValid() || !source.isValid() || !target.isValid() ||
           (nearestAround<Activity>(source) == activity && nearestAround<Activity>(target) == activity);
}

bool ControlFlowIntf::satisfiesObjectNodes(Deviant deviant) const {
    return !isDataNode(getSource(deviant)) && !isDataNode(getTarget(deviant));
}

bool ObjectFlowIntf::satisfiesNoExecutableNodes(Deviant deviant) const {
    return !ExecutableNode(getSource(deviant)).isValid() && !ExecutableNode(getTarget(deviant)).isValid();
}

bool ObjectFlowIntf::satisfiesIsMulticastOrIsMultireceive(Deviant deviant) const {
    return !isMulticast(deviant) || !isMultireceive(deviant);
}

// --- nodes that hold objects -----------------------------------------------------------------------------------------

bool ActivityParameterNodeIntf::satisfiesHasParameters(Deviant deviant) const {
    Parameter const parameter = getParameter(deviant);
    Activity const activity = getActivity(deviant);
    return !parameter.isValid() || !activity.isValid() ||
           activity.getOwnedParameters<ZEL::Sequence<Parameter>>().contains(parameter);
}

bool ActivityParameterNodeIntf::satisfiesNoEdges(Deviant deviant) const {
    return getIncomings(deviant).empty() || getOutgoings(deviant).empty();
}

bool PinIntf::satisfiesControlPins(Deviant deviant) const { return !isControl(deviant) || isControlType(deviant); }

bool ValuePinIntf::satisfiesNoIncomingEdges(Deviant deviant) const { return getIncomings(deviant).empty(); }

bool ExpansionNodeIntf::satisfiesRegionAsInputOrOutput(Deviant deviant) const {
    return getRegionAsInput(deviant).isValid() != getRegionAsOutput(deviant).isValid();
}

// --- partitions and actions ------------------------------------------------------------------------------------------

bool ActivityPartitionIntf::satisfiesDimensionNotContained(Deviant deviant) const {
    return !isDimension(deviant) || !getSuperPartition(deviant).isValid();
}

bool CreateObjectActionIntf::satisfiesClassifierNotAbstract(Deviant deviant) const {
    Classifier const classifier = getClassifier(deviant);
    return !classifier.isValid() || !classifier.isAbstract();
}

} // namespace uml::NSInterface
