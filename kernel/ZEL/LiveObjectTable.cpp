#include <ZEL/LiveObjectTable.h>

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
    Page & page = findOrMake(keyOf(object));
    std::size_t const index = indexOf(object);
    std::uint32_t & place = page.numbers[index];
    if (place == kFree) {
        ++fSize;
    }
    // The one number that would look like a free place gives way to its neighbour.
    place = number + 1 != kFree ? number + 1 : number;
    if (inSection || page.hasSection) {
        page.inSection.set(index, inSection);
        page.hasSection = true;
    }
}

void LiveObjectTable::erase(Cleanup * object) noexcept {
    Page * const page = find(keyOf(object));
    if (page != nullptr && std::exchange(page->numbers[indexOf(object)], kFree) != kFree) {
        --fSize;
    }
}

} // namespace ZEL::internal
