#pragma once

#include <hasp_util/XmlOutputFile.h>

#include <string>
#include <string_view>

namespace HASP {

/// Turns UTF-8 texts into what stands for them in a document of the writer's encoding.
class XmlEscaper {
public:
    enum class Place { Attribute, Content };

    explicit XmlEscaper(bool isLatin1) noexcept : fIsLatin1(isLatin1) {}

    /// Returns null, or where the first character stands that no document can hold; what is before it is written then.
    [[nodiscard]] char const * put(XmlOutputFile & out, std::string_view text, Place place) const;
    /// A name without colon. Returns null, or where the first character stands that a name of this encoding cannot hold.
    /// An empty name fails at its end.
    [[nodiscard]] char const * putName(XmlOutputFile & out, std::string_view name) const;

    /// Null, or where the first character stands that no document can hold.
    [[nodiscard]] static char const * findUnwritable(std::string_view text) noexcept;
    /// How an error message names what stands there: "U+0001", "byte 0xE9 (not UTF-8)".
    [[nodiscard]] static std::string describe(std::string_view text, char const * at);

private:
    [[nodiscard]] char const * putCharacter(XmlOutputFile & out, char const * at, char const * end) const;

    bool fIsLatin1;
};

} // namespace HASP
