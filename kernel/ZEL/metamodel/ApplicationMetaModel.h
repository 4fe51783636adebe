#pragma once

#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/MetaModelBuilder.h>

namespace ZEL::internal {

/// The metamodel of an application, from its registration to its end.
///
/// One per generated metamodel, static within the generated `registerMetaModel`. Made after those that it builds on, so
/// that it goes before them at the end of the process.
class ZEL_API ApplicationMetaModel {
public:
    explicit ApplicationMetaModel(MetaModelDescriptor const & descriptor) noexcept : fBuilder(descriptor) {}
    ~ApplicationMetaModel();
    ApplicationMetaModel(ApplicationMetaModel const &) = delete;
    ApplicationMetaModel & operator=(ApplicationMetaModel const &) = delete;

    /// Builds the metamodel and makes it known; nothing if it is known. If it throws, the registries are as before.
    void enter();
    /// Takes it back. No model of the metamodel may be alive, nor may a metamodel that builds on it be known.
    void leave();
    /// An invalid handle as long as it is not known.
    [[nodiscard]] ImmutableMetaModel model() const { return fModel; }

private:
    MetaModelBuilder fBuilder;
    MetaModel fModel;
};

} // namespace ZEL::internal
