#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/metamodel/Model.h>

#include <map>

namespace ZEL {

struct MetaModelRegistry::Bindings {
    std::map<std::string, Model> models; ///< by URI
};

MetaModelRegistry * MetaModelRegistry::instance() {
    static MetaModelRegistry registry;
    return &registry;
}

MetaModelRegistry::MetaModelRegistry() : fBindings(std::make_unique<Bindings>()) {}

MetaModelRegistry::~MetaModelRegistry() = default;

void MetaModelRegistry::bindUriToModel(std::string const & uri, Model const & model) { fBindings->models[uri] = model; }

void MetaModelRegistry::unbindModelUri(std::string const & uri) { fBindings->models.erase(uri); }

Model MetaModelRegistry::getModelFromUri(std::string const & uri) { return fBindings->models[uri]; }

} // namespace ZEL
