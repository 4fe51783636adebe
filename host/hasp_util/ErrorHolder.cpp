#include <hasp_util/ErrorHolder.h>

#include <stdexcept>
#include <utility>

namespace HASP {

void ErrorHolder::setError(SimpleErrorDescription error) {
    if (fHasError) {
        throw std::logic_error("ErrorHolder: holds an error already");
    }
    fError = std::move(error);
    fHasError = true;
}

std::string ErrorHolder::getMessage() const { return fError.getMessage(); }

} // namespace HASP
