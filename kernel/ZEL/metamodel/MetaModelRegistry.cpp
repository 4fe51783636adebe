#include <ZEL/metamodel/MetaModelRegistry.h>

namespace ZEL {

MetaModelRegistry * MetaModelRegistry::instance() {
    static MetaModelRegistry registry;
    return &registry;
}

void MetaModelRegistry::bindUriToModel(std::string const & uri, Model const & model) { fModels[uri] = model; }

void MetaModelRegistry::unbindModelUri(std::string const & uri) { fModels.erase(uri); }

Model MetaModelRegistry::getModelFromUri(std::string const & uri) { return fModels[uri]; }

} // namespace ZEL
