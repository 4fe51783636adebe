// The opposite of a property, derived from its association.

#include <ZEL/Boolean.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyIntf.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/sequences/Sequence.h>

namespace ZEL::NSInterface {

namespace {

/// The end of a two-ended association that is not `self`; an invalid handle if there are not two ends.
Property otherMemberEnd(PropertyIntf const & self, Association const & association) {
    Sequence<Property> const ends = association.getMemberEnds();
    if (ends.size() != 2) {
        return Property();
    }
    Property const first = ends.at(0);
    return first.getImplementationWithoutAssert() == &self ? ends.at(1) : first;
}

} // namespace

Property PropertyIntf::getOpposite(Deviant deviant) const {
    if (!hasAssociation(deviant) || hasOwningAssociation(deviant)) {
        return Property();
    }
    Property const end = otherMemberEnd(*this, getAssociation(deviant));
    return end.isValid() && !end.hasOwningAssociation() ? end : Property();
}

Boolean PropertyIntf::hasOpposite(Deviant deviant) const { return Boolean(getOpposite(deviant).isValid()); }

void PropertyIntf::setOpposite(Deviant deviant, Property const & opposite) { setOnlyOpposite(deviant, opposite); }

void PropertyIntf::setOnlyOpposite(Deviant deviant, Property const & opposite) {
    if (!hasAssociation(deviant)) {
        raiseInternalError("You cannot set the opposite on a Property that has no Association!");
    }
    Association const association = getAssociation(deviant);
    Sequence<Property> ends = association.getMemberEnds();
    int const size = ends.size();
    if (size != 0 && size != 2) {
        raiseInternalError("You cannot set the opposite on a navigable association!");
    }
    if (opposite.getImplementationWithoutAssert() == nullptr) {
        raiseAnInternalError();
    }
    static_cast<void>(internal::coreToRead(*opposite.getImplementation(), deviant));
    if (size == 0) {
        ends.push_back(Property(this, deviant));
    } else {
        otherMemberEnd(*this, association).removeAssociation();
    }
    ends.push_back(opposite);
}

void PropertyIntf::removeOpposite(Deviant deviant) {
    Property const opposite = getOpposite(deviant);
    if (!opposite.isValid()) {
        return;
    }
    Association const association = getAssociation(deviant);
    removeAssociation(deviant);
    opposite.removeAssociation();
    association.destroy();
}

void PropertyIntf::removeOnlyOpposite(Deviant deviant) { removeAssociation(deviant); }

} // namespace ZEL::NSInterface
