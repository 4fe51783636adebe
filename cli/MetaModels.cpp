#include "MetaModels.h"

#include "Command.h"
#include "NamedUris.h"
#include "UmlModule.h"

#include <ZEL/metamodel/MetaModelRegistry.h>
#include <ZEL/serializer/XmiConstants.h>

#include <Foreign/MetaModelRegistration.h>
#include <dlfcn.h>

#include <filesystem>
#include <string_view>

namespace cli {
namespace {

bool areAllRegistered = false;

[[noreturn]] void raiseNoModule() {
    char const * const reason = ::dlerror();
    throw Trouble(std::string("cannot load the metamodel of UML: ") + (reason == nullptr ? "no module" : reason));
}

/// The module lies in a folder beside the library. A run path of the program would not do: sanitizers open modules in
/// the program's stead.
std::filesystem::path moduleFile() {
    Dl_info library{};
    void const * const inLibrary = ZEL::MetaModelRegistry::instance();
    if (::dladdr(inLibrary, &library) == 0) {
        raiseNoModule();
    }
    return std::filesystem::path(library.dli_fname).parent_path() / ZEL_UML_MODULE;
}

/// Never unloaded: the registries refer to what is in it until the process ends.
decltype(&zelRegisterMetaModels) loadModule() {
    void * const module = ::dlopen(moduleFile().c_str(), RTLD_NOW);
    void * const function = module == nullptr ? nullptr : ::dlsym(module, "zelRegisterMetaModels");
    if (function == nullptr) {
        raiseNoModule();
    }
    return reinterpret_cast<decltype(&zelRegisterMetaModels)>(function);
}

bool isRegistered(std::string_view uri) {
    return uri == ZEL::Serializer::XmiConstants::XMI_NS_URI ||
           ZEL::MetaModelRegistry::instance()->getModelFromUri(std::string(uri)).isValid();
}

} // namespace

void registerSmallMetaModels() { Foreign::registerMetaModel(); }

void registerAllMetaModels() {
    if (!areAllRegistered) {
        loadModule()();
        areAllRegistered = true;
    }
}

void registerMetaModelsFor(std::string const & file, ZEL::Serializer::XmiReaderSettings const & settings) {
    registerSmallMetaModels();
    if (areAllRegistered) {
        return;
    }
    bool const isPlain = settings.getInputFormat().getFormat() == ZEL::Serializer::XmiFormat::Standard;
    bool const mayFollowLinks = settings.getExternalRootFolder().empty();
    if (!isPlain || !namesOnlyKnownUris(file, mayFollowLinks, isRegistered)) {
        registerAllMetaModels();
    }
}

} // namespace cli
