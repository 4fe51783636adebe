#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/UnlimitedNatural.h>
#include <ZEL/metamodel/GeneratorUtil.h>
#include <ZEL/metamodel/PropertyIntf.h>

namespace ZEL {

void GeneratorUtil::setupPropertyData(NSInterface::PropertyIntf * property, bool isReadOnly, bool isDerived,
                                      bool isComposite, bool isOrdered, bool isUnique, std::string const & defaultValue,
                                      VisibilityKind visibility, int lower, UnlimitedNatural upper,
                                      PersistenceKind persistence) {
    Deviant const root; // the null deviant stands for the root, and nothing is saved while a metamodel is built
    property->setIsReadOnly(root, Boolean(isReadOnly));
    property->setIsDerived(root, Boolean(isDerived));
    property->setIsComposite(root, Boolean(isComposite));
    property->setIsOrdered(root, Boolean(isOrdered));
    property->setIsUnique(root, Boolean(isUnique));
    property->setDefault(root, String(defaultValue));
    property->setVisibility(root, visibility);
    property->setLower(root, Integer(lower));
    property->setUpper(root, upper);
    property->setPersistence(root, persistence);
}

} // namespace ZEL
