#include "FailingHeap.h"

#include <algorithm>
#include <cstdlib>
#include <new>

namespace ZEL::tests::memory {

namespace {

bool isInForce = false;
bool isFailing = false; ///< some allocation has
bool isForGood = false;
long failing = 0;
long count = 0;

bool mayAllocate() noexcept {
    if (!isInForce) {
        return true;
    }
    ++count;
    bool const fails = count == failing || (isForGood && count > failing);
    isFailing = isFailing || fails;
    return !fails;
}

void * takeOrNull(std::size_t size) noexcept {
    return mayAllocate() ? std::malloc(std::max<std::size_t>(size, 1)) : nullptr;
}

void * takeOrNull(std::size_t size, std::align_val_t alignment) noexcept {
    auto const step = static_cast<std::size_t>(alignment);
    return mayAllocate() ? std::aligned_alloc(step, std::max<std::size_t>((size + step - 1) / step * step, step))
                         : nullptr;
}

void * orThrow(void * memory) {
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return memory;
}

} // namespace

FailingHeap::FailingHeap(long number, How how) noexcept {
    count = 0;
    failing = number;
    isForGood = how == How::FromThen;
    isFailing = false;
    isInForce = true;
}

FailingHeap::~FailingHeap() { isInForce = false; }

bool FailingHeap::hasFailed() noexcept { return isFailing; }

} // namespace ZEL::tests::memory

// Each form, since a sanitizer that finds one of its own beside one of these takes the pair for a mistake.
using ZEL::tests::memory::orThrow;
using ZEL::tests::memory::takeOrNull;

void * operator new(std::size_t size) { return orThrow(takeOrNull(size)); }
void * operator new[](std::size_t size) { return orThrow(takeOrNull(size)); }
void * operator new(std::size_t size, std::align_val_t alignment) { return orThrow(takeOrNull(size, alignment)); }
void * operator new[](std::size_t size, std::align_val_t alignment) { return orThrow(takeOrNull(size, alignment)); }
void * operator new(std::size_t size, std::nothrow_t const &) noexcept { return takeOrNull(size); }
void * operator new[](std::size_t size, std::nothrow_t const &) noexcept { return takeOrNull(size); }
void * operator new(std::size_t size, std::align_val_t alignment, std::nothrow_t const &) noexcept {
    return takeOrNull(size, alignment);
}
void * operator new[](std::size_t size, std::align_val_t alignment, std::nothrow_t const &) noexcept {
    return takeOrNull(size, alignment);
}

void operator delete(void * memory) noexcept { std::free(memory); }
void operator delete[](void * memory) noexcept { std::free(memory); }
void operator delete(void * memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void * memory, std::size_t) noexcept { std::free(memory); }
void operator delete(void * memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void * memory, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void * memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete[](void * memory, std::size_t, std::align_val_t) noexcept { std::free(memory); }
void operator delete(void * memory, std::nothrow_t const &) noexcept { std::free(memory); }
void operator delete[](void * memory, std::nothrow_t const &) noexcept { std::free(memory); }
void operator delete(void * memory, std::align_val_t, std::nothrow_t const &) noexcept { std::free(memory); }
void operator delete[](void * memory, std::align_val_t, std::nothrow_t const &) noexcept { std::free(memory); }
