#pragma once

#include <hasp_util/Export.h>

#include <string>

namespace HASP {

/// How an `XmlWriter` writes.
class HOST_API XmlWriterSettings {
public:
    /// `indent` puts each element on a line of its own, two blanks per level. `encoding` is "iso8859-1" or "utf-8", or
    /// another usual spelling of these, and stands in the document as given; any other throws `std::invalid_argument`.
    /// `autoFlush` hands every finished element over to the system at once, which is slow.
    XmlWriterSettings(bool indent, std::string encoding, bool autoFlush);

    [[nodiscard]] bool getIndent() const noexcept { return fIndent; }
    [[nodiscard]] std::string const & getEncoding() const noexcept { return fEncoding; }
    /// Whether a character is a byte; otherwise the encoding is UTF-8.
    [[nodiscard]] bool isLatin1() const noexcept { return fIsLatin1; }
    [[nodiscard]] bool getAutoFlush() const noexcept { return fAutoFlush; }

private:
    std::string fEncoding;
    bool fIndent;
    bool fIsLatin1;
    bool fAutoFlush;
};

} // namespace HASP
