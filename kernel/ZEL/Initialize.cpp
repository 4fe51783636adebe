#include <ZEL/Cleanup.h>
#include <ZEL/Initialize.h>
#include <ZEL/Messages.h>
#include <ZEL/metamodel/BuiltInMetaModel.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/MetaModelBuilder.h>

namespace ZEL {

namespace {

/// First of all tracked objects: makes the table of live objects, and with it the report at process end, older than all
/// that the bootstrap makes.
struct InitializeCleanup : Cleanup {};

/// The built-in metamodel, from load to process end.
class Bootstrap {
public:
    Bootstrap() : fBuilder(internal::builtInMetaModel()), fModel(fBuilder.build()) {
        Messages::addToCatalogue();
        fBuilder.registerAll(fModel);
    }

    ~Bootstrap() {
        fBuilder.unregisterAll();
        Messages::removeFromCatalogue();
        fBuilder.tearDown(fModel);
        fModel = MetaModel();
    }

    Bootstrap(Bootstrap const &) = delete;
    Bootstrap & operator=(Bootstrap const &) = delete;

private:
    internal::MetaModelBuilder fBuilder;
    MetaModel fModel;
};

} // namespace

bool initialize() {
    static InitializeCleanup const cleanup;
    static Bootstrap const bootstrap;
    return true;
}

namespace {

bool const kInitialized = initialize();

} // namespace

} // namespace ZEL
