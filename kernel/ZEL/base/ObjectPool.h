#pragma once

#include <ZEL/Export.h>

#include <cstddef>

namespace ZEL::internal {

/// Memory of objects that come in millions or live for one call, and are of few sizes: bodies, states, sequence views. It
/// spares the allocator's word in front of each, and is given out again at once, since a transaction and its undo take
/// and give back states all the time, and reading a sequence takes and gives back views.
///
/// What has been given back serves later objects and does not leave the process. For one thread, like the kernel as a
/// whole. A build with `ZEL_SANITIZED` allocates plainly, so that a use after the end is found.
[[nodiscard]] ZEL_API void * takeFromPool(std::size_t size);
/// `size` is the size that was asked for.
ZEL_API void giveToPool(void * memory, std::size_t size) noexcept;

} // namespace ZEL::internal
