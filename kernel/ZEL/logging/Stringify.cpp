#include <ZEL/base/Exception.h>
#include <ZEL/logging/Stringify.h>

#include <sstream>

namespace ZEL {

std::string stringify(double value) {
    std::ostringstream stream;
    if (!(stream << value)) {
        raiseInternalError("bad conversion stringify(double)");
    }
    return std::move(stream).str();
}

} // namespace ZEL
