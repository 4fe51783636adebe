#pragma once

#include <ZEL/Export.h>

#include <cstddef>

namespace ZEL::internal {

/// Base of classes whose objects live for one call or one loop: sequence views, iterators, records of values.
///
/// Their memory is kept in a few lists by size and given out again, so that reaching an object's sequence costs no trip
/// to the heap. Like the kernel as a whole, the lists are for one thread. A build with `ZEL_SANITIZED` allocates
/// plainly, so that a use after the end is found.
class ZEL_API ShortLived {
public:
    static void * operator new(std::size_t size);
    static void operator delete(void * memory, std::size_t size) noexcept;

protected:
    ShortLived() = default;
    ~ShortLived() = default;
};

} // namespace ZEL::internal
