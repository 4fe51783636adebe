#pragma once

#include <hasp_util/Export.h>

#include <cstdint>
#include <string>
#include <utility>

namespace HASP {

/// A place in an XML file. Lines and columns count from 1; both are 0 before anything has been read.
class HOST_API Location {
public:
    Location(std::string systemId, std::uint64_t line, std::uint64_t column)
        : fSystemId(std::move(systemId)), fLine(line), fColumn(column) {}

    /// The name of the file as it was passed to the reader.
    [[nodiscard]] std::string const & getSystemId() const noexcept { return fSystemId; }
    [[nodiscard]] std::uint64_t getLineNumber() const noexcept { return fLine; }
    /// Counts characters, not bytes.
    [[nodiscard]] std::uint64_t getColumnNumber() const noexcept { return fColumn; }

private:
    std::string fSystemId;
    std::uint64_t fLine;
    std::uint64_t fColumn;
};

} // namespace HASP
