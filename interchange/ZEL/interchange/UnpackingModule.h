#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Exception.h>
#include <ZEL/interchange/UnpackedFile.h>

#include <string>

namespace ZEL::Interchange {

[[noreturn]] inline void raiseCannotUnpack(std::string const & container, std::string const & reason) {
    throw Exception("cannot unpack " + container + ": " + reason);
}

} // namespace ZEL::Interchange

/// What unpacks brings libraries of ciphers along, which take longer to load than all of ours, and few programs ever see
/// a container. So it is in a module beside the library, of which this is the only function.
extern "C" {

/// Unpacks the model of the container into the file `target`, and says its name in the container. Throws as the
/// constructor of `UnpackedFile`.
ZEL_API void zelUnpackModel(std::string const & container, ZEL::Interchange::UnpackingLimits const & limits,
                            std::string const & target, std::string & entry);
}
