#pragma once

#include <fstream>
#include <optional>
#include <sstream>
#include <string>

namespace zelgen {

/// The content of the file; nothing if it cannot be opened.
[[nodiscard]] inline std::optional<std::string> readText(std::string const & path) {
    std::ifstream stream(path, std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    std::ostringstream text;
    text << stream.rdbuf();
    return text.str();
}

} // namespace zelgen
