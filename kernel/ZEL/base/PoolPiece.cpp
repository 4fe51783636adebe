#include <ZEL/base/OpenTable.h>
#include <ZEL/base/PoolPiece.h>

#include <array>
#include <cassert>
#include <new>

namespace ZEL::internal {

namespace {

std::uintptr_t keyOf(void const * address) noexcept {
    return reinterpret_cast<std::uintptr_t>(address) / PoolPiece::kSize;
}

/// The pieces by address. Objects that are destroyed after all statics of this library still use it, so it is never
/// destroyed.
class Pieces {
public:
    void add(PoolPiece * piece) {
        fTable.makeRoom(fAll.size() + 1, [](PoolPiece * other) { return homeOf(keyOf(other)); });
        fAll.push_back(piece);
        slotFor(keyOf(piece)) = piece;
        fRecent[keyOf(piece) % fRecent.size()] = {};
    }
    [[nodiscard]] PoolPiece * find(void const * address) noexcept {
        std::uintptr_t const key = keyOf(address);
        Recent & recent = fRecent[key % fRecent.size()];
        if (recent.key != key) {
            recent = {key, fTable.size() == 0 ? nullptr : slotFor(key)};
        }
        return recent.piece;
    }
    [[nodiscard]] std::span<PoolPiece * const> all() const noexcept { return fAll; }

private:
    struct Recent {
        std::uintptr_t key = 0;
        PoolPiece * piece = nullptr;
    };

    static std::uint64_t homeOf(std::uintptr_t key) noexcept { return mixed(key) >> 24; }
    /// The slot of the key, or the free one where it belongs.
    [[nodiscard]] PoolPiece *& slotFor(std::uintptr_t key) const noexcept {
        return fTable.find(homeOf(key), [key](PoolPiece * piece) { return keyOf(piece) == key; });
    }

    std::vector<PoolPiece *> fAll;
    OpenTable<PoolPiece *> fTable;
    std::array<Recent, 256> fRecent{};
};

Pieces & pieces() noexcept {
    static auto * const all = new Pieces;
    return *all;
}

} // namespace

void PoolPiece::divide(std::uint32_t blockSize) noexcept {
    assert(isEmpty());
    if (fBlockSize == blockSize) {
        return;
    }
    fBlockSize = blockSize;
    fReciprocal = ((std::uint64_t{1} << 32) + blockSize - 1) / blockSize;
    constexpr std::size_t kAlignment = 16;
    std::size_t const room = kSize - sizeof(PoolPiece) - kAlignment;
    fBlockCount = static_cast<std::uint32_t>(room / (blockSize + sizeof(std::uint32_t)));
    std::size_t const begin = sizeof(PoolPiece) + fBlockCount * sizeof(std::uint32_t);
    fBlocks = reinterpret_cast<char *>(this) + (begin + kAlignment - 1) / kAlignment * kAlignment;
    fInSection.clear();
    for (std::uint32_t i = 0; i < fBlockCount; ++i) {
        number(i) = 0;
    }
}

PoolPiece * PoolPiece::make(void * memory, std::uint32_t blockSize) {
    assert(reinterpret_cast<std::uintptr_t>(memory) % kSize == 0);
    auto * const piece = ::new (memory) PoolPiece;
    piece->divide(blockSize);
    pieces().add(piece);
    return piece;
}

PoolPiece * PoolPiece::of(void const * address) noexcept { return pieces().find(address); }

std::span<PoolPiece * const> PoolPiece::all() noexcept { return pieces().all(); }

} // namespace ZEL::internal
