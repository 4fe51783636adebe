#include <ZEL/metamodel/ObjectPool.h>

#include <array>
#include <new>

namespace ZEL::internal {

#ifndef ZEL_SANITIZED
namespace {

struct FreeBlock {
    FreeBlock * next;
};

/// Blocks of one size: those given back, and the rest of the piece that new ones are cut from.
struct SizeClass {
    FreeBlock * first = nullptr;
    char * rest = nullptr;
    std::size_t restSize = 0;
};

constexpr std::size_t kGrain = 8;
constexpr std::size_t kLargest = 512;
constexpr std::size_t kPiece = 32 * 1024;

constinit std::array<SizeClass, kLargest / kGrain> sizeClasses{};

void * cutNew(SizeClass & sizeClass, std::size_t size) {
    if (sizeClass.restSize < size) {
        sizeClass.rest = static_cast<char *>(::operator new(kPiece));
        sizeClass.restSize = kPiece;
    }
    void * const block = sizeClass.rest;
    sizeClass.rest += size;
    sizeClass.restSize -= size;
    return block;
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
