// What an operation has of its return parameter, and an association of its ends.

#include "OwnFactory.h"

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Parameter.h>
#include <ZEL/metamodel/ParameterDirectionKind.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertySupport.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/sequences/SequenceBuilder.h>

#include <uml/AssociationIntf.h>
#include <uml/Operation.h>
#include <uml/OperationIntf.h>
#include <uml/Parameter.h>

#include <string>

namespace uml::NSInterface {

namespace {

using ZEL::Deviant;

/// The first return parameter; an invalid handle if there is none.
ZEL::Parameter resultOf(OperationIntf const & operation, Deviant deviant) {
    for (ZEL::Parameter const & parameter : operation.getOwnedParameters(deviant)) {
        if (parameter.getDirection() == ZEL::ParameterDirectionKind::Return) {
            return parameter;
        }
    }
    return ZEL::Parameter();
}

ZEL::Parameter resultToSet(OperationIntf const & operation, Deviant deviant, char const * property) {
    ZEL::Parameter const result = resultOf(operation, deviant);
    if (!result.isValid()) {
        ZEL::raiseInternalError(std::string("Operation.") + property +
                                " cannot be set: it is that of the return parameter, and there is none");
    }
    return result;
}

} // namespace

// --- isOrdered, isUnique ---------------------------------------------------------------------------------------------

ZEL::Boolean OperationIntf::hasBooleanIsOrdered(Deviant) const { return ZEL::Boolean(true); }

ZEL::Boolean OperationIntf::getBooleanIsOrdered(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return result.isValid() ? result.isOrdered() : ZEL::Boolean(false);
}

void OperationIntf::setBooleanIsOrdered(Deviant deviant, ZEL::Boolean const & value) {
    if (getBooleanIsOrdered(deviant) != value) {
        resultToSet(*this, deviant, "isOrdered").setIsOrdered(value);
    }
}

void OperationIntf::removeBooleanIsOrdered(Deviant) {}

ZEL::Boolean OperationIntf::hasBooleanIsUnique(Deviant) const { return ZEL::Boolean(true); }

ZEL::Boolean OperationIntf::getBooleanIsUnique(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return result.isValid() ? result.isUnique() : ZEL::Boolean(true);
}

void OperationIntf::setBooleanIsUnique(Deviant deviant, ZEL::Boolean const & value) {
    if (getBooleanIsUnique(deviant) != value) {
        resultToSet(*this, deviant, "isUnique").setIsUnique(value);
    }
}

void OperationIntf::removeBooleanIsUnique(Deviant) {}

// --- lower, upper ----------------------------------------------------------------------------------------------------

ZEL::Boolean OperationIntf::hasIntegerLower(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return ZEL::Boolean(result.isValid() && result.hasLower());
}

ZEL::Integer OperationIntf::getIntegerLower(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return result.isValid() ? result.getLower() : ZEL::Integer(1);
}

void OperationIntf::setIntegerLower(Deviant deviant, ZEL::Integer const & value) {
    if (getIntegerLower(deviant) != value) {
        resultToSet(*this, deviant, "lower").setLower(value);
    }
}

void OperationIntf::removeIntegerLower(Deviant deviant) {
    if (ZEL::Parameter const result = resultOf(*this, deviant); result.isValid()) {
        result.removeLower();
    }
}

ZEL::Boolean OperationIntf::hasUnlimitedNaturalUpper(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return ZEL::Boolean(result.isValid() && result.hasUpper());
}

ZEL::UnlimitedNatural OperationIntf::getUnlimitedNaturalUpper(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return result.isValid() ? result.getUpper() : ZEL::UnlimitedNatural(1U);
}

void OperationIntf::setUnlimitedNaturalUpper(Deviant deviant, ZEL::UnlimitedNatural const & value) {
    if (getUnlimitedNaturalUpper(deviant) != value) {
        resultToSet(*this, deviant, "upper").setUpper(value);
    }
}

void OperationIntf::removeUnlimitedNaturalUpper(Deviant deviant) {
    if (ZEL::Parameter const result = resultOf(*this, deviant); result.isValid()) {
        result.removeUpper();
    }
}

// --- type ------------------------------------------------------------------------------------------------------------

ZEL::Boolean OperationIntf::hasTypeType(Deviant deviant) const { return ZEL::Boolean(getTypeType(deviant).isValid()); }

ZEL::Type OperationIntf::getTypeType(Deviant deviant) const {
    ZEL::Parameter const result = resultOf(*this, deviant);
    return result.isValid() ? result.getType() : ZEL::Type();
}

void OperationIntf::setTypeType(Deviant deviant, ZEL::Type const & value) {
    if (!value.isValid()) {
        removeTypeType(deviant);
        return;
    }
    ZEL::Parameter result = resultOf(*this, deviant);
    if (!result.isValid()) {
        Parameter const made = internal::factoryBeside(Operation(this, deviant)).createParameter();
        made.setDirection(ZEL::ParameterDirectionKind::Return);
        getOwnedParameters(deviant).push_back(made);
        result = made;
    }
    result.setType(value);
}

void OperationIntf::removeTypeType(Deviant deviant) {
    if (ZEL::Parameter const result = resultOf(*this, deviant); result.isValid()) {
        result.removeType();
    }
}

void OperationIntf::setOnlyTypeType(Deviant deviant, ZEL::Type const & value) { setTypeType(deviant, value); }

void OperationIntf::removeOnlyTypeType(Deviant deviant) { removeTypeType(deviant); }

// --- the types of an association -------------------------------------------------------------------------------------

ZEL::Sequence<ZEL::Type> AssociationIntf::getTypeEndTypes(Deviant deviant) const {
    ZEL::Sequence<ZEL::Type> const types = ZEL::Generic::SequenceBuilder{deviant}.create<ZEL::Type>();
    for (ZEL::Property const & end : getMemberEnds(deviant)) {
        ZEL::Type const type = end.getType();
        if (type.isValid() && !types.contains(type)) {
            types.push_back(type);
        }
    }
    return types;
}

ZEL::Sequence<ZEL::Type> AssociationIntf::getTypeEndTypesWithoutAssociation(Deviant deviant) const {
    return getTypeEndTypes(deviant);
}

ZEL::Type AssociationIntf::getTypeEndTypeByName(Deviant deviant, ZEL::String const & name) {
    return ZEL::internal::firstNamed<ZEL::Type>(getTypeEndTypes(deviant), name);
}

ZEL::ImmutableType AssociationIntf::getTypeEndTypeByName(Deviant deviant, ZEL::String const & name) const {
    return ZEL::internal::firstNamed<ZEL::ImmutableType>(getTypeEndTypes(deviant), name);
}

} // namespace uml::NSInterface
