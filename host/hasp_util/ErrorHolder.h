#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/SimpleErrorDescription.h>

#include <string>

namespace HASP {

/// Receives the error of an operation that reports instead of throwing. Made by the caller; holds at most one error.
class HOST_API ErrorHolder {
public:
    [[nodiscard]] bool hasError() const noexcept { return fHasError; }
    /// Throws `std::logic_error` if there is an error already.
    void setError(SimpleErrorDescription error);
    /// Null if there is no error.
    [[nodiscard]] SimpleErrorDescription const * getError() const noexcept { return fHasError ? &fError : nullptr; }
    /// The error's text; empty if there is no error.
    [[nodiscard]] std::string getMessage() const;

private:
    bool fHasError = false;
    SimpleErrorDescription fError{std::string(), CodeLocation(std::string(), 0)}; ///< empty until there is one
};

} // namespace HASP
