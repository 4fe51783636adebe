// What is well-formed in interactions.

#include "Constraints.h"

#include <ZEL/Boolean.h>
#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/MultiplicityElement.h>
#include <ZEL/metamodel/NamedElement.h>
#include <ZEL/metamodel/Parameter.h>
#include <ZEL/metamodel/ParameterDirectionKind.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/sequences/Sequence.h>

#include <uml/CombinedFragment.h>
#include <uml/CombinedFragmentIntf.h>
#include <uml/ConnectableElement.h>
#include <uml/ConsiderIgnoreFragmentIntf.h>
#include <uml/ContinuationIntf.h>
#include <uml/ExecutionSpecificationIntf.h>
#include <uml/GeneralOrdering.h>
#include <uml/GeneralOrderingIntf.h>
#include <uml/InteractionConstraintIntf.h>
#include <uml/InteractionFragment.h>
#include <uml/InteractionOperand.h>
#include <uml/InteractionOperatorKind.h>
#include <uml/Lifeline.h>
#include <uml/LifelineIntf.h>
#include <uml/MessageIntf.h>
#include <uml/MessageSort.h>
#include <uml/OccurrenceSpecification.h>
#include <uml/Operation.h>
#include <uml/Signal.h>
#include <uml/ValueSpecification.h>

#include <unordered_set>
#include <vector>

namespace uml::NSInterface {

namespace {

using internal::allOf;
using internal::countOf;
using ZEL::Deviant;

bool isForConsiderIgnoreFragments(InteractionOperatorKind const & kind) {
    return kind == InteractionOperatorKind::Consider || kind == InteractionOperatorKind::Ignore;
}

} // namespace

bool LifelineIntf::satisfiesSelectorSpecified(Deviant deviant) const {
    ZEL::MultiplicityElement const represented(getRepresents(deviant));
    return !getSelector(deviant).isValid() || !represented.isValid() || represented.isMultivalued();
}

bool MessageIntf::satisfiesSignatureReferTo(Deviant deviant) const {
    ZEL::NamedElement const signature = getSignature(deviant);
    return !signature.isValid() || Operation(signature).isValid() || Signal(signature).isValid();
}

bool MessageIntf::satisfiesSignatureIsOperationRequest(Deviant deviant) const {
    Operation const operation(getSignature(deviant));
    MessageSort const sort = getMessageSort(deviant);
    bool const isCall = sort == MessageSort::SynchCall || sort == MessageSort::AsynchCall;
    // Most diagrams leave arguments out.
    if (!isCall || !operation.isValid() || getArguments(deviant).empty()) {
        return true;
    }
    return getArguments(deviant).size() ==
           countOf(operation.getOwnedParameters(), [](ZEL::Parameter const & parameter) {
               return parameter.getDirection() == ZEL::ParameterDirectionKind::In ||
                      parameter.getDirection() == ZEL::ParameterDirectionKind::Inout;
           });
}

bool MessageIntf::satisfiesSignatureIsSignal(Deviant deviant) const {
    Signal const signal(getSignature(deviant));
    if (!signal.isValid() || getArguments(deviant).empty()) {
        return true;
    }
    int attributes = signal.getOwnedAttributes().size();
    for (Classifier const & general : internal::allGenerals(signal)) {
        attributes += general.getAttributes().size();
    }
    return getArguments(deviant).size() == attributes;
}

bool CombinedFragmentIntf::satisfiesConsiderAndIgnore(Deviant deviant) const {
    return !isForConsiderIgnoreFragments(getInteractionOperator(deviant)) ||
           cast(ConsiderIgnoreFragmentIntf::classInfo()) != nullptr;
}

bool CombinedFragmentIntf::satisfiesOptLoopBreakNeg(Deviant deviant) const {
    switch (getInteractionOperator(deviant).getValue()) {
    case InteractionOperatorKind::Opt:
    case InteractionOperatorKind::Loop:
    case InteractionOperatorKind::Break:
    case InteractionOperatorKind::Assert:
    case InteractionOperatorKind::Neg:
        return getOperands(deviant).size() <= 1;
    default:
        return true;
    }
}

bool ConsiderIgnoreFragmentIntf::satisfiesConsiderOrIgnore(Deviant deviant) const {
    return isForConsiderIgnoreFragments(getInteractionOperator(deviant));
}

bool InteractionConstraintIntf::satisfiesMinintMaxint(Deviant deviant) const {
    if (!getMinint(deviant).isValid() && !getMaxint(deviant).isValid()) {
        return true;
    }
    InteractionOperand const operand(getContainerZEL(deviant));
    CombinedFragment const fragment(operand.isValid() ? operand.getContainerZEL() : ZEL::ClassObject());
    return !fragment.isValid() || fragment.getInteractionOperator() == InteractionOperatorKind::Loop;
}

bool ContinuationIntf::satisfiesFirstOrLastInteractionFragment(Deviant deviant) const {
    InteractionOperand const operand = getEnclosingOperand(deviant);
    if (!operand.isValid()) {
        return true;
    }
    auto const fragments = operand.getFragments();
    auto const isThis = [this](InteractionFragment const & fragment) {
        return fragment.getImplementation()->internal_body() == internal_body();
    };
    return isThis(fragments.at(0)) || isThis(fragments.at(fragments.size() - 1));
}

bool ExecutionSpecificationIntf::satisfiesSameLifeline(Deviant deviant) const {
    OccurrenceSpecification const start = getStart(deviant);
    OccurrenceSpecification const finish = getFinish(deviant);
    if (!start.isValid() || !finish.isValid() || start.getCovereds().empty() || finish.getCovereds().empty()) {
        return true;
    }
    auto const covered = finish.getCovereds();
    return allOf(start.getCovereds(), [&covered](Lifeline const & lifeline) { return covered.contains(lifeline); });
}

bool GeneralOrderingIntf::satisfiesIrreflexiveTransitiveClosure(Deviant deviant) const {
    OccurrenceSpecification const first = getBefore(deviant);
    std::vector<OccurrenceSpecification> open{getAfter(deviant)};
    std::unordered_set<void const *> seen;
    while (!open.empty()) {
        OccurrenceSpecification const occurrence = open.back();
        open.pop_back();
        if (!occurrence.isValid() || !seen.insert(occurrence.getImplementation()).second) {
            continue;
        }
        if (occurrence == first) {
            return false;
        }
        for (GeneralOrdering const & ordering : occurrence.getToAfters()) {
            open.push_back(ordering.getAfter());
        }
    }
    return true;
}

} // namespace uml::NSInterface
