#include "Text.h"

#include <array>
#include <cstdint>

namespace cli {
namespace {

struct Character {
    std::uint32_t code = 0;
    std::size_t length = 0; ///< in bytes; 0 if there is no whole and shortest UTF-8 sequence
};

Character characterAt(std::string_view text, std::size_t place) {
    auto const byte = [text](std::size_t index) {
        return index < text.size() ? static_cast<std::uint32_t>(static_cast<unsigned char>(text[index])) : 0U;
    };
    std::uint32_t const first = byte(place);
    if (first < 0x80U) {
        return {first, 1};
    }
    std::size_t const length = first >= 0xF0U ? 4 : first >= 0xE0U ? 3 : 2;
    std::uint32_t code = first & (0xFFU >> (length + 1));
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(place + i) & 0xC0U) != 0x80U) {
            return {};
        }
        code = code << 6U | (byte(place + i) & 0x3FU);
    }
    constexpr std::array<std::uint32_t, 5> kLeast{0, 0, 0x80U, 0x800U, 0x10000U};
    bool const isSurrogate = code >= 0xD800U && code <= 0xDFFFU;
    return code < kLeast.at(length) || code > 0x10FFFFU || isSurrogate ? Character() : Character{code, length};
}

/// Of a line end, an escape sequence or a change of the writing direction.
bool steersTerminal(std::uint32_t code) {
    return code < 0x20U || (code >= 0x7FU && code < 0xA0U) || code == 0x200EU || code == 0x200FU ||
           (code >= 0x2028U && code <= 0x202EU) || (code >= 0x2066U && code <= 0x2069U);
}

std::string hexadecimal(std::uint32_t code, int digits) {
    std::string text;
    for (int i = digits - 1; i >= 0; --i) {
        text += "0123456789ABCDEF"[code >> static_cast<unsigned>(4 * i) & 0xFU];
    }
    return text;
}

std::string escaped(std::uint32_t code) {
    switch (code) {
    case '\n':
        return "\\n";
    case '\r':
        return "\\r";
    case '\t':
        return "\\t";
    default:
        return code < 0x80U ? "\\x" + hexadecimal(code, 2) : "\\u" + hexadecimal(code, 4);
    }
}

} // namespace

std::string printable(std::string_view text) {
    return withoutControls(text.substr(0, text.find_last_not_of(" \n\r\t") + 1));
}

std::string withoutControls(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        Character const character = characterAt(text, i);
        if (character.length == 0) {
            result += "\\x" + hexadecimal(static_cast<unsigned char>(text[i]), 2);
            ++i;
            continue;
        }
        result += steersTerminal(character.code) ? escaped(character.code) : text.substr(i, character.length);
        i += character.length;
    }
    return result;
}

std::string escapedForHtml(std::string_view text) {
    std::string result;
    for (char const c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '>':
            result += "&gt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

std::string nameOf(std::string const & file) { return file.empty() ? "''" : file; }

std::string counted(std::size_t count, std::string const & noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace cli
