#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/Cleanup.h>
#include <ZEL/base/OpenTable.h>
#include <ZEL/base/PoolPiece.h>

#include <array>
#include <bitset>
#include <cstddef>
#include <cstdint>
#include <memory>

namespace ZEL::internal {

/// The live objects by address, for `Cleanup` alone.
///
/// Most objects are at the start of a block of the pool, whose piece has a number for it. For the others there is a
/// shadow of the heap: one page record per 4 KB of addresses in use, with one number per 16 bytes. Objects that are
/// made or freed one after the other are in the same piece or page, so entering and removing one costs little more than
/// a store. A record stays when its page is empty. Two objects may be 8 bytes apart, so addresses that are odd
/// multiples of 8 have pages of their own.
///
/// The numbers in the pieces of the pool are shared by all tables: there may be only one table in a process.
class ZEL_API LiveObjectTable {
public:
    LiveObjectTable();

    void insert(Cleanup * object, std::uint32_t number, bool inSection);
    /// Does nothing if the object is not in the table.
    void erase(Cleanup * object) noexcept;
    [[nodiscard]] std::size_t size() const noexcept { return fSize; }
    /// The nearest object that begins at `address` or up to `kReach` bytes before it, whether or not it extends that
    /// far; null if there is none. The memory at the address is not read.
    [[nodiscard]] Cleanup * findBefore(void const * address) const noexcept;

    static constexpr std::uintptr_t kReach = 4096; ///< more than the size of any object

    /// Calls `visit(object, number, inSection)` for each object, piece by piece and page by page.
    template <class Visit> void forEach(Visit visit) const {
        for (PoolPiece * const piece : PoolPiece::all()) {
            for (std::uint32_t i = 0; i < piece->blockCount(); ++i) {
                if (piece->number(i) != kFree) {
                    visit(*reinterpret_cast<Cleanup *>(piece->block(i)), piece->number(i) - 1, piece->isInSection(i));
                }
            }
        }
        for (PageSlot const & slot : fSlots) {
            for (std::size_t i = 0; slot.page != nullptr && i < kPerPage; ++i) {
                if (slot.page->numbers[i] != kFree) {
                    visit(*objectAt(slot.key, i), slot.page->numbers[i] - 1, slot.page->inSection.test(i));
                }
            }
        }
    }

private:
    static constexpr std::size_t kPerPage = 256;
    static constexpr std::uint32_t kFree = 0; ///< a taken place holds the number plus 1

    struct Page {
        std::array<std::uint32_t, kPerPage> numbers{};
        std::bitset<kPerPage> inSection;
        bool hasSection = false; ///< some bit of `inSection` was ever set
    };
    struct PageSlot {
        std::uintptr_t key = 0; ///< page number and the odd bit; 0 for a free slot
        std::unique_ptr<Page> page;
        explicit operator bool() const noexcept { return key != 0; }
    };

    static std::uintptr_t keyOf(void const * object) noexcept {
        auto const address = reinterpret_cast<std::uintptr_t>(object);
        return (address >> 12) << 1 | ((address >> 3) & 1);
    }
    static std::size_t indexOf(void const * object) noexcept {
        return (reinterpret_cast<std::uintptr_t>(object) >> 4) % kPerPage;
    }
    static Cleanup * objectAt(std::uintptr_t key, std::size_t index) noexcept {
        return reinterpret_cast<Cleanup *>((key >> 1) << 12 | index << 4 | (key & 1) << 3);
    }

    /// The slot of the key, or the free one where it belongs.
    [[nodiscard]] PageSlot & slotFor(std::uintptr_t key) const noexcept;
    [[nodiscard]] Page * find(std::uintptr_t key) noexcept;
    [[nodiscard]] Page & findOrMake(std::uintptr_t key);
    static std::uint64_t homeOf(std::uintptr_t key) noexcept;
    /// Makes room for one more page.
    void makeRoom();

    OpenTable<PageSlot> fSlots;
    std::size_t fPages = 0;
    std::size_t fSize = 0;
    std::uintptr_t fLastKey = 0;
    Page * fLastPage = nullptr;
};

/// `LiveObjectTable::findBefore` in the table of the process, including the object that has not been entered yet.
[[nodiscard]] Cleanup const * liveObjectBefore(void const * address) noexcept;

} // namespace ZEL::internal
