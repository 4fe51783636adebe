#pragma once

#include <hasp_util/Export.h>

#include <concepts>
#include <cstddef>
#include <string>
#include <string_view>

namespace HASP {

/// Splits a text at any of a set of delimiters. Tokens are never empty: adjacent delimiters count as one.
///
/// Refers to the caller's text, which must outlive the tokenizer and its tokens.
class HOST_API StringTokenizer {
public:
    /// Splits at white space unless other delimiters are given.
    explicit StringTokenizer(std::string_view text, std::string_view delimiters = " \t\n\r");
    template <std::same_as<std::string> Temporary>
    // NOLINTNEXTLINE(bugprone-forwarding-reference-overload)
    explicit StringTokenizer(Temporary && text, std::string_view delimiters = {}) = delete;

    [[nodiscard]] bool hasMoreTokens() const noexcept { return fNext < fText.size(); }
    /// Throws `std::out_of_range` if there are no more tokens.
    [[nodiscard]] std::string_view nextToken();

private:
    void skipDelimiters() noexcept;

    std::string_view fText;
    std::string fDelimiters;
    std::size_t fNext = 0;
};

} // namespace HASP
