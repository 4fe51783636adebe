// What is well-formed in the inner structure of classes.

#include "Constraints.h"

#include <ZEL/Boolean.h>
#include <ZEL/metamodel/Classifier.h>
#include <ZEL/sequences/Sequence.h>

#include <uml/AggregationKind.h>
#include <uml/Behavior.h>
#include <uml/BehavioralFeature.h>
#include <uml/BehavioredClassifierIntf.h>
#include <uml/ClassIntf.h>
#include <uml/Collaboration.h>
#include <uml/ComponentIntf.h>
#include <uml/ConnectableElement.h>
#include <uml/ConnectorEnd.h>
#include <uml/ConnectorEndIntf.h>
#include <uml/ConnectorIntf.h>
#include <uml/Interface.h>
#include <uml/Port.h>
#include <uml/PortIntf.h>
#include <uml/Property.h>
#include <uml/Reception.h>
#include <uml/ValueSpecification.h>

#include <algorithm>

namespace uml::NSInterface {

namespace {

using internal::allOf;
using ZEL::ClassObject;
using ZEL::Deviant;

/// Whether the element belongs to the classifier or is inherited by it.
bool isOwnedOrInherited(ClassObject const & element, Classifier const & classifier) {
    return internal::conforms(classifier, ZEL::Type(element.getContainerZEL()));
}

} // namespace

bool BehavioredClassifierIntf::satisfiesClassBehavior(Deviant deviant) const {
    Behavior const behavior = getClassifierBehavior(deviant);
    return !behavior.isValid() || !behavior.getSpecification<BehavioralFeature>().isValid();
}

bool ClassIntf::satisfiesPassiveClass(Deviant deviant) const {
    return isActive(deviant) || (getOwnedReceptions(deviant).empty() && !getClassifierBehavior(deviant).isValid());
}

bool ComponentIntf::satisfiesNoNestedClassifiers(Deviant deviant) const {
    return getNestedClassifiers(deviant).empty();
}

bool PortIntf::satisfiesPortAggregation(Deviant deviant) const {
    return getAggregation(deviant) == AggregationKind::Composite;
}

bool PortIntf::satisfiesDefaultValue(Deviant deviant) const {
    return !getDefaultValue(deviant).isValid() || !Interface(getType(deviant)).isValid();
}

bool ConnectorIntf::satisfiesRoles(Deviant deviant) const {
    Classifier const owner(getContainerZEL(deviant));
    if (!owner.isValid()) {
        return true;
    }
    Collaboration const collaboration(owner);
    auto const isRole = [&](ConnectableElement const & element) {
        return isOwnedOrInherited(element, owner) ||
               (collaboration.isValid() &&
                collaboration.getCollaborationRoles<ZEL::Sequence<ConnectableElement>>().contains(element));
    };
    return allOf(getEnds(deviant), [&](ConnectorEnd const & end) {
        ConnectableElement const role = end.getRole();
        Property const part = end.getPartWithPort();
        return !role.isValid() || isRole(role) || (Port(role).isValid() && part.isValid() && isRole(part));
    });
}

bool ConnectorEndIntf::satisfiesRoleAndPartWithPort(Deviant deviant) const {
    Property const part = getPartWithPort(deviant);
    ConnectableElement const role = getRole(deviant);
    if (!part.isValid() || !role.isValid()) {
        return true;
    }
    Classifier const type(part.getType());
    return Port(role).isValid() && (!type.isValid() || isOwnedOrInherited(role, type));
}

bool ConnectorEndIntf::satisfiesPartWithPortEmpty(Deviant deviant) const {
    ConnectableElement const role = getRole(deviant);
    ClassObject const connector = getContainerZEL(deviant);
    bool const isOwnPort =
        Port(role).isValid() && connector.isValid() && role.getContainerZEL() == connector.getContainerZEL();
    return !isOwnPort || !getPartWithPort(deviant).isValid();
}

bool ConnectorEndIntf::satisfiesSelfPartWithPort(Deviant deviant) const {
    return !Port(getPartWithPort(deviant)).isValid();
}

} // namespace uml::NSInterface
