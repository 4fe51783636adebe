#pragma once

#include <ZEL/Export.h>

#include <cstddef>

namespace ZEL::internal {

/// Memory of bodies and states, which come in millions and in few sizes: without the allocator's word in front of each,
/// and given out again at once, since a transaction and its undo take and give back states all the time.
///
/// What has been given back serves later objects and does not leave the process. For one thread, like the kernel as a
/// whole. A build with `ZEL_SANITIZED` allocates plainly, so that a use after the end is found.
[[nodiscard]] ZEL_API void * takeFromPool(std::size_t size);
/// `size` is the size that was asked for.
ZEL_API void giveToPool(void * memory, std::size_t size) noexcept;

} // namespace ZEL::internal
