#include <hasp_util/LowerCase.h>
#include <hasp_util/XmlEncoding.h>

#include <iconv.h>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstring>
#include <memory>

namespace HASP {

namespace {

std::string_view declaredLabel(std::string_view head) {
    if (!head.starts_with("<?xml")) {
        return {};
    }
    head = head.substr(0, head.find("?>"));
    std::size_t at = head.find("encoding");
    if (at == std::string_view::npos) {
        return {};
    }
    at = head.find_first_of("\"'", at);
    if (at == std::string_view::npos) {
        return {};
    }
    std::size_t const end = head.find(head[at], at + 1);
    return end == std::string_view::npos ? std::string_view() : head.substr(at + 1, end - at - 1);
}

struct CloseConverter {
    void operator()(void * converter) const noexcept { ::iconv_close(converter); }
};
using Converter = std::unique_ptr<void, CloseConverter>;

enum class Outcome { Character, NoCharacter, NeedsMore };

Outcome convertByte(void * converter, int byte, int & character) {
    char in = static_cast<char>(byte);
    char * inAt = &in;
    std::size_t inLeft = 1;
    std::array<unsigned char, 16> out{};
    char * outAt = reinterpret_cast<char *>(out.data());
    std::size_t outLeft = out.size();

    ::iconv(converter, nullptr, nullptr, nullptr, nullptr);
    if (::iconv(converter, &inAt, &inLeft, &outAt, &outLeft) == static_cast<std::size_t>(-1)) {
        return errno == EINVAL ? Outcome::NeedsMore : Outcome::NoCharacter;
    }
    // Some converters hold a letter back in case an accent follows.
    ::iconv(converter, nullptr, nullptr, &outAt, &outLeft);
    std::size_t const made = out.size() - outLeft;
    if (made == 0) {
        return Outcome::NeedsMore;
    }
    std::uint32_t const value = static_cast<std::uint32_t>(out[0]) | static_cast<std::uint32_t>(out[1]) << 8 |
                                static_cast<std::uint32_t>(out[2]) << 16 | static_cast<std::uint32_t>(out[3]) << 24;
    if (made != 4 || value > 0xFFFF) {
        return Outcome::NoCharacter;
    }
    character = static_cast<int>(value);
    return Outcome::Character;
}

/// Mostly all of a file is, so this looks at eight bytes in one go.
bool isAscii(char const * bytes, std::size_t size) noexcept {
    std::uint64_t all = 0;
    for (; size >= sizeof(all); bytes += sizeof(all), size -= sizeof(all)) {
        std::uint64_t word = 0;
        std::memcpy(&word, bytes, sizeof(word));
        all |= word;
    }
    for (; size != 0; ++bytes, --size) {
        all |= static_cast<unsigned char>(*bytes);
    }
    return (all & 0x8080808080808080U) == 0;
}

} // namespace

char const * XmlEncoding::builtInName(std::string_view head) {
    constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
    if (head.starts_with(byteOrderMark)) {
        head.remove_prefix(byteOrderMark.size());
    }
    std::string const label = lowerCase(declaredLabel(head));
    for (char const * latin1 : {"iso8859-1", "iso_8859-1", "iso88591", "iso8859_1", "latin1", "latin-1", "l1"}) {
        if (label == latin1) {
            return "ISO-8859-1";
        }
    }
    return label == "utf8" || label == "utf_8" ? "UTF-8" : nullptr;
}

std::size_t XmlEncoding::latin1ToUtf8(char * bytes, std::size_t size) noexcept {
    if (isAscii(bytes, size)) {
        return size;
    }
    auto const isBeyondAscii = [](char c) { return static_cast<unsigned char>(c) >= 0x80; };
    auto added = static_cast<std::size_t>(std::count_if(bytes, bytes + size, isBeyondAscii));
    std::size_t const newSize = size + added;
    // From the end, so that nothing is overwritten before it is read; what is in front of them all stays.
    for (std::size_t i = size; added != 0;) {
        constexpr std::size_t word = sizeof(std::uint64_t);
        if (i >= word && isAscii(bytes + i - word, word)) {
            std::memmove(bytes + i - word + added, bytes + i - word, word);
            i -= word;
            continue;
        }
        auto const byte = static_cast<unsigned char>(bytes[--i]);
        if (byte < 0x80) {
            bytes[i + added] = bytes[i];
        } else {
            bytes[i + added] = static_cast<char>(0x80U | (byte & 0x3FU));
            --added;
            bytes[i + added] = static_cast<char>(0xC0U | (byte >> 6U));
        }
    }
    return newSize;
}

std::string XmlEncoding::singleByteTable(char const * label, std::array<int, 256> & table) {
    iconv_t const opened = ::iconv_open("UCS-4LE", label);
    if (opened == reinterpret_cast<iconv_t>(-1)) {
        return std::string("unknown encoding '") + label + "'";
    }
    Converter const converter(opened);
    for (int byte = 0; byte < 256; ++byte) {
        int character = -1;
        if (convertByte(converter.get(), byte, character) == Outcome::NeedsMore) {
            return std::string("encoding '") + label +
                   "' needs more than one byte for a character; of such, only UTF-8 and UTF-16 are read";
        }
        table[static_cast<std::size_t>(byte)] = character;
    }
    return {};
}

} // namespace HASP
