#pragma once

#include <ZEL/base/Cleanup.h>

#include <memory>
#include <string>

namespace ZEL {

class Model;

/// Finds a metamodel by its URI.
///
/// One for the process, made on first use. Holds each model that is bound, until it is unbound or the process ends.
class ZEL_API MetaModelRegistry : public Cleanup {
public:
    [[nodiscard]] static MetaModelRegistry * instance();
    ~MetaModelRegistry() override;

    /// Replaces another model, which is given up.
    void bindUriToModel(std::string const & uri, Model const & model);
    /// Nothing for an unknown URI.
    void unbindModelUri(std::string const & uri);
    /// An unknown URI is entered with an invalid handle, and that is given.
    [[nodiscard]] Model getModelFromUri(std::string const & uri);

private:
    struct Bindings;
    MetaModelRegistry();

    std::unique_ptr<Bindings> fBindings;
};

} // namespace ZEL
