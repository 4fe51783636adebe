#pragma once

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/values/LateTypes.h>

#include <vector>

namespace ZEL::internal {

class MetaModelDeclaration;
class ModelCore;

/// Builds the objects that describe a metamodel from its constant tables, and makes it known to the registries.
///
/// The built-in metamodel and those of applications take the same road. Nothing on the way may ask for the metaclass of
/// an object, for that is what is being built. The order of creation gives the objects their numbers, which files refer
/// to.
class ZEL_API MetaModelBuilder final : private LateTypes {
public:
    explicit MetaModelBuilder(MetaModelDescriptor const & descriptor) noexcept : fDescriptor(descriptor) {}

    /// Makes and returns the model. Leaves the registries alone, and enters no key if it throws, so that a failed build
    /// can be tried again.
    [[nodiscard]] MetaModel build();

    /// Enters types, creators, URIs and prefix in the registries, within a meta-registry section. The types of the first
    /// metamodel of the process wait until one is asked for: no name of theirs can be taken.
    void registerAll(MetaModel const & model) const;
    /// Takes them back. Where there is no memory for that, what stays known leads to a model that has gone.
    void unregisterAll() const noexcept;

    /// Takes the classes off the superclasses that belong to other metamodels, forgets the class objects and the keys,
    /// and ends the contents of the model if others than the caller hold it. What there is no memory for is left to the
    /// end of the models.
    void tearDown(MetaModel const & model) const noexcept;

private:
    void unregisterNames() const;
    void leaveSuperClasses(ModelCore const & model) const;
    void forgetClasses() const noexcept;
    void collectDataTypes(MetaModelDeclaration const & declaration);
    void registerTypes() const override;
    void unregisterTypes() const;
    void registerCreators() const;
    void bindUris(MetaModel const & model) const;

    MetaModelDescriptor const & fDescriptor;
    Deviant fRoot; ///< of the model that has been built
    /// The objects for the primitive types, then for the enumerations. Their model owns them.
    std::vector<NSInterface::TypeIntf *> fDataTypes;
};

} // namespace ZEL::internal
