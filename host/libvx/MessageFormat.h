#pragma once

#include <hasp_util/Export.h>

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace vx {

/// Fills arguments into the format of a message. `%s`, `%d` and `%u` take the next argument, `%1` to `%9` the argument
/// of that number, `%%` is a per cent sign. A directive without an argument, or any other directive, is left as it is;
/// surplus arguments are ignored. Arguments are never interpreted as formats.
[[nodiscard]] HOST_API std::string formatMessage(std::string_view format, std::span<std::string const> args);
[[nodiscard]] HOST_API std::string formatMessage(std::string_view format, std::initializer_list<std::string> args);

/// The length of a text without an incomplete UTF-8 character at its end.
[[nodiscard]] std::size_t wholeUtf8(std::string_view text) noexcept;
/// The longest beginning of a text that has at most `maxBytes` bytes and ends with a complete UTF-8 character.
[[nodiscard]] HOST_API std::string_view cutUtf8(std::string_view text, std::size_t maxBytes) noexcept;

} // namespace vx
