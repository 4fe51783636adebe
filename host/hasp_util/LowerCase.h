#pragma once

#include <string>
#include <string_view>

namespace HASP {

/// The text with its ASCII letters in lower case, whatever the process's locale.
[[nodiscard]] inline std::string lowerCase(std::string_view text) {
    std::string result(text);
    for (char & c : result) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return result;
}

} // namespace HASP
