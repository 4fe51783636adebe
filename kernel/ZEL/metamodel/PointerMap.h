#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// Values by pointer, in the order in which they come.
///
/// For walks over whole models: two flat arrays, so that a million entries cost little more each than a thousand. Nothing
/// is ever taken out.
template <class Value> class PointerMap {
public:
    struct Entry {
        void const * pointer;
        Value value;
    };

    /// False if the pointer is there already.
    bool add(void const * pointer, Value value) {
        if (2 * (fEntries.size() + 1) > fSlots.size()) {
            grow();
        }
        std::uint32_t & slot = fSlots[slotOf(pointer)];
        if (slot != 0) {
            return false;
        }
        fEntries.push_back({pointer, std::move(value)});
        slot = static_cast<std::uint32_t>(fEntries.size());
        return true;
    }
    /// Null if the pointer is not there; good until the next `add`.
    [[nodiscard]] Value const * find(void const * pointer) const {
        std::uint32_t const slot = fSlots.empty() ? 0 : fSlots[slotOf(pointer)];
        return slot == 0 ? nullptr : &fEntries[slot - 1].value;
    }
    [[nodiscard]] std::vector<Entry> const & entries() const noexcept { return fEntries; }

private:
    /// Pages are scattered; what lies together in a page stays together, because it is mostly asked for together.
    [[nodiscard]] std::size_t slotOf(void const * pointer) const {
        auto const address = static_cast<std::uint64_t>(reinterpret_cast<std::uintptr_t>(pointer));
        std::uint64_t const page = (address >> 12) * std::uint64_t{0x9E3779B97F4A7C15};
        std::size_t const mask = fSlots.size() - 1;
        std::size_t slot = static_cast<std::size_t>((page >> 32) + (address >> 5 & 127)) & mask;
        while (fSlots[slot] != 0 && fEntries[fSlots[slot] - 1].pointer != pointer) {
            slot = (slot + 1) & mask;
        }
        return slot;
    }
    void grow() {
        std::vector<std::uint32_t>(fSlots.empty() ? 16 : 2 * fSlots.size()).swap(fSlots);
        for (std::size_t i = 0; i < fEntries.size(); ++i) {
            fSlots[slotOf(fEntries[i].pointer)] = static_cast<std::uint32_t>(i + 1);
        }
    }

    std::vector<Entry> fEntries;
    std::vector<std::uint32_t> fSlots; ///< place plus 1, 0 for a free slot; a power of two, at most half full
};

} // namespace ZEL::internal
