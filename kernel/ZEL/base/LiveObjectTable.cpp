#include <ZEL/base/LiveObjectTable.h>

#include <utility>

namespace ZEL::internal {

LiveObjectTable::LiveObjectTable() { makeRoom(); }

std::uint64_t LiveObjectTable::homeOf(std::uintptr_t key) noexcept { return mixed(key) >> 24; }

void LiveObjectTable::makeRoom() {
    fSlots.makeRoom(fPages + 1, [](PageSlot const & slot) { return homeOf(slot.key); });
}

LiveObjectTable::PageSlot & LiveObjectTable::slotFor(std::uintptr_t key) const noexcept {
    return fSlots.find(homeOf(key), [key](PageSlot const & slot) { return slot.key == key; });
}

LiveObjectTable::Page * LiveObjectTable::find(std::uintptr_t key) noexcept {
    if (key != fLastKey) {
        Page * const page = slotFor(key).page.get();
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
    makeRoom();
    PageSlot & slot = slotFor(key);
    slot.page = std::make_unique<Page>();
    slot.key = key;
    ++fPages;
    fLastKey = key;
    fLastPage = slot.page.get();
    return *fLastPage;
}

void LiveObjectTable::insert(Cleanup * object, std::uint32_t number, bool inSection) {
    // The one number whose entry would look like a free place is replaced by the one before it.
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
        Page const * const page = slotFor(keyOf(object)).page.get();
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
