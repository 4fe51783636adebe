#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/FactoryRegistry.h>
#include <ZEL/metamodel/Model.h>

#include <cstdlib>
#include <utility>

namespace ZEL {

FactoryRegistry * FactoryRegistry::fInstance = nullptr;

FactoryRegistry * FactoryRegistry::instance() {
    if (fInstance == nullptr) {
        fInstance = new FactoryRegistry;
        // Each instance brings its own: one that is made while the process ends is destroyed as well.
        std::atexit(&FactoryRegistry::deleter);
    }
    return fInstance;
}

FactoryRegistry::FactoryRegistry() = default;

FactoryRegistry::~FactoryRegistry() = default;

void FactoryRegistry::deleter() { delete std::exchange(fInstance, nullptr); }

void FactoryRegistry::enterModelCreator(std::string const & uri, ModelCreator creator) {
    fModelCreators[uri] = std::move(creator);
}

void FactoryRegistry::enterFactoryCreator(std::string const & uri, FactoryCreator creator) {
    fFactoryCreators[uri] = std::move(creator);
}

void FactoryRegistry::unregisterModelCreator(std::string const & uri) { fModelCreators.erase(uri); }

void FactoryRegistry::unregisterFactoryCreator(std::string const & uri) { fFactoryCreators.erase(uri); }

Model FactoryRegistry::createModel(std::string const & uri) const {
    auto const found = fModelCreators.find(uri);
    return found == fModelCreators.end() ? Model() : found->second();
}

FactoryObject FactoryRegistry::createFactory(std::string const & uri, Model const & model) const {
    auto const found = fFactoryCreators.find(uri);
    return found == fFactoryCreators.end() ? FactoryObject() : found->second(model);
}

} // namespace ZEL
