#pragma once

#include <filesystem>

namespace ZEL::Interchange {

/// The folder in which this library lies itself, whatever links or relative paths led the loader to it; what belongs to
/// the library is installed beside it. Empty if it cannot be told.
[[nodiscard]] std::filesystem::path ownFolder();

} // namespace ZEL::Interchange
