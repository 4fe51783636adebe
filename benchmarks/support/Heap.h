#pragma once

#include <cstddef>

namespace ZEL::bench {

/// Bytes in use on the C heap, what the allocator adds to each block included.
[[nodiscard]] std::size_t heapInUse() noexcept;

} // namespace ZEL::bench
