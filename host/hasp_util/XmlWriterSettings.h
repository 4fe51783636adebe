#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace HASP {

/// How an `XmlWriter` writes.
class HOST_API XmlWriterSettings {
public:
    /// `indent` puts each element on a line of its own, indented by two blanks per level. `encoding` is "iso8859-1" or
    /// "utf-8", or another common spelling of these, and is written into the document as it is; any other throws
    /// `std::invalid_argument`. `autoFlush` passes each finished element to the system at once, which is slow.
    XmlWriterSettings(bool indent, std::string encoding, bool autoFlush);

    [[nodiscard]] bool getIndent() const noexcept { return fIndent; }
    [[nodiscard]] std::string const & getEncoding() const noexcept { return fEncoding; }
    /// Whether the encoding is ISO 8859-1; otherwise it is UTF-8.
    [[nodiscard]] bool isLatin1() const noexcept { return fIsLatin1; }
    [[nodiscard]] bool getAutoFlush() const noexcept { return fAutoFlush; }

private:
    std::string fEncoding;
    bool fIndent;
    bool fIsLatin1;
    bool fAutoFlush;
};

} // namespace HASP
