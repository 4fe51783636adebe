#include <ZEL/base/Exception.h>
#include <ZEL/values/TypeInfoBase.h>

namespace ZEL::internal {

void requireNoError(HASP::ErrorHolder const & errors) {
    if (errors.hasError()) {
        raiseAnInternalError();
    }
}

void reportBadText(HASP::ErrorHolder & errors, std::string const & text, char const * nativeType, char const * file,
                   int line) {
    errors.setError({"Can't convert string '" + text + "' to " + nativeType, HASP::CodeLocation(file, line)});
}

} // namespace ZEL::internal
