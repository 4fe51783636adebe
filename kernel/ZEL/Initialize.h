#pragma once

#include <ZEL/Export.h>

namespace ZEL {

/// Builds the metamodel of the language and enters it in the registries, once; true ever after. A static initialiser of
/// the library calls it, so a client need not; a start that fails there ends the process with a line on standard error
/// and exit status 2. If it throws, the next call tries again.
ZEL_API bool initialize();

} // namespace ZEL
