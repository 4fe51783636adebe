#pragma once

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaModelKeys.h>
#include <ZEL/metamodel/MetaModelObjects.h>

#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::internal {

/// First phase of building a metamodel: every class, enumeration and primitive type, and every property of every class.
/// Nothing refers to anything yet, apart from containment.
class MetaModelDeclaration {
public:
    struct DeclaredClass {
        ClassInWork made;
        /// Own ones, then clones.
        std::vector<PropertyInWork> properties;
    };

    MetaModelDeclaration(MetaModelDescriptor const & descriptor, MetaModel const & model)
        : fDescriptor(descriptor), fObjects(model), fKeyed{&descriptor, fObjects.root(), {}, {}} {}

    void declareAll();

    [[nodiscard]] MetaModelObjects const & objects() const noexcept { return fObjects; }
    [[nodiscard]] PackageInWork const & topPackage() const noexcept { return fTopPackage; }
    /// Null for a class of another metamodel.
    [[nodiscard]] DeclaredClass const * find(ClassDescriptor const & descriptor) const;
    /// The enumeration or primitive type of that registered name; null for one of another metamodel.
    [[nodiscard]] NSInterface::TypeIntf * findDataType(std::string_view registeredName) const;
    /// The objects that have keys, so far.
    [[nodiscard]] KeyedObjects & keyed() noexcept { return fKeyed; }

    /// Places a type in the top package, which is told of all at once by `fillTopPackage`.
    void place(NSInterface::ObjectIntf & type, StateCore & state);
    void fillTopPackage() const;

private:
    void declareClass(ClassDescriptor const & descriptor);
    void declareEnumeration(EnumerationDescriptor const & descriptor);
    void declarePrimitive(PrimitiveDescriptor const & descriptor);
    [[nodiscard]] ClassInWork makeClass(ClassDescriptor const & descriptor);
    [[nodiscard]] PropertyInWork makeProperty(ClassInWork const & owner, PropertyDescriptor const & descriptor) const;
    void describe(PropertyInWork const & property, char const * text) const;

    MetaModelDescriptor const & fDescriptor;
    MetaModelObjects fObjects;
    PackageInWork fTopPackage;
    std::vector<NSInterface::ObjectIntf *> fPlaced;
    std::unordered_map<ClassDescriptor const *, DeclaredClass> fClasses;
    std::unordered_map<std::string_view, NSInterface::TypeIntf *> fDataTypes; ///< by registered name
    KeyedObjects fKeyed;
};

} // namespace ZEL::internal
