#pragma once

#include <ZEL/Export.h>

namespace ZEL {

/// Builds the metamodel of the language and fills the registries, once; true ever after. A static initialiser of the library
/// calls it, so a client need not. If it throws, the next call tries again.
ZEL_API bool initialize();

} // namespace ZEL
