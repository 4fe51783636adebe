#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace HASP {

/// Sixteen bytes of a document, copied and looked at together: texts of markup are short, so that the call of a function
/// that copies any number of bytes costs more than the copy.
class XmlBytes {
public:
    static constexpr std::size_t size = 16;

    [[nodiscard]] static XmlBytes at(char const * place) noexcept {
        XmlBytes bytes;
        std::memcpy(&bytes.fBytes, place, size);
        return bytes;
    }
    void putAt(char * place) const noexcept { std::memcpy(place, &fBytes, size); }

    /// Whether each byte stands for itself in any place of a document of any encoding. A byte that does so in some places
    /// only does not count.
    [[nodiscard]] bool arePlain() const noexcept {
        // Taken as signed, bytes beyond ASCII lie below the blank, as control characters do.
        auto const isNone = (fBytes < ' ') | (fBytes == '&') | (fBytes == '<') | (fBytes == '>') | (fBytes == '"');
        auto const halves = reinterpret_cast<Halves>(isNone);
        return (halves[0] | halves[1]) == 0;
    }

    /// Copies the text to a place with room for it and for these bytes, if all of it is plain. Otherwise what stands
    /// there is undefined.
    [[nodiscard]] static bool copyIfPlain(char * place, std::string_view text) noexcept {
        char const * at = text.data();
        char const * const end = at + text.size();
        if (text.size() < size) {
            return copyShortIfPlain(place, text);
        }
        for (; at + size <= end; at += size, place += size) {
            XmlBytes const bytes = XmlBytes::at(at);
            bytes.putAt(place);
            if (!bytes.arePlain()) {
                return false;
            }
        }
        // The rest together with what has been looked at already.
        auto const rest = static_cast<std::size_t>(end - at);
        XmlBytes const bytes = XmlBytes::at(end - size);
        bytes.putAt(place + rest - size);
        return bytes.arePlain();
    }

private:
    using Block [[gnu::vector_size(16)]] = signed char;
    using Halves [[gnu::vector_size(16)]] = std::int64_t;
    static constexpr std::int64_t kBlanks = 0x2020202020202020;

    [[nodiscard]] static XmlBytes ofHalves(std::int64_t first, std::int64_t second) noexcept {
        XmlBytes bytes;
        bytes.fBytes = reinterpret_cast<Block>(Halves{first, second});
        return bytes;
    }
    template <class Part> [[nodiscard]] static Part partAt(char const * place) noexcept {
        Part part;
        std::memcpy(&part, place, sizeof(part));
        return part;
    }

    /// Of a text that may end where memory does: its two ends, which may overlap.
    [[nodiscard]] static bool copyShortIfPlain(char * place, std::string_view text) noexcept {
        std::size_t const length = text.size();
        char const * const at = text.data();
        if (length >= 8) {
            auto const first = partAt<std::int64_t>(at);
            auto const last = partAt<std::int64_t>(at + length - 8);
            std::memcpy(place, &first, 8);
            std::memcpy(place + length - 8, &last, 8);
            return ofHalves(first, last).arePlain();
        }
        if (length >= 4) {
            auto const first = partAt<std::uint32_t>(at);
            auto const last = partAt<std::uint32_t>(at + length - 4);
            std::memcpy(place, &first, 4);
            std::memcpy(place + length - 4, &last, 4);
            return ofHalves(std::int64_t{last} << 32U | first, kBlanks).arePlain();
        }
        std::int64_t bytes = kBlanks;
        for (std::size_t i = 0; i < length; ++i) {
            place[i] = at[i];
            bytes = bytes << 8U | static_cast<unsigned char>(at[i]);
        }
        return ofHalves(bytes, kBlanks).arePlain();
    }

    Block fBytes;
};

/// A short text that is copied often, in whole `XmlBytes`.
class XmlPiece {
public:
    XmlPiece() = default;
    explicit XmlPiece(std::string_view text) : fText(text), fSize(text.size()) {
        fText.resize((fSize + XmlBytes::size - 1) / XmlBytes::size * XmlBytes::size);
    }

    [[nodiscard]] std::size_t size() const noexcept { return fSize; }
    [[nodiscard]] std::string_view view() const noexcept { return {fText.data(), fSize}; }
    /// To a place with room for the text and for `XmlBytes` after it. Returns the place after the text.
    char * copyTo(char * place) const noexcept {
        for (std::size_t at = 0; at < fText.size(); at += XmlBytes::size) {
            XmlBytes::at(fText.data() + at).putAt(place + at);
        }
        return place + fSize;
    }

private:
    std::string fText; ///< filled up with zeros to whole `XmlBytes`
    std::size_t fSize = 0;
};

} // namespace HASP
