#include <ZEL/metamodel/MetaModelRegistry.h>

namespace ZEL {

MetaModelRegistry * MetaModelRegistry::instance() {
    static MetaModelRegistry registry;
    return &registry;
}

} // namespace ZEL
