#include <ZEL/base/LiveObjectTable.h>

#include <utility>

namespace ZEL::internal {

LiveObjectTable::LiveObjectTable() : fSlots(64) {}

std::size_t LiveObjectTable::slotFor(std::uintptr_t key) const noexcept {
    std::size_t const mask = fSlots.size() - 1;
    std::size_t slot = ((static_cast<std::uint64_t>(key) * 0x9E3779B97F4A7C15u) >> 24) & mask;
    while (fSlots[slot].key != key && fSlots[slot].key != 0) {
        slot = (slot + 1) & mask;
    }
    return slot;
}

LiveObjectTable::Page * LiveObjectTable::find(std::uintptr_t key) noexcept {
    if (key != fLastKey) {
        Page * const page = fSlots[slotFor(key)].page.get();
        if (page == nullptr) {
            return nullptr;
        }
        fLastKey = key;
        fLastPage = page;
    }
    return fLastPage;
}

LiveObjectTable::Page & LiveObjectTable::findOrMake(std::uintptr_t key) {
    if (Page * const page = find(key)) {
        return *page;
    }
    if (2 * (fPages + 1) > fSlots.size()) {
        grow();
    }
    PageSlot & slot = fSlots[slotFor(key)];
    slot.page = std::make_unique<Page>();
    slot.key = key;
    ++fPages;
    fLastKey = key;
    fLastPage = slot.page.get();
    return *fLastPage;
}

void LiveObjectTable::grow() {
    std::vector<PageSlot> old(2 * fSlots.size());
    old.swap(fSlots);
    for (PageSlot & slot : old) {
        if (slot.key != 0) {
            fSlots[slotFor(slot.key)] = std::move(slot);
        }
    }
}

void LiveObjectTable::insert(Cleanup * object, std::uint32_t number, bool inSection) {
    // The one number that would look like a free place gives way to its neighbour.
    std::uint32_t const entry = number + 1 != kFree ? number + 1 : number;
    if (PoolPiece * const piece = PoolPiece::of(object)) {
        std::uint32_t const index = piece->indexOf(object);
        if (piece->block(index) == reinterpret_cast<char *>(object)) {
            piece->setInSection(index, inSection);
            fSize += piece->number(index) == kFree ? 1 : 0;
            piece->number(index) = entry;
            return;
        }
    }
    Page & page = findOrMake(keyOf(object));
    std::size_t const index = indexOf(object);
    fSize += page.numbers[index] == kFree ? 1 : 0;
    page.numbers[index] = entry;
    if (inSection || page.hasSection) {
        page.inSection.set(index, inSection);
        page.hasSection = true;
    }
}

Cleanup * LiveObjectTable::findBefore(void const * address) const noexcept {
    if (PoolPiece * const piece = PoolPiece::of(address); piece != nullptr && address >= piece->block(0)) {
        std::uint32_t const index = piece->indexOf(address);
        if (index < piece->blockCount() && piece->number(index) != kFree) {
            return reinterpret_cast<Cleanup *>(piece->block(index));
        }
    }
    std::uintptr_t const last = reinterpret_cast<std::uintptr_t>(address) & ~std::uintptr_t{7};
    for (std::uintptr_t at = last; at != 0 && last - at < kReach; at -= 8) {
        auto * const object = reinterpret_cast<Cleanup *>(at);
        Page const * const page = fSlots[slotFor(keyOf(object))].page.get();
        if (page != nullptr && page->numbers[indexOf(object)] != kFree) {
            return object;
        }
    }
    return nullptr;
}

void LiveObjectTable::erase(Cleanup * object) noexcept {
    if (PoolPiece * const piece = PoolPiece::of(object)) {
        std::uint32_t const index = piece->indexOf(object);
        if (piece->block(index) == reinterpret_cast<char *>(object)) {
            fSize -= std::exchange(piece->number(index), kFree) == kFree ? 0 : 1;
            return;
        }
    }
    Page * const page = find(keyOf(object));
    if (page != nullptr && std::exchange(page->numbers[indexOf(object)], kFree) != kFree) {
        --fSize;
    }
}

} // namespace ZEL::internal
