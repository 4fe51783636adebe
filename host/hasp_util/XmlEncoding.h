#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace HASP {

/// Encodings, by the labels that documents use for them.
class XmlEncoding {
public:
    /// Looks at the beginning of a document. Returns the parser's own name of the declared encoding if the document
    /// uses another common label for it, such as "iso8859-1" or "utf8"; null otherwise.
    [[nodiscard]] static char const * builtInName(std::string_view head);

    /// Converts the bytes in their place, which must have room for twice as many. Returns how many they have become.
    [[nodiscard]] static std::size_t latin1ToUtf8(char * bytes, std::size_t size) noexcept;

    /// Fills in the character that each byte stands for, -1 for none. Returns an empty text, or why that is impossible.
    [[nodiscard]] static std::string singleByteTable(char const * label, std::array<int, 256> & table);
};

} // namespace HASP
