#pragma once

#include <ZEL/Export.h>

#include <cstddef>
#include <cstdint>
#include <new>
#include <span>
#include <vector>

namespace ZEL::internal {

/// A piece of memory with blocks of one size, and with one number per block for the table of live objects. It is aligned
/// to its size, so that the piece can be found from the address of a block.
///
/// A piece hands out its blocks in the order of their addresses, and takes back single ones for the next who asks. With
/// the last one returned it begins anew: objects that are made together lie together, in whatever order those that had
/// the memory before them ended.
class ZEL_API PoolPiece {
public:
    static constexpr std::size_t kSize = std::size_t{32} * 1024;

    /// Where the pool keeps a piece that has free blocks.
    enum class Place : std::uint8_t { Nowhere, Begun, Empty };

    /// Makes a piece in `memory`, which is `kSize` bytes long and aligned to that; `blockSize` is a multiple of 8.
    static PoolPiece * make(void * memory, std::uint32_t blockSize);
    /// Divides an empty piece into blocks of another size.
    void divide(std::uint32_t blockSize) noexcept;
    /// The piece that contains `address`; null for memory that is not the pool's. Constant time.
    [[nodiscard]] static PoolPiece * of(void const * address) noexcept;
    /// The piece of a block that `take` returned. Faster than `of`.
    [[nodiscard]] static PoolPiece & around(void * block) noexcept {
        return *reinterpret_cast<PoolPiece *>(reinterpret_cast<std::uintptr_t>(block) & ~(kSize - 1));
    }
    /// All pieces in the order in which they were made.
    [[nodiscard]] static std::span<PoolPiece * const> all() noexcept;

    PoolPiece(PoolPiece const &) = delete;
    PoolPiece & operator=(PoolPiece const &) = delete;

    /// A free block; null if there is none.
    [[nodiscard]] void * take() noexcept {
        if (FreeBlock * const block = fReturned) {
            fReturned = block->next;
            ++fInUse;
            return block;
        }
        if (fCut == fBlockCount) {
            return nullptr;
        }
        ++fInUse;
        return block(fCut++);
    }
    void giveBack(void * block) noexcept {
        if (--fInUse == 0) {
            fReturned = nullptr;
            fCut = 0;
        } else {
            fReturned = ::new (block) FreeBlock{fReturned};
        }
    }
    [[nodiscard]] bool isEmpty() const noexcept { return fInUse == 0; }

    /// The pool's lists of pieces with free blocks: the place of this one, and its neighbours there.
    Place place = Place::Nowhere;
    PoolPiece * previous = nullptr;
    PoolPiece * next = nullptr;

    [[nodiscard]] std::uint32_t blockCount() const noexcept { return fBlockCount; }
    [[nodiscard]] char * block(std::uint32_t index) noexcept { return fBlocks + std::size_t{index} * fBlockSize; }
    /// The block that contains `address`.
    [[nodiscard]] std::uint32_t indexOf(void const * address) const noexcept {
        auto const offset = static_cast<std::uint64_t>(static_cast<char const *>(address) - fBlocks);
        return static_cast<std::uint32_t>((offset * fReciprocal) >> 32);
    }

    /// 0 for a block that holds no live object.
    [[nodiscard]] std::uint32_t & number(std::uint32_t index) noexcept {
        return reinterpret_cast<std::uint32_t *>(this + 1)[index];
    }
    [[nodiscard]] bool isInSection(std::uint32_t index) const noexcept {
        return !fInSection.empty() && fInSection[index];
    }
    void setInSection(std::uint32_t index, bool inSection) {
        if (inSection && fInSection.empty()) {
            fInSection.resize(fBlockCount);
        }
        if (!fInSection.empty()) {
            fInSection[index] = inSection;
        }
    }

private:
    struct FreeBlock {
        FreeBlock * next;
    };

    PoolPiece() noexcept = default;

    FreeBlock * fReturned = nullptr;
    std::uint32_t fCut = 0; ///< number of blocks that have been handed out since the piece was empty last
    std::uint32_t fInUse = 0;
    char * fBlocks = nullptr;
    std::uint32_t fBlockSize = 0;
    std::uint32_t fBlockCount = 0;
    std::uint64_t fReciprocal = 0; ///< of `fBlockSize`, times 2^32 and rounded up: exact for offsets within a piece
    std::vector<bool> fInSection;  ///< empty as long as no block of this piece is in a section
};

} // namespace ZEL::internal
