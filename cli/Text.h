#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace cli {

/// The text in one line that a terminal takes as it is: what would steer it, and bytes that are no UTF-8, are written as
/// "\n" or "\x1B".
[[nodiscard]] std::string withoutControls(std::string_view text);
/// The same without blanks at the end.
[[nodiscard]] std::string printable(std::string_view text);

/// The text as content of a page or value of an attribute in double quotes there.
[[nodiscard]] std::string escapedForHtml(std::string_view text);

/// What the user gave, for a message; "''" if it is empty.
[[nodiscard]] std::string nameOf(std::string const & file);

/// "1 object", "2 objects".
[[nodiscard]] std::string counted(std::size_t count, std::string const & noun);

} // namespace cli
