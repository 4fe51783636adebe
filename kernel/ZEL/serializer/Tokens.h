#pragma once

#include <cstddef>
#include <string_view>

namespace ZEL::Serializer {

/// What separates links in an attribute, and elements in a file.
[[nodiscard]] constexpr bool isBlank(char c) noexcept { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

/// The text up to the next blank, taken off `rest`; empty if nothing but blanks is left. Links are so many that a
/// general tokenizer shows in the time of a read.
[[nodiscard]] inline std::string_view takeToken(std::string_view & rest) noexcept {
    std::size_t begin = 0;
    while (begin < rest.size() && isBlank(rest[begin])) {
        ++begin;
    }
    std::size_t end = begin;
    while (end < rest.size() && !isBlank(rest[end])) {
        ++end;
    }
    std::string_view const token = rest.substr(begin, end - begin);
    rest.remove_prefix(end);
    return token;
}

} // namespace ZEL::Serializer
