#pragma once

#include <hasp_util/CodeLocation.h>
#include <hasp_util/Export.h>

#include <string>
#include <utility>

namespace HASP {

/// An error: its text, and the place in the sources that found it.
class HOST_API SimpleErrorDescription {
public:
    SimpleErrorDescription(std::string message, CodeLocation location)
        : fMessage(std::move(message)), fLocation(std::move(location)) {}

    [[nodiscard]] std::string const & getMessage() const noexcept { return fMessage; }
    [[nodiscard]] CodeLocation const & getLocation() const noexcept { return fLocation; }

private:
    std::string fMessage;
    CodeLocation fLocation;
};

} // namespace HASP
