#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Exception.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Numbers to and from text in the manner of a C++ stream with default settings, whatever the process's locale.
///
/// Reading skips leading blanks, accepts a sign, and ignores what follows the number; a text without a number at its
/// beginning, or with one out of range, yields nothing. A minus sign before an unsigned number wraps.
namespace ZEL::internal {

template <class T> [[nodiscard]] std::optional<T> numberFromText(std::string_view text) = delete;
template <> [[nodiscard]] ZEL_API std::optional<bool> numberFromText<bool>(std::string_view text); ///< "0" or "1"
template <> [[nodiscard]] ZEL_API std::optional<std::int32_t> numberFromText<std::int32_t>(std::string_view text);
template <> [[nodiscard]] ZEL_API std::optional<std::uint32_t> numberFromText<std::uint32_t>(std::string_view text);
template <> [[nodiscard]] ZEL_API std::optional<float> numberFromText<float>(std::string_view text);
template <> [[nodiscard]] ZEL_API std::optional<double> numberFromText<double>(std::string_view text);

/// Throws "Unable to convert from string to ", `typeName` and an exclamation mark if there is no number.
template <class T> [[nodiscard]] T requiredNumber(std::string_view text, char const * typeName) {
    std::optional<T> const number = numberFromText<T>(text);
    if (!number) {
        raiseInternalError(std::string("Unable to convert from string to ") + typeName + "!");
    }
    return *number;
}

/// Six significant digits.
[[nodiscard]] ZEL_API std::string textOfFloating(double value);

} // namespace ZEL::internal
