#pragma once

#include <array>
#include <string>
#include <string_view>

namespace HASP {

/// Encodings by the labels that documents give them.
class XmlEncoding {
public:
    /// From the beginning of a document: the name by which the parser itself knows the declared encoding, when the
    /// label is another common one for it, "iso8859-1" or "utf8"; null otherwise.
    [[nodiscard]] static char const * builtInName(std::string_view head);

    /// Fills in what character each byte stands for, -1 for none. Returns an empty text, or why it cannot be done.
    [[nodiscard]] static std::string singleByteTable(char const * label, std::array<int, 256> & table);
};

} // namespace HASP
