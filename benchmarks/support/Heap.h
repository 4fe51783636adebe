#pragma once

#include <cstddef>

namespace ZEL::bench {

/// Bytes in use on the C heap, including what the allocator adds to each block.
[[nodiscard]] std::size_t heapInUse() noexcept;

} // namespace ZEL::bench
