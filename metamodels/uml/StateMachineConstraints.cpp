// What is well-formed in state machines.

#include "Constraints.h"

#include <ZEL/sequences/Sequence.h>

#include <uml/Behavior.h>
#include <uml/BehavioralFeature.h>
#include <uml/ConnectionPointReferenceIntf.h>
#include <uml/Constraint.h>
#include <uml/FinalStateIntf.h>
#include <uml/Interface.h>
#include <uml/ProtocolStateMachine.h>
#include <uml/ProtocolStateMachineIntf.h>
#include <uml/ProtocolTransition.h>
#include <uml/ProtocolTransitionIntf.h>
#include <uml/Pseudostate.h>
#include <uml/PseudostateIntf.h>
#include <uml/PseudostateKind.h>
#include <uml/Region.h>
#include <uml/RegionIntf.h>
#include <uml/State.h>
#include <uml/StateIntf.h>
#include <uml/StateMachine.h>
#include <uml/StateMachineIntf.h>
#include <uml/Transition.h>
#include <uml/TransitionIntf.h>
#include <uml/TransitionKind.h>
#include <uml/Trigger.h>
#include <uml/Vertex.h>

namespace uml::NSInterface {

namespace {

using internal::allOf;
using internal::countOf;
using ZEL::Deviant;

bool isPseudostate(Vertex const & vertex, PseudostateKind::Value kind) {
    Pseudostate const pseudostate(vertex);
    return pseudostate.isValid() && pseudostate.getKind() == kind;
}

bool isEntryOrExit(Pseudostate const & point) {
    return point.getKind() == PseudostateKind::EntryPoint || point.getKind() == PseudostateKind::ExitPoint;
}

bool hasAtMostOne(RegionIntf const & region, Deviant deviant, PseudostateKind::Value kind) {
    return countOf(region.getSubvertexs(deviant),
                   [kind](Vertex const & vertex) { return isPseudostate(vertex, kind); }) <= 1;
}

bool hasGuardOrTrigger(TransitionIntf const & transition, Deviant deviant) {
    return transition.getGuard(deviant).isValid() || !transition.getTriggers(deviant).empty();
}

} // namespace

// --- machines and regions --------------------------------------------------------------------------------------------

bool StateMachineIntf::satisfiesConnectionPoints(Deviant deviant) const {
    return allOf(getConnectionPoints(deviant), isEntryOrExit);
}

bool StateMachineIntf::satisfiesClassifierContext(Deviant deviant) const {
    return !Interface(getContainerZEL(deviant)).isValid() || cast(ProtocolStateMachineIntf::classInfo()) != nullptr;
}

bool StateMachineIntf::satisfiesMethod(Deviant deviant) const {
    return !getSpecification(deviant).isValid() || getConnectionPoints(deviant).empty();
}

bool RegionIntf::satisfiesInitialVertex(Deviant deviant) const {
    return hasAtMostOne(*this, deviant, PseudostateKind::Initial);
}

bool RegionIntf::satisfiesDeepHistoryVertex(Deviant deviant) const {
    return hasAtMostOne(*this, deviant, PseudostateKind::DeepHistory);
}

bool RegionIntf::satisfiesShallowHistoryVertex(Deviant deviant) const {
    return hasAtMostOne(*this, deviant, PseudostateKind::ShallowHistory);
}

// --- states ----------------------------------------------------------------------------------------------------------

bool StateIntf::satisfiesCompositeStates(Deviant deviant) const {
    return getConnectionPoints(deviant).empty() || !getRegions(deviant).empty();
}

bool StateIntf::satisfiesSubmachineStates(Deviant deviant) const {
    return getConnections(deviant).empty() || getSubmachine(deviant).isValid() ||
           internal::hasUnknownTarget(State(const_cast<StateIntf *>(this), deviant), "submachine");
}

bool StateIntf::satisfiesSubmachineOrRegions(Deviant deviant) const {
    return getRegions(deviant).empty() || !getSubmachine(deviant).isValid();
}

bool StateIntf::satisfiesEntryOrExit(Deviant deviant) const {
    return allOf(getConnectionPoints(deviant), isEntryOrExit);
}

bool FinalStateIntf::satisfiesNoOutgoingTransitions(Deviant deviant) const { return getOutgoings(deviant).empty(); }

bool FinalStateIntf::satisfiesNoRegions(Deviant deviant) const { return getRegions(deviant).empty(); }

bool FinalStateIntf::satisfiesCannotReferenceSubmachine(Deviant deviant) const {
    return !getSubmachine(deviant).isValid();
}

bool FinalStateIntf::satisfiesNoEntryBehavior(Deviant deviant) const { return !getEntry(deviant).isValid(); }

bool FinalStateIntf::satisfiesNoExitBehavior(Deviant deviant) const { return !getExit(deviant).isValid(); }

bool FinalStateIntf::satisfiesNoStateBehavior(Deviant deviant) const { return !getDoActivity(deviant).isValid(); }

// --- pseudostates and references to them -----------------------------------------------------------------------------

bool PseudostateIntf::satisfiesInitialVertex(Deviant deviant) const {
    return getKind(deviant) != PseudostateKind::Initial || getOutgoings(deviant).size() <= 1;
}

bool PseudostateIntf::satisfiesHistoryVertices(Deviant deviant) const {
    PseudostateKind const kind = getKind(deviant);
    bool const isHistory = kind == PseudostateKind::DeepHistory || kind == PseudostateKind::ShallowHistory;
    return !isHistory || getOutgoings(deviant).size() <= 1;
}

bool PseudostateIntf::satisfiesJoinVertex(Deviant deviant) const {
    return getKind(deviant) != PseudostateKind::Join ||
           (getOutgoings(deviant).size() == 1 && getIncomings(deviant).size() >= 2);
}

bool PseudostateIntf::satisfiesForkVertex(Deviant deviant) const {
    return getKind(deviant) != PseudostateKind::Fork ||
           (getIncomings(deviant).size() == 1 && getOutgoings(deviant).size() >= 2);
}

bool PseudostateIntf::satisfiesJunctionVertex(Deviant deviant) const {
    return getKind(deviant) != PseudostateKind::Junction ||
           (!getIncomings(deviant).empty() && !getOutgoings(deviant).empty());
}

bool PseudostateIntf::satisfiesChoiceVertex(Deviant deviant) const {
    return getKind(deviant) != PseudostateKind::Choice ||
           (!getIncomings(deviant).empty() && !getOutgoings(deviant).empty());
}

bool PseudostateIntf::satisfiesOutgoingFromInitial(Deviant deviant) const {
    return getKind(deviant) != PseudostateKind::Initial ||
           allOf(getOutgoings(deviant), [deviant](Transition const & transition) {
               return !hasGuardOrTrigger(*transition.getImplementation(), deviant);
           });
}

bool ConnectionPointReferenceIntf::satisfiesEntryPseudostates(Deviant deviant) const {
    return allOf(getEntries(deviant),
                 [](Pseudostate const & point) { return point.getKind() == PseudostateKind::EntryPoint; });
}

bool ConnectionPointReferenceIntf::satisfiesExitPseudostates(Deviant deviant) const {
    return allOf(getExits(deviant),
                 [](Pseudostate const & point) { return point.getKind() == PseudostateKind::ExitPoint; });
}

// --- transitions -----------------------------------------------------------------------------------------------------

bool TransitionIntf::satisfiesForkSegmentGuards(Deviant deviant) const {
    return !isPseudostate(getSource(deviant), PseudostateKind::Fork) || !hasGuardOrTrigger(*this, deviant);
}

bool TransitionIntf::satisfiesJoinSegmentGuards(Deviant deviant) const {
    return !isPseudostate(getTarget(deviant), PseudostateKind::Join) || !hasGuardOrTrigger(*this, deviant);
}

bool TransitionIntf::satisfiesForkSegmentState(Deviant deviant) const {
    Vertex const target = getTarget(deviant);
    return !isPseudostate(getSource(deviant), PseudostateKind::Fork) || !target.isValid() || State(target).isValid();
}

bool TransitionIntf::satisfiesJoinSegmentState(Deviant deviant) const {
    Vertex const source = getSource(deviant);
    return !isPseudostate(getTarget(deviant), PseudostateKind::Join) || !source.isValid() || State(source).isValid();
}

bool TransitionIntf::satisfiesOutgoingPseudostates(Deviant deviant) const {
    Pseudostate const source(getSource(deviant));
    return !source.isValid() || source.getKind() == PseudostateKind::Initial || getTriggers(deviant).empty();
}

bool TransitionIntf::satisfiesStateIsExternal(Deviant deviant) const {
    return getKind(deviant) != TransitionKind::External ||
           !isPseudostate(getSource(deviant), PseudostateKind::EntryPoint);
}

bool TransitionIntf::satisfiesStateIsInternal(Deviant deviant) const {
    Vertex const source = getSource(deviant);
    return getKind(deviant) != TransitionKind::Internal || !source.isValid() ||
           (State(source).isValid() && getTarget(deviant) == source);
}

bool TransitionIntf::satisfiesStateIsLocal(Deviant deviant) const {
    Vertex const source = getSource(deviant);
    State const state(source);
    return getKind(deviant) != TransitionKind::Local || !source.isValid() ||
           isPseudostate(source, PseudostateKind::EntryPoint) || (state.isValid() && !state.getRegions().empty());
}

// --- protocols -------------------------------------------------------------------------------------------------------

bool ProtocolStateMachineIntf::satisfiesProtocolTransitions(Deviant deviant) const {
    return allOf(getRegions(deviant), [](Region const & region) {
        return allOf(region.getTransitions(),
                     [](Transition const & transition) { return ProtocolTransition(transition).isValid(); });
    });
}

bool ProtocolTransitionIntf::satisfiesBelongsToPsm(Deviant deviant) const {
    ProtocolTransition const self(const_cast<ProtocolTransitionIntf *>(this), deviant);
    StateMachine const machine = internal::nearestAround<StateMachine>(self);
    return !machine.isValid() || ProtocolStateMachine(machine).isValid();
}

bool ProtocolTransitionIntf::satisfiesAssociatedActions(Deviant deviant) const { return !getEffect(deviant).isValid(); }

} // namespace uml::NSInterface
