#pragma once

#include <ZEL/Export.h>

#include <cstddef>

namespace ZEL::internal {

/// Allocates objects that exist in millions or live for one call, and come in few sizes: bodies, states, views of
/// sequences. It saves the allocator's header of each, and reuses memory quickly: a transaction and its undo allocate
/// and free states all the time, and reading a sequence does the same with views.
///
/// Objects of one size that are made one after the other lie side by side, also after other models have come and gone.
/// Freed memory is kept for later objects and not returned to the system. Not thread-safe, like the kernel as a whole.
/// A build with `ZEL_SANITIZED` allocates plainly, so that a use after free is found.
[[nodiscard]] ZEL_API void * takeFromPool(std::size_t size);
/// `size` is the size that was requested.
ZEL_API void giveToPool(void * memory, std::size_t size) noexcept;

} // namespace ZEL::internal
