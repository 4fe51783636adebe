// Creators that also set what their arguments say.

#include <ZEL/Argument.h>
#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Constraint.h>
#include <ZEL/metamodel/ElementImport.h>
#include <ZEL/metamodel/ExtensionEnd.h>
#include <ZEL/metamodel/FactoryIntf.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageImport.h>
#include <ZEL/metamodel/PackageMerge.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/Profile.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/Stereotype.h>
#include <ZEL/metamodel/ValueSpecification.h>

namespace ZEL::NSInterface {

Constraint FactoryIntf::createConstraint(Deviant deviant, ValueSpecification const & specification) {
    Constraint const constraint = createConstraint(deviant);
    constraint.setSpecification(specification);
    return constraint;
}

PackageImport FactoryIntf::createPackageImport(Deviant deviant, Package const & imported, Namespace const & importing) {
    PackageImport const import = createPackageImport(deviant);
    import.setImportedPackage(imported);
    import.setImportingNamespace(importing);
    return import;
}

PackageMerge FactoryIntf::createPackageMerge(Deviant deviant, PackageMergeKind const & kind, Package const & receiving,
                                             Package const & merged) {
    PackageMerge const merge = createPackageMerge(deviant);
    merge.setMergeType(kind);
    merge.setReceivingPackage(receiving);
    merge.setMergedPackage(merged);
    return merge;
}

Profile FactoryIntf::createProfile(Deviant deviant, String const & name) {
    Profile const profile = createProfile(deviant);
    profile.setName(name);
    return profile;
}

Property FactoryIntf::createProperty(Deviant deviant, Boolean const & composite) {
    Property const property = createProperty(deviant);
    property.setIsComposite(composite);
    return property;
}

Argument FactoryIntf::createArgument(Deviant) { return Argument(); }

Argument FactoryIntf::createArgument(Deviant, String const & name, Object const & value) {
    return Argument(name, value);
}

ExtensionEnd FactoryIntf::createExtensionEnd(Deviant deviant, Stereotype const & stereotype, Boolean const & required) {
    ExtensionEnd const end = createExtensionEnd(deviant);
    end.setStereotypeType(stereotype);
    end.setIsRequired(required);
    return end;
}

ElementImport FactoryIntf::createElementImport(Deviant deviant, PackageableElement const & imported,
                                               Namespace const & importing) {
    ElementImport const import = createElementImport(deviant);
    import.setImportedElement(imported);
    import.setImportingNamespace(importing);
    return import;
}

Package FactoryIntf::createPackage(Deviant deviant, String const & name) {
    Package const package = createPackage(deviant);
    package.setName(name);
    return package;
}

} // namespace ZEL::NSInterface
