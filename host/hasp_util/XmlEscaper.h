#pragma once

#include <hasp_util/XmlBytes.h>
#include <hasp_util/XmlOutputFile.h>

#include <string>
#include <string_view>

namespace HASP {

/// Writes UTF-8 texts in the encoding of a document, with references for what it cannot hold.
class XmlEscaper {
public:
    /// `Markup` is a text that is XML already: of it only what the encoding cannot hold is replaced.
    enum class Place { Attribute, Content, Markup };

    explicit XmlEscaper(bool isLatin1) noexcept : fIsLatin1(isLatin1) {}

    /// Returns null, or the place of the first character that no document can hold; the text before it is then written.
    [[nodiscard]] char const * put(XmlOutputFile & out, std::string_view text, Place place) const {
        if (XmlBytes::copyIfPlain(out.room(text.size()), text)) {
            out.advance(text.size());
            return nullptr;
        }
        return putInRuns(out, text, place);
    }
    /// A name without a colon. Returns null, or the place of the first character that a name cannot hold in this
    /// encoding. An empty name fails at its end.
    [[nodiscard]] char const * putName(XmlOutputFile & out, std::string_view name) const;

    /// The place of the first character that no document can hold; null if there is none.
    [[nodiscard]] static char const * findUnwritable(std::string_view text) noexcept;
    /// The character at that place as an error message names it: "U+0001", "byte 0xE9 (not UTF-8)".
    [[nodiscard]] static std::string describe(std::string_view text, char const * at);

private:
    [[nodiscard]] char const * putInRuns(XmlOutputFile & out, std::string_view text, Place place) const;
    [[nodiscard]] char const * putCharacter(XmlOutputFile & out, char const * at, char const * end) const;

    bool fIsLatin1;
};

} // namespace HASP
