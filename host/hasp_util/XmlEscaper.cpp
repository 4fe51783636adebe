#include <hasp_util/XmlEscaper.h>

#include <utf8.h>

#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>

namespace HASP {

namespace {

struct Character {
    std::uint32_t code;
    int length; ///< in bytes; 0 if this is not UTF-8
};

Character decode(char const * at, char const * end) noexcept {
    if (static_cast<unsigned char>(*at) < 0x80) {
        return {static_cast<std::uint32_t>(*at), 1};
    }
    try {
        char const * next = at;
        std::uint32_t const code = utf8::next(next, end);
        return {code, static_cast<int>(next - at)};
    } catch (utf8::exception const &) {
        return {0, 0};
    }
}

// What a byte needs: nothing, a replacement, or a closer look.
constexpr unsigned char plain = 0;
constexpr unsigned char special = 1;
constexpr unsigned char bad = 2;
constexpr unsigned char beyondAscii = 3;

using ByteClasses = std::array<unsigned char, 256>;

constexpr ByteClasses byteClasses(XmlEscaper::Place place) {
    ByteClasses classes{};
    for (std::size_t i = 0; i < 0x20; ++i) {
        classes[i] = bad;
    }
    for (std::size_t i = 0x80; i < 0x100; ++i) {
        classes[i] = beyondAscii;
    }
    if (place == XmlEscaper::Place::Markup) {
        classes['\n'] = classes['\t'] = plain;
        return classes;
    }
    bool const isAttribute = place == XmlEscaper::Place::Attribute;
    // In an attribute a parser would turn line ends and tabs into blanks.
    classes['\n'] = classes['\t'] = isAttribute ? special : plain;
    classes['\r'] = classes['&'] = classes['<'] = classes['>'] = special;
    classes['"'] = isAttribute ? special : plain;
    return classes;
}

constexpr ByteClasses attributeClasses = byteClasses(XmlEscaper::Place::Attribute);
constexpr ByteClasses contentClasses = byteClasses(XmlEscaper::Place::Content);
constexpr ByteClasses markupClasses = byteClasses(XmlEscaper::Place::Markup);

ByteClasses const & classesOf(XmlEscaper::Place place) noexcept {
    switch (place) {
    case XmlEscaper::Place::Attribute:
        return attributeClasses;
    case XmlEscaper::Place::Markup:
        return markupClasses;
    default:
        return contentClasses;
    }
}

std::string_view replacement(char c) noexcept {
    switch (c) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\n':
        return "&#10;";
    case '\t':
        return "&#9;";
    default:
        return "&#13;";
    }
}

bool isWritable(Character character) noexcept {
    return character.length != 0 && character.code != 0xFFFE && character.code != 0xFFFF;
}

bool isNameStart(std::uint32_t c) noexcept {
    struct Range {
        std::uint32_t first;
        std::uint32_t last;
    };
    static constexpr std::array<Range, 15> ranges{{{'A', 'Z'},
                                                   {'_', '_'},
                                                   {'a', 'z'},
                                                   {0xC0, 0xD6},
                                                   {0xD8, 0xF6},
                                                   {0xF8, 0x2FF},
                                                   {0x370, 0x37D},
                                                   {0x37F, 0x1FFF},
                                                   {0x200C, 0x200D},
                                                   {0x2070, 0x218F},
                                                   {0x2C00, 0x2FEF},
                                                   {0x3001, 0xD7FF},
                                                   {0xF900, 0xFDCF},
                                                   {0xFDF0, 0xFFFD},
                                                   {0x10000, 0xEFFFF}}};
    for (Range const & range : ranges) {
        if (c >= range.first && c <= range.last) {
            return true;
        }
    }
    return false;
}

bool isNameCharacter(std::uint32_t c) noexcept {
    return isNameStart(c) || c == '-' || c == '.' || (c >= '0' && c <= '9') || c == 0xB7 ||
           (c >= 0x300 && c <= 0x36F) || c == 0x203F || c == 0x2040;
}

constexpr std::array<bool, 256> asciiNameCharacters() {
    std::array<bool, 256> result{};
    for (char const c : std::string_view("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-.")) {
        result[static_cast<unsigned char>(c)] = true;
    }
    return result;
}

constexpr std::array<bool, 256> isAsciiNameCharacter = asciiNameCharacters();

} // namespace

char const * XmlEscaper::putInRuns(XmlOutputFile & out, std::string_view text, Place place) const {
    ByteClasses const & classes = classesOf(place);
    char const * at = text.data();
    char const * const end = at + text.size();
    while (at < end) {
        char const * run = at;
        while (run < end && classes[static_cast<unsigned char>(*run)] == plain) {
            ++run;
        }
        out.put({at, static_cast<std::size_t>(run - at)});
        at = run;
        if (at == end) {
            break;
        }
        unsigned char const kind = classes[static_cast<unsigned char>(*at)];
        if (kind == special) {
            out.put(replacement(*at));
            ++at;
        } else {
            char const * const next = kind == bad ? at : putCharacter(out, at, end);
            if (next == at) {
                return at;
            }
            at = next;
        }
    }
    return nullptr;
}

// Returns the place after the character, or `at` itself if it cannot be written.
char const * XmlEscaper::putCharacter(XmlOutputFile & out, char const * at, char const * end) const {
    Character const character = decode(at, end);
    if (!isWritable(character)) {
        return at;
    }
    if (!fIsLatin1) {
        out.put({at, static_cast<std::size_t>(character.length)});
    } else if (character.code <= 0xFF) {
        out.put(static_cast<char>(character.code));
    } else {
        std::array<char, 16> reference{};
        int const length =
            std::snprintf(reference.data(), reference.size(), "&#x%X;", static_cast<unsigned>(character.code));
        out.put({reference.data(), static_cast<std::size_t>(length)});
    }
    return at + character.length;
}

char const * XmlEscaper::putName(XmlOutputFile & out, std::string_view name) const {
    char const * at = name.data();
    char const * const end = at + name.size();
    if (at == end || !(static_cast<unsigned char>(*at) >= 0x80 || isNameStart(static_cast<unsigned char>(*at)))) {
        return at;
    }
    while (at < end) {
        char const * run = at;
        while (run < end && isAsciiNameCharacter[static_cast<unsigned char>(*run)]) {
            ++run;
        }
        out.put({at, static_cast<std::size_t>(run - at)});
        at = run;
        if (at == end) {
            break;
        }
        Character const character = decode(at, end);
        bool const isFirst = at == name.data();
        if (character.length == 0 || !(isFirst ? isNameStart(character.code) : isNameCharacter(character.code)) ||
            (fIsLatin1 && character.code > 0xFF)) {
            return at;
        }
        at = putCharacter(out, at, end);
    }
    return nullptr;
}

char const * XmlEscaper::findUnwritable(std::string_view text) noexcept {
    char const * const end = text.data() + text.size();
    for (char const * at = text.data(); at < end;) {
        Character const character = decode(at, end);
        if (!isWritable(character) || contentClasses[static_cast<unsigned char>(*at)] == bad) {
            return at;
        }
        at += character.length;
    }
    return nullptr;
}

std::string XmlEscaper::describe(std::string_view text, char const * at) {
    char const * const end = text.data() + text.size();
    if (at == end) {
        return "nothing";
    }
    Character const character = decode(at, end);
    std::array<char, 32> buffer{};
    if (character.length == 0) {
        std::snprintf(buffer.data(), buffer.size(), "byte 0x%02X (not UTF-8)",
                      static_cast<unsigned>(static_cast<unsigned char>(*at)));
    } else {
        std::snprintf(buffer.data(), buffer.size(), "U+%04X", static_cast<unsigned>(character.code));
    }
    return buffer.data();
}

} // namespace HASP
