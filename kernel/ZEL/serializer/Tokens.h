#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ZEL::Serializer {

/// What separates links in an attribute, and elements in a file.
[[nodiscard]] constexpr bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// Whether any of eight bytes is a blank, or a control character, which no file holds.
[[nodiscard]] inline bool mayHoldBlank(char const * bytes) noexcept {
    constexpr std::uint64_t each = 0x0101010101010101;
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof(word));
    return ((word - each * (' ' + 1)) & ~word & (each * 0x80)) != 0;
}

/// The text up to the next blank, taken off `rest`; empty if nothing but blanks is left. Links are so many that a
/// general tokenizer shows in the time of a read.
[[nodiscard]] inline std::string_view takeToken(std::string_view & rest) noexcept {
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end + sizeof(std::uint64_t) <= rest.size() && !mayHoldBlank(rest.data() + end)) {
        end += sizeof(std::uint64_t);
    }
    while (end < rest.size() && !isBlank(rest[end])) {
        ++end;
    }
    std::string_view const token = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return token;
}

} // namespace ZEL::Serializer
