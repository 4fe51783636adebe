#include <hasp_util/GList.h>

#include <atomic>

namespace HASP::internal {

static_assert(alignof(int) >= std::atomic_ref<int>::required_alignment);

void SharingCount::add() noexcept { std::atomic_ref(fCount).fetch_add(1, std::memory_order_relaxed); }

bool SharingCount::remove() noexcept { return std::atomic_ref(fCount).fetch_sub(1, std::memory_order_acq_rel) == 1; }

bool SharingCount::isOne() const noexcept { return std::atomic_ref(fCount).load(std::memory_order_acquire) == 1; }

} // namespace HASP::internal
