#pragma once

#include <cstddef>
#include <functional>
#include <string_view>

namespace ZEL::Serializer {

/// For hashes by text that are searched without making a string.
struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const noexcept { return std::hash<std::string_view>()(text); }
};

} // namespace ZEL::Serializer
