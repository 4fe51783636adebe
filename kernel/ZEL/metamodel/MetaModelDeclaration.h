#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/Factory.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/Property.h>

#include <unordered_map>
#include <vector>

namespace ZEL::internal {

/// First phase of building a metamodel: every class, enumeration and primitive type, every property of every class, and
/// their keys. Nothing refers to anything yet, apart from containment.
class MetaModelDeclaration {
public:
    MetaModelDeclaration(MetaModelDescriptor const & descriptor, MetaModel const & model);

    void declareAll();

    [[nodiscard]] Package const & topPackage() const noexcept { return fTopPackage; }
    [[nodiscard]] Factory const & factory() const noexcept { return fFactory; }
    [[nodiscard]] Deviant root() const noexcept { return fRoot; }
    /// The property objects of a class of this metamodel: own ones, then clones.
    [[nodiscard]] std::vector<Property> const & properties(ClassDescriptor const & descriptor) const;
    /// Places an object in the top package, both ends.
    void placeType(Type const & type) const;

    /// Takes the keys of the metamodel out of the map, and the class objects out of the class tables.
    static void forget(MetaModelDescriptor const & descriptor, MetaModel const & model) noexcept;

private:
    void declareClass(ClassDescriptor const & descriptor);
    void declareEnumeration(EnumerationDescriptor const & descriptor) const;
    void declarePrimitive(PrimitiveDescriptor const & descriptor) const;
    [[nodiscard]] Property declareProperty(Class const & owner, PropertyDescriptor const & descriptor) const;
    void describe(Property const & property, char const * text) const;
    void enterType(char const * registeredName, char const * name, Object const & type) const;
    void enterOwnProperty(PropertyDescriptor const & descriptor, Property const & property) const;

    MetaModelDescriptor const & fDescriptor;
    MetaModel fModel;
    Factory fFactory;
    Deviant fRoot;
    Package fTopPackage;
    std::unordered_map<ClassDescriptor const *, std::vector<Property>> fProperties;
};

} // namespace ZEL::internal
