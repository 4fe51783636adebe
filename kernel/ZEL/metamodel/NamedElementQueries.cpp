// Names of elements, qualified and not.

#include <ZEL/Boolean.h>
#include <ZEL/Exception.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/NamedElementIntf.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageIntf.h>
#include <ZEL/metamodel/TypeIntf.h>

namespace ZEL::NSInterface {

namespace {

String joinedName(Package const & owner, String const & separator, String const & name) {
    return owner.isValid() ? String(owner.getQualifiedNameWithSeperator(separator).str() + separator.str() + name.str())
                           : name;
}

} // namespace

Boolean NamedElementIntf::hasQualifiedName(Deviant deviant) const {
    return Boolean(!getQualifiedName(deviant).empty());
}

String NamedElementIntf::getQualifiedName(Deviant deviant) const {
    return getQualifiedNameWithSeperator(deviant, String("."));
}

void NamedElementIntf::setQualifiedName(Deviant, String const &) {
    raiseInternalError("qualifiedName is a read-only derived property so you cannot use the set property method!");
}

void NamedElementIntf::removeQualifiedName(Deviant) {
    raiseUnimplemented("qualifiedName is a derived property and thus cannot have the remove method implemented");
}

String NamedElementIntf::separator(Deviant) const { return String("::"); }

String NamedElementIntf::getQualifiedNameWithSeperator(Deviant deviant, String const &) const {
    return getName(deviant);
}

String TypeIntf::getQualifiedNameWithSeperator(Deviant deviant, String const & separator) const {
    return joinedName(getPackage(deviant), separator, getName(deviant));
}

String PackageIntf::getQualifiedNameWithSeperator(Deviant deviant, String const & separator) const {
    return joinedName(getNestingPackage(deviant), separator, getName(deviant));
}

} // namespace ZEL::NSInterface
