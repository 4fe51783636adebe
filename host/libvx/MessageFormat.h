#pragma once

#include <hasp_util/Export.h>

#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace vx {

/// Fills arguments into a message's format. `%s`, `%d` and `%u` take the next argument, `%1` to `%9` the one of that
/// number, `%%` is a per cent sign. A directive without an argument, and any other, stays as it stands; a spare
/// argument is left out. Arguments are never taken for formats.
[[nodiscard]] HOST_API std::string formatMessage(std::string_view format, std::span<std::string const> args);
[[nodiscard]] HOST_API std::string formatMessage(std::string_view format, std::initializer_list<std::string> args);

/// The length of a text without a UTF-8 character at its end of which bytes are missing.
[[nodiscard]] std::size_t wholeUtf8(std::string_view text) noexcept;
/// The longest beginning of a text of at most so many bytes that ends with a whole UTF-8 character.
[[nodiscard]] HOST_API std::string_view cutUtf8(std::string_view text, std::size_t maxBytes) noexcept;

} // namespace vx
