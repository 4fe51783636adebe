#include <ZEL/values/Object.h>
#include <ZEL/values/String.h>

namespace ZEL {

String ImmutableObject::toString() const { return getImplementation()->toString(getDeviant()); }

String ImmutableObject::getFullyQualifiedOrcaTypeName() const {
    return isValid() ? String(getImplementation()->getOrcaName(true)) : String(getOrcaName());
}

Object Object::fromString(String const & text) const { return getImplementation()->fromString(getDeviant(), text); }

String Object::getFullyQualifiedOrcaTypeName() const {
    return isValid() ? String(getImplementation()->getOrcaName(false)) : String(getOrcaName());
}

} // namespace ZEL
