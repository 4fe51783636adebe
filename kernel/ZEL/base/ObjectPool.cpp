#include <ZEL/base/ObjectPool.h>

#ifndef ZEL_SANITIZED
#include <ZEL/base/PoolPiece.h>

#include <array>
#endif
#include <new>

namespace ZEL::internal {

#ifndef ZEL_SANITIZED
namespace {

struct FreeBlock {
    FreeBlock * next;
};

/// Blocks of one size: the freed ones, and the piece from which new ones are cut.
struct SizeClass {
    FreeBlock * first = nullptr;
    PoolPiece * piece = nullptr;
    std::uint32_t used = 0;
};

constexpr std::size_t kGrain = 8;
constexpr std::size_t kLargest = 512;
constexpr std::size_t kSlab = 32 * PoolPiece::kSize;

constinit std::array<SizeClass, kLargest / kGrain> sizeClasses{};
constinit char * slab = nullptr;
constinit std::size_t slabRest = 0;

/// Pieces are cut from slabs, since each aligned allocation wastes up to the alignment.
PoolPiece * newPiece(std::size_t blockSize) {
    if (slabRest == 0) {
        slab = static_cast<char *>(::operator new (kSlab, std::align_val_t{PoolPiece::kSize}));
        slabRest = kSlab;
    }
    PoolPiece * const piece = PoolPiece::make(slab, static_cast<std::uint32_t>(blockSize));
    slab += PoolPiece::kSize;
    slabRest -= PoolPiece::kSize;
    return piece;
}

void * cutNew(SizeClass & sizeClass, std::size_t size) {
    if (sizeClass.piece == nullptr || sizeClass.used == sizeClass.piece->blockCount()) {
        sizeClass.piece = newPiece(size);
        sizeClass.used = 0;
    }
    return sizeClass.piece->block(sizeClass.used++);
}

} // namespace

void * takeFromPool(std::size_t size) {
    if (size > kLargest) {
        return ::operator new(size);
    }
    std::size_t const index = (size - 1) / kGrain;
    SizeClass & sizeClass = sizeClasses[index];
    if (FreeBlock * const block = sizeClass.first) {
        sizeClass.first = block->next;
        return block;
    }
    return cutNew(sizeClass, (index + 1) * kGrain);
}

void giveToPool(void * memory, std::size_t size) noexcept {
    if (memory == nullptr) {
        return;
    }
    if (size > kLargest) {
        ::operator delete(memory);
        return;
    }
    SizeClass & sizeClass = sizeClasses[(size - 1) / kGrain];
    sizeClass.first = ::new (memory) FreeBlock{sizeClass.first};
}
#else
void * takeFromPool(std::size_t size) { return ::operator new(size); }

void giveToPool(void * memory, std::size_t) noexcept { ::operator delete(memory); }
#endif

} // namespace ZEL::internal
