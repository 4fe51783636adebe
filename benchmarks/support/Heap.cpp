#include "support/Heap.h"

#include <malloc.h>

namespace ZEL::bench {

std::size_t heapInUse() noexcept {
    struct mallinfo2 const info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

} // namespace ZEL::bench
