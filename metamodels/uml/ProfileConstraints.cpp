// What is well-formed in profiles.

#include "Constraints.h"

#include <ZEL/Integer.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/sequences/Sequence.h>

#include <uml/AggregationKind.h>
#include <uml/Extension.h>
#include <uml/ExtensionEnd.h>
#include <uml/ExtensionEndIntf.h>
#include <uml/ExtensionIntf.h>
#include <uml/Generalization.h>
#include <uml/StereotypeIntf.h>

#include <cstdint>

namespace uml::NSInterface {

namespace {

using internal::allOf;
using ZEL::Deviant;

} // namespace

bool ExtensionIntf::satisfiesIsBinary(Deviant deviant) const {
    // The end at the metaclass is often in a file that was not read.
    return getMemberEnds(deviant).size() == 2 ||
           internal::hasUnknownTarget(Extension(const_cast<ExtensionIntf *>(this), deviant), "memberEnd");
}

bool ExtensionIntf::satisfiesNonOwnedEnd(Deviant deviant) const {
    return allOf(getMemberEnds(deviant), [](ZEL::Property const & end) {
        ZEL::Type const type = end.getType();
        return ExtensionEnd(end).isValid() || !type.isValid() || ZEL::Class(type).isValid();
    });
}

bool ExtensionEndIntf::satisfiesMultiplicity(Deviant deviant) const {
    std::int32_t const lower = getLower(deviant);
    return (lower == 0 || lower == 1) && getUpper(deviant) == ZEL::UnlimitedNatural(1U);
}

bool ExtensionEndIntf::satisfiesAggregation(Deviant deviant) const {
    return getAggregation(deviant) == AggregationKind::Composite;
}

bool StereotypeIntf::satisfiesGeneralize(Deviant deviant) const {
    return allOf(getGeneralizations(deviant), [](Generalization const & generalization) {
        Classifier const general = generalization.getGeneral();
        return !general.isValid() || ZEL::Stereotype(general).isValid();
    });
}

} // namespace uml::NSInterface
