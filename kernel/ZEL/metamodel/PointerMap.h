#pragma once

#include <ZEL/base/OpenTable.h>

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// Values by pointer, in the order in which they come.
///
/// For walks over whole models: two flat arrays, so that a million entries cost little more each than a thousand.
/// Nothing is ever taken out.
template <class Value> class PointerMap {
public:
    struct Entry {
        void const * pointer;
        Value value;
    };

    /// For so many entries more than there are.
    void makeRoom(std::size_t more) {
        fEntries.reserve(fEntries.size() + more);
        makePlaces(more);
    }
    /// False if the pointer is there already.
    bool add(void const * pointer, Value value) {
        makePlaces(1);
        std::uint32_t & slot = slotOf(pointer);
        if (slot != 0) {
            return false;
        }
        fEntries.push_back({pointer, std::move(value)});
        slot = static_cast<std::uint32_t>(fEntries.size());
        return true;
    }
    /// Adds the pointer, or gives it another value.
    void set(void const * pointer, Value value) {
        if (!add(pointer, value)) {
            fEntries[slotOf(pointer) - 1].value = std::move(value);
        }
    }
    /// Null if the pointer is not there; good until the next `add`.
    [[nodiscard]] Value const * find(void const * pointer) const {
        std::uint32_t const slot = fPlaces.size() == 0 ? 0 : slotOf(pointer);
        return slot == 0 ? nullptr : &fEntries[slot - 1].value;
    }
    [[nodiscard]] std::vector<Entry> const & entries() const noexcept { return fEntries; }

private:
    void makePlaces(std::size_t more) {
        fPlaces.makeRoom(fEntries.size() + more,
                         [this](std::uint32_t place) { return homeOf(fEntries[place - 1].pointer); });
    }
    /// Pages are scattered; what lies together in a page stays together, because it is mostly asked for together.
    static std::uint64_t homeOf(void const * pointer) noexcept {
        auto const address = reinterpret_cast<std::uintptr_t>(pointer);
        return (mixed(address >> 12) >> 32) + (address >> 5 & 127);
    }
    [[nodiscard]] std::uint32_t & slotOf(void const * pointer) const noexcept {
        return fPlaces.find(homeOf(pointer),
                            [&](std::uint32_t place) { return fEntries[place - 1].pointer == pointer; });
    }

    std::vector<Entry> fEntries;
    OpenTable<std::uint32_t> fPlaces; ///< place in `fEntries` plus 1
};

} // namespace ZEL::internal
