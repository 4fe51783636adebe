// What is well-formed among use cases, behaviors and what triggers them.

#include "Constraints.h"

#include <ZEL/String.h>
#include <ZEL/metamodel/ParameterDirectionKind.h>
#include <ZEL/sequences/Sequence.h>

#include <uml/ActorIntf.h>
#include <uml/Event.h>
#include <uml/ExtendIntf.h>
#include <uml/ExtensionPoint.h>
#include <uml/ExtensionPointIntf.h>
#include <uml/FunctionBehaviorIntf.h>
#include <uml/Include.h>
#include <uml/MessageEvent.h>
#include <uml/Parameter.h>
#include <uml/Port.h>
#include <uml/TriggerIntf.h>
#include <uml/UseCase.h>
#include <uml/UseCaseIntf.h>

#include <unordered_set>
#include <vector>

namespace uml::NSInterface {

namespace {

using internal::allOf;
using internal::countOf;
using ZEL::Deviant;
using ZEL::ParameterDirectionKind;

} // namespace

bool ActorIntf::satisfiesMustHaveName(Deviant deviant) const { return !getName(deviant).empty(); }

bool UseCaseIntf::satisfiesMustHaveName(Deviant deviant) const { return !getName(deviant).empty(); }

bool UseCaseIntf::satisfiesCannotIncludeSelf(Deviant deviant) const {
    UseCase const self(const_cast<UseCaseIntf *>(this), deviant);
    std::vector<UseCase> open{self};
    std::unordered_set<void const *> seen;
    while (!open.empty()) {
        UseCase const useCase = open.back();
        open.pop_back();
        for (Include const & include : useCase.getIncludes()) {
            UseCase const addition = include.getAddition();
            if (addition == self) {
                return false;
            }
            if (addition.isValid() && seen.insert(addition.getImplementation()).second) {
                open.push_back(addition);
            }
        }
    }
    return true;
}

bool ExtendIntf::satisfiesExtensionPoints(Deviant deviant) const {
    UseCase const extended = getExtendedCase(deviant);
    return !extended.isValid() || allOf(getExtensionLocations(deviant), [&extended](ExtensionPoint const & point) {
        return point.getUseCase<UseCase>() == extended;
    });
}

bool ExtensionPointIntf::satisfiesMustHaveName(Deviant deviant) const { return !getName(deviant).empty(); }

bool TriggerIntf::satisfiesTriggerWithPorts(Deviant deviant) const {
    Event const event = getEvent(deviant);
    return getPorts(deviant).empty() || !event.isValid() || MessageEvent(event).isValid();
}

bool FunctionBehaviorIntf::satisfiesOneOutputParameter(Deviant deviant) const {
    return countOf(getOwnedParameters(deviant), [](Parameter const & parameter) {
               return parameter.getDirection() != ParameterDirectionKind::In;
           }) >= 1;
}

} // namespace uml::NSInterface
