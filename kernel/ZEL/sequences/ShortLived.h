#pragma once

#include <ZEL/base/ObjectPool.h>

#include <cstddef>

namespace ZEL::internal {

/// Base of classes whose objects live for one call or one loop: sequence views, iterators, records of values.
///
/// Their memory comes from the pool, so that reaching an object's sequence costs no trip to the heap.
class ZEL_API ShortLived {
public:
    static void * operator new(std::size_t size) { return takeFromPool(size); }
    static void operator delete(void * memory, std::size_t size) noexcept { giveToPool(memory, size); }

protected:
    ShortLived() = default;
    ~ShortLived() = default;
};

} // namespace ZEL::internal
