#pragma once

#include <hasp_util/Export.h>

#include <string>
#include <utility>

namespace HASP {

/// The place in the sources at which an error was found.
class HOST_API CodeLocation {
public:
    CodeLocation(std::string file, int line) : fFile(std::move(file)), fLine(line) {}

    [[nodiscard]] std::string const & getFile() const noexcept { return fFile; }
    [[nodiscard]] int getLine() const noexcept { return fLine; }

private:
    std::string fFile;
    int fLine;
};

} // namespace HASP
