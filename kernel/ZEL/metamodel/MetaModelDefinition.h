#pragma once

#include <ZEL/metamodel/MetaModelDeclaration.h>

namespace ZEL::internal {

/// Second phase of building a metamodel: superclasses, types, associations and storages of the properties.
class MetaModelDefinition {
public:
    MetaModelDefinition(MetaModelDescriptor const & descriptor, MetaModelDeclaration & declaration)
        : fDescriptor(descriptor), fDeclaration(declaration), fObjects(declaration.objects()) {}

    void defineAll();

private:
    using DeclaredClass = MetaModelDeclaration::DeclaredClass;

    void defineClass(ClassDescriptor const & descriptor);
    void linkSuperClasses(ClassDescriptor const & descriptor, ClassInWork const & made);
    void defineProperty(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                        PropertyInWork const & property);
    void defineAssociation(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                           PropertyInWork const & property);
    [[nodiscard]] PropertyInWork makeOwnedEnd(AssociationInWork const & association,
                                              PropertyDescriptor const & descriptor, ClassDescriptor const & type);
    void setType(PropertyInWork const & property, NSInterface::TypeIntf & type) const;
    void setAssociation(PropertyInWork const & property, AssociationInWork const & association) const;
    [[nodiscard]] NSInterface::TypeIntf & typeOf(PropertyDescriptor const & descriptor) const;
    /// The property object that the class of `descriptor` owns, which may be of another metamodel.
    [[nodiscard]] PropertyInWork definingProperty(PropertyDescriptor const & descriptor) const;
    void defineStorages() const;

    MetaModelDescriptor const & fDescriptor;
    MetaModelDeclaration & fDeclaration;
    MetaModelObjects const & fObjects;
};

} // namespace ZEL::internal
