#include <hasp_util/ErrorHolder.h>

#include <stdexcept>
#include <utility>

namespace HASP {

void ErrorHolder::setError(SimpleErrorDescription error) {
    if (fError) {
        throw std::logic_error("ErrorHolder: holds an error already");
    }
    fError = std::move(error);
}

std::string ErrorHolder::getMessage() const { return fError ? fError->getMessage() : std::string(); }

} // namespace HASP
