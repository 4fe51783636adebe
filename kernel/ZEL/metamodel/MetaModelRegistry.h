#pragma once

#include <ZEL/base/Cleanup.h>
#include <ZEL/metamodel/Model.h>

#include <map>
#include <string>

namespace ZEL {

/// Finds a metamodel by its URI.
///
/// One for the process, made on first use. Holds each model that is bound, until it is unbound or the process ends.
class ZEL_API MetaModelRegistry : public Cleanup {
public:
    [[nodiscard]] static MetaModelRegistry * instance();

    /// Replaces another model, which is given up.
    void bindUriToModel(std::string const & uri, Model const & model);
    /// Nothing for an unknown URI.
    void unbindModelUri(std::string const & uri);
    /// An unknown URI is entered with an invalid handle, which is returned.
    [[nodiscard]] Model getModelFromUri(std::string const & uri);

private:
    MetaModelRegistry() = default;

    std::map<std::string, Model> fModels; ///< by URI
};

} // namespace ZEL
