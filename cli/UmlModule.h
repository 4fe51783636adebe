#pragma once

#include <ZEL/Export.h>

/// UML and its profiles are many times larger than all else that the program consists of, so they are not linked with
/// it. They are in a module beside it, of which this is the only function.
extern "C" {

/// Registers all metamodels that there are. Throws what the registration throws.
ZEL_API void zelRegisterMetaModels();
}
