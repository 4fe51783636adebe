// Names of elements, qualified and not.

#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/NamedElementIntf.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageIntf.h>
#include <ZEL/metamodel/ReflectionErrors.h>
#include <ZEL/metamodel/TypeIntf.h>

#include <string>
#include <utility>
#include <vector>

namespace ZEL::NSInterface {

namespace {

/// The name after those of the package and of all packages around it. Packages may be nested deeply. Containments of a
/// deviant and of the root can have combined to a ring; `mark` follows in jumps of doubling length and ends the walk.
String joinedName(Package owner, String const & separator, String const & name) {
    std::vector<std::string> names{name.str()};
    PackageIntf const * mark = nullptr;
    std::size_t nextMark = 2;
    for (; owner.isValid() && owner.getImplementation() != mark; owner = owner.getNestingPackage()) {
        names.push_back(owner.getName());
        if (names.size() == nextMark) {
            mark = owner.getImplementation();
            nextMark *= 2;
        }
    }
    std::string joined = std::move(names.back());
    for (auto inner = names.rbegin() + 1; inner != names.rend(); ++inner) {
        joined += separator.str();
        joined += *inner;
    }
    return String(std::move(joined));
}

} // namespace

Boolean NamedElementIntf::hasQualifiedName(Deviant deviant) const {
    return Boolean(!getQualifiedName(deviant).empty());
}

String NamedElementIntf::getQualifiedName(Deviant deviant) const {
    return getQualifiedNameWithSeperator(deviant, String("."));
}

void NamedElementIntf::setQualifiedName(Deviant, String const &) { internal::raiseReadOnly("qualifiedName"); }

void NamedElementIntf::removeQualifiedName(Deviant) { internal::raiseNotRemovable("qualifiedName"); }

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
