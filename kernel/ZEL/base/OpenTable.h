#pragma once

#include <ZEL/base/SoleOwner.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <utility>

namespace ZEL::internal {

/// A hash table with open addressing that consists of slots only: how a slot holds its key, and where a key belongs, is
/// left to the user.
///
/// A `Slot` is small, free when default-constructed, and converts to bool: whether it is taken. The number of slots is
/// a power of two; the user must keep some of them free, or a search does not end. A `home` is the hash of a key, of
/// which the table uses the low bits.
template <class Slot> class OpenTable {
public:
    [[nodiscard]] std::uint32_t size() const noexcept { return fSize; }
    [[nodiscard]] Slot * begin() const noexcept { return fSlots.get(); }
    [[nodiscard]] Slot * end() const noexcept { return fSlots.get() + fSize; }

    /// The slot for which `isIt(slot)` holds, or the free slot where it belongs. The table must have slots.
    template <class IsIt> [[nodiscard]] Slot & find(std::uint64_t home, IsIt isIt) const noexcept {
        std::uint32_t const mask = fSize - 1;
        std::uint32_t slot = static_cast<std::uint32_t>(home) & mask;
        while (fSlots[slot] && !isIt(fSlots[slot])) {
            slot = (slot + 1) & mask;
        }
        return fSlots[slot];
    }

    /// The slot for a key that is not in the table.
    [[nodiscard]] Slot & findFree(std::uint64_t home) const noexcept {
        return find(home, [](Slot const &) { return false; });
    }

    /// Makes the table large enough to be at most half full with `taken` slots; `homeOf(slot)` returns the home of a
    /// taken slot. Throws if there is no memory; nothing has changed then.
    template <class HomeOf> void makeRoom(std::size_t taken, HomeOf homeOf) {
        if (2 * taken <= fSize) {
            return;
        }
        OpenTable larger;
        larger.fSize = fSize < kFirstSize ? kFirstSize : fSize;
        while (larger.fSize < 2 * taken) {
            larger.fSize *= 2;
        }
        larger.fSlots = SoleOwner<Slot[]>(new Slot[larger.fSize]());
        for (Slot & slot : *this) {
            if (slot) {
                larger.findFree(homeOf(slot)) = std::move(slot);
            }
        }
        swap(larger);
    }

    /// Makes all slots free and their number `size`. Returns false, and leaves no slots, if there is no memory.
    [[nodiscard]] bool reset(std::uint32_t size) noexcept {
        if (size != fSize) {
            fSlots = SoleOwner<Slot[]>(new (std::nothrow) Slot[size]);
            fSize = fSlots ? size : 0;
        }
        for (Slot & slot : *this) {
            slot = Slot();
        }
        return fSize == size;
    }

    /// Frees a slot of this table. Later ones that belong before the gap move up, so that no search stops too early.
    template <class HomeOf> void erase(Slot & slot, HomeOf homeOf) noexcept {
        std::uint32_t const mask = fSize - 1;
        auto gap = static_cast<std::uint32_t>(&slot - fSlots.get());
        for (std::uint32_t next = (gap + 1) & mask; fSlots[next]; next = (next + 1) & mask) {
            auto const home = static_cast<std::uint32_t>(homeOf(fSlots[next])) & mask;
            if (((next - home) & mask) >= ((next - gap) & mask)) {
                fSlots[gap] = std::move(fSlots[next]);
                gap = next;
            }
        }
        fSlots[gap] = Slot();
    }

    void swap(OpenTable & other) noexcept {
        fSlots.swap(other.fSlots);
        std::swap(fSize, other.fSize);
    }

private:
    static constexpr std::uint32_t kFirstSize = 16;

    SoleOwner<Slot[]> fSlots;
    std::uint32_t fSize = 0;
};

/// Spreads keys that are close together, such as addresses, over the upper bits.
[[nodiscard]] constexpr std::uint64_t mixed(std::uint64_t key) noexcept { return key * 0x9E3779B97F4A7C15u; }

} // namespace ZEL::internal
