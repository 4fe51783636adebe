#pragma once

#include <ZEL/Export.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/PersistenceKind.h>
#include <ZEL/metamodel/VisibilityKind.h>

#include <string>

namespace ZEL {

namespace NSInterface {
class PropertyIntf;
} // namespace NSInterface

/// For metamodels that an application makes by hand.
class ZEL_API GeneratorUtil {
public:
    /// Sets the plain values of a metamodel property, in the order of the arguments, on the root deviant.
    static void setupPropertyData(NSInterface::PropertyIntf * property, bool isReadOnly, bool isDerived,
                                  bool isComposite, bool isOrdered, bool isUnique, std::string const & defaultValue,
                                  VisibilityKind visibility, int lower, UnlimitedNatural upper,
                                  PersistenceKind persistence);
};

} // namespace ZEL
