#include "UmlModule.h"

#include <ZEL/interchange/Interchange.h>

void zelRegisterMetaModels() { ZEL::Interchange::registerMetaModels(); }
