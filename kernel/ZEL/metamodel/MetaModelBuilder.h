#pragma once

#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/MetaModel.h>

namespace ZEL::internal {

/// Builds the objects that describe a metamodel from its constant tables, and makes it known to the registries.
///
/// The built-in metamodel and those of applications take the same road. The objects are made by the metamodel's own
/// factory, with typed setters, the one-ended forms and the raw sequences only: nothing on the way may ask for the
/// metaclass of an object, for that is what is being built. The order of creation gives the objects their numbers,
/// which files refer to.
class ZEL_API MetaModelBuilder {
public:
    explicit MetaModelBuilder(MetaModelDescriptor const & descriptor) noexcept : fDescriptor(descriptor) {}

    /// Makes and returns the model. Leaves the registries alone, and enters no key if it throws, so that a failed build
    /// can be tried again.
    [[nodiscard]] MetaModel build() const;

    /// Enters types, creators, URIs and prefix in the registries, within a meta-registry section.
    void registerAll(MetaModel const & model) const;
    /// Takes them back. Where there is no memory for that, what stays known leads to a model that has gone.
    void unregisterAll() const noexcept;

    /// Takes the classes off the superclasses that belong to other metamodels, forgets the class objects and the keys,
    /// and ends the contents of the model. What there is no memory for is left to the end of the models.
    void tearDown(MetaModel const & model) const noexcept;

private:
    void unregisterNames() const;
    void leaveSuperClasses() const;
    void registerTypes() const;
    void registerCreators() const;
    void bindUris(MetaModel const & model) const;

    MetaModelDescriptor const & fDescriptor;
};

} // namespace ZEL::internal
