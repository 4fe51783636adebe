// Multiplicities. The unlimited upper bound is the largest unsigned number, so comparisons of upper bounds are
// unsigned.

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/MultiplicityElement.h>
#include <ZEL/metamodel/MultiplicityElementIntf.h>

namespace ZEL::NSInterface {

Integer MultiplicityElementIntf::lowerBound(Deviant deviant) const {
    return hasLower(deviant) ? getLower(deviant) : Integer(1);
}

UnlimitedNatural MultiplicityElementIntf::upperBound(Deviant deviant) const {
    return hasUpper(deviant) ? getUpper(deviant) : UnlimitedNatural(1U);
}

Boolean MultiplicityElementIntf::isMultivalued(Deviant deviant) const {
    return Boolean(static_cast<std::uint32_t>(upperBound(deviant)) > 1U);
}

Boolean MultiplicityElementIntf::includesCardinality(Deviant deviant, Integer const & cardinality) const {
    auto const number = static_cast<std::int32_t>(cardinality);
    return Boolean(static_cast<std::int32_t>(lowerBound(deviant)) <= number &&
                   static_cast<std::uint32_t>(number) <= static_cast<std::uint32_t>(upperBound(deviant)));
}

Boolean MultiplicityElementIntf::includesMultiplicity(Deviant deviant,
                                                      ImmutableMultiplicityElement const & other) const {
    return Boolean(static_cast<std::int32_t>(lowerBound(deviant)) <= static_cast<std::int32_t>(other.lowerBound()) &&
                   static_cast<std::uint32_t>(other.upperBound()) <= static_cast<std::uint32_t>(upperBound(deviant)));
}

} // namespace ZEL::NSInterface
