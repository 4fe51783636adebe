#pragma once

#include <ZEL/Export.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace ZEL::internal {

/// A piece of memory from which the pool cuts blocks of one size, with one number per block for the table of live
/// objects. It is aligned to its size, so that the piece can be found from the address of a block.
class ZEL_API PoolPiece {
public:
    static constexpr std::size_t kSize = std::size_t{32} * 1024;

    /// Makes a piece in `memory`, which is `kSize` bytes long and aligned to that; `blockSize` is a multiple of 8.
    static PoolPiece * make(void * memory, std::uint32_t blockSize);
    /// The piece that contains `address`; null for memory that is not the pool's. Constant time.
    [[nodiscard]] static PoolPiece * of(void const * address) noexcept;
    /// All pieces in the order in which they were made.
    [[nodiscard]] static std::span<PoolPiece * const> all() noexcept;

    PoolPiece(PoolPiece const &) = delete;
    PoolPiece & operator=(PoolPiece const &) = delete;

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
    explicit PoolPiece(std::uint32_t blockSize) noexcept;

    char * fBlocks;
    std::uint32_t fBlockSize;
    std::uint32_t fBlockCount;
    std::uint64_t fReciprocal;    ///< of `fBlockSize`, times 2^32 and rounded up: exact for offsets within a piece
    std::vector<bool> fInSection; ///< empty as long as no block of this piece is in a section
};

} // namespace ZEL::internal
