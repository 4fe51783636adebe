#include <ZEL/sequences/FreeList.h>

#include <array>
#include <new>

namespace ZEL::internal {

#ifndef ZEL_SANITIZED
namespace {

struct FreeBlock {
    FreeBlock * next;
};

struct SizeClass {
    FreeBlock * first = nullptr;
    unsigned int count = 0;
};

constexpr std::size_t kGrain = 16;
constexpr std::size_t kLargest = 256;
constexpr unsigned int kMostKept = 256; ///< of one size; a deep recursion of views must not keep its peak

constinit std::array<SizeClass, kLargest / kGrain> sizeClasses{};

constexpr std::size_t roundUp(std::size_t size) noexcept { return (size + kGrain - 1) / kGrain * kGrain; }

} // namespace

void * ShortLived::operator new(std::size_t size) {
    if (size > kLargest) {
        return ::operator new(size);
    }
    SizeClass & sizeClass = sizeClasses[(size - 1) / kGrain];
    if (FreeBlock * const block = sizeClass.first) {
        sizeClass.first = block->next;
        --sizeClass.count;
        return block;
    }
    return ::operator new(roundUp(size));
}

void ShortLived::operator delete(void * memory, std::size_t size) noexcept {
    if (memory == nullptr) {
        return;
    }
    if (size <= kLargest) {
        SizeClass & sizeClass = sizeClasses[(size - 1) / kGrain];
        if (sizeClass.count < kMostKept) {
            sizeClass.first = ::new (memory) FreeBlock{sizeClass.first};
            ++sizeClass.count;
            return;
        }
    }
    ::operator delete(memory);
}
#else
void * ShortLived::operator new(std::size_t size) { return ::operator new(size); }

void ShortLived::operator delete(void * memory, std::size_t) noexcept { ::operator delete(memory); }
#endif

} // namespace ZEL::internal
