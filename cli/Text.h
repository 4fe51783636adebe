#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// The text as one line that is safe for a terminal: control characters, and bytes that are not UTF-8, become escapes
/// such as "\n" or "\x1B".
[[nodiscard]] std::string withoutControls(std::string_view text);
/// The same without white space at the end.
[[nodiscard]] std::string printable(std::string_view text);

/// The text escaped for the content of a page, or for an attribute value in double quotes.
[[nodiscard]] std::string escapedForHtml(std::string_view text);

/// An argument as a message shows it; "''" if it is empty.
[[nodiscard]] std::string nameOf(std::string const & file);

/// "1 object", "2 objects".
[[nodiscard]] std::string counted(std::size_t count, std::string const & noun);

} // namespace cli
