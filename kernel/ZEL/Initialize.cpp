#include <ZEL/Initialize.h>
#include <ZEL/base/Cleanup.h>
#include <ZEL/metamodel/BuiltInMetaModel.h>
#include <ZEL/metamodel/MetaModel.h>
#include <ZEL/metamodel/MetaModelBuilder.h>
#include <ZEL/serializer/Messages.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <new>

namespace ZEL {

namespace {

/// First of all tracked objects: makes the table of live objects, and with it the report at process end, older than all
/// that the bootstrap makes.
struct InitializeCleanup : Cleanup {};

/// The built-in metamodel, from load to process end.
class Bootstrap {
public:
    Bootstrap() : fBuilder(internal::builtInMetaModel()), fModel(fBuilder.build()) {
        try {
            Messages::addToCatalogue();
            fBuilder.registerAll(fModel);
        } catch (...) {
            end();
            throw;
        }
    }
    ~Bootstrap() { end(); }

    Bootstrap(Bootstrap const &) = delete;
    Bootstrap & operator=(Bootstrap const &) = delete;

private:
    void end() {
        fBuilder.unregisterAll();
        Messages::removeFromCatalogue();
        fBuilder.tearDown(fModel);
        fModel = MetaModel();
    }

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

constexpr int kCannotStart = 2; ///< the exit status, as of other programs that cannot do their work

[[noreturn]] void endAtLoad(char const * reason) noexcept {
    std::fprintf(stderr, "libzel: cannot start: %s\n", reason);
    std::_Exit(kCannotStart);
}

/// There may not even be memory for an exception, so while the library is loaded none is thrown for the want of it.
struct HandlerAtLoad {
    std::new_handler const before = std::set_new_handler([] { endAtLoad("out of memory"); });
};

/// Comes before all other objects of the library that need memory.
[[gnu::init_priority(101)]] HandlerAtLoad const handlerAtLoad;

/// Nobody can catch what is thrown before `main`, and without the metamodel no part of the library works.
bool initializeAtLoad() noexcept {
    try {
        initialize();
    } catch (std::exception const & exception) {
        endAtLoad(exception.what());
    }
    std::set_new_handler(handlerAtLoad.before);
    return true;
}

bool const kInitialized = initializeAtLoad();

} // namespace

} // namespace ZEL
