#pragma once

#include <ZEL/metamodel/Association.h>
#include <ZEL/metamodel/MetaModelDeclaration.h>

namespace ZEL::internal {

/// Second phase of building a metamodel: superclasses, types, associations, plain values and storages of the
/// properties.
class MetaModelDefinition {
public:
    MetaModelDefinition(MetaModelDescriptor const & descriptor, MetaModelDeclaration const & declaration)
        : fDescriptor(descriptor), fDeclaration(declaration), fRoot(declaration.root()) {}

    void defineAll();

private:
    void defineClass(ClassDescriptor const & descriptor);
    void linkSuperClasses(ClassDescriptor const & descriptor);
    void defineProperty(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                        Property const & property);
    void defineAssociation(ClassDescriptor const & owner, PropertyDescriptor const & descriptor,
                           Property const & property);
    [[nodiscard]] Property makeOwnedEnd(Association const & association, PropertyDescriptor const & descriptor,
                                        Class const & type);
    void defineStorages(ClassDescriptor const & descriptor);

    MetaModelDescriptor const & fDescriptor;
    MetaModelDeclaration const & fDeclaration;
    Deviant fRoot;
};

/// The object that describes the class; invalid while its metamodel is not built.
[[nodiscard]] Class classObjectOf(ClassDescriptor const & descriptor);

/// The property object that the class of `descriptor` owns.
[[nodiscard]] ZEL_API Property definingProperty(PropertyDescriptor const & descriptor);

} // namespace ZEL::internal
