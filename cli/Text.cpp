#include "Text.h"

#include <utf8.h>

#include <cstdint>

namespace cli {
namespace {

/// Whether the character ends a line, begins an escape sequence or changes the writing direction.
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

/// What stands for the sign in a page; empty if it stands for itself.
std::string_view entityOf(char sign) {
    switch (sign) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    default:
        return {};
    }
}

} // namespace

std::string printable(std::string_view text) {
    return withoutControls(text.substr(0, text.find_last_not_of(" \n\r\t") + 1));
}

std::string withoutControls(std::string_view text) {
    std::string result;
    for (auto at = text.begin(); at != text.end();) {
        auto const valid = utf8::find_invalid(at, text.end());
        while (at != valid) {
            auto const start = at;
            std::uint32_t const code = utf8::unchecked::next(at);
            result += steersTerminal(code) ? escaped(code) : std::string(start, at);
        }
        if (at != text.end()) {
            result += "\\x" + hexadecimal(static_cast<unsigned char>(*at++), 2);
        }
    }
    return result;
}

std::string escapedForHtml(std::string_view text) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string_view const entity = entityOf(text[at]);
        if (!entity.empty()) {
            result.append(text.substr(done, at - done)).append(entity);
            done = at + 1;
        }
    }
    result.append(text.substr(done));
    return result;
}

std::string nameOf(std::string const & file) { return file.empty() ? "''" : file; }

std::string counted(std::size_t count, std::string const & noun) {
    return std::to_string(count) + ' ' + noun + (count == 1 ? "" : "s");
}

} // namespace cli
