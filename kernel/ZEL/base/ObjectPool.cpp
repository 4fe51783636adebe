#include <ZEL/base/ObjectPool.h>

#ifndef ZEL_SANITIZED
#include <ZEL/base/PoolPiece.h>

#include <array>
#endif
#include <new>

namespace ZEL::internal {

#ifndef ZEL_SANITIZED
namespace {

/// Pieces that are linked by their own members, and leave in the order in which they came.
class PieceList {
public:
    explicit constexpr PieceList(PoolPiece::Place place) noexcept : fPlace(place) {}

    void push(PoolPiece & piece) noexcept {
        piece.place = fPlace;
        piece.previous = fLast;
        piece.next = nullptr;
        (fLast != nullptr ? fLast->next : fFirst) = &piece;
        fLast = &piece;
    }
    void remove(PoolPiece & piece) noexcept {
        (piece.previous != nullptr ? piece.previous->next : fFirst) = piece.next;
        (piece.next != nullptr ? piece.next->previous : fLast) = piece.previous;
        piece.place = PoolPiece::Place::Nowhere;
    }
    /// Null if there is none.
    [[nodiscard]] PoolPiece * pop() noexcept {
        PoolPiece * const piece = fFirst;
        if (piece != nullptr) {
            remove(*piece);
        }
        return piece;
    }

private:
    PoolPiece::Place fPlace;
    PoolPiece * fFirst = nullptr;
    PoolPiece * fLast = nullptr;
};

/// Blocks of one size: the piece from which they are taken, and the others that have free and used ones.
struct SizeClass {
    PoolPiece * current = nullptr;
    PieceList begun{PoolPiece::Place::Begun};
};

constexpr std::size_t kGrain = 8;
constexpr std::size_t kLargest = 512;
constexpr std::size_t kSlab = 32 * PoolPiece::kSize;

constinit std::array<SizeClass, kLargest / kGrain> sizeClasses{};
constinit PieceList emptyPieces{PoolPiece::Place::Empty}; ///< for blocks of any size
constinit char * slab = nullptr;
constinit std::size_t slabRest = 0;

/// Pieces are cut from slabs, since each aligned allocation wastes up to the alignment.
PoolPiece * newPiece(std::size_t blockSize) {
    if (slabRest == 0) {
        slab = static_cast<char *>(::operator new (kSlab, std::align_val_t{PoolPiece::kSize}));
        slabRest = kSlab;
    }
    PoolPiece * const piece = PoolPiece::make(slab, static_cast<std::uint32_t>(blockSize));
    slab += PoolPiece::kSize;
    slabRest -= PoolPiece::kSize;
    return piece;
}

/// An empty piece goes before one that is begun: a model is fast to read where its objects lie in the order of their
/// making.
void * takeFromNextPiece(SizeClass & sizeClass, std::size_t blockSize) {
    PoolPiece * piece = emptyPieces.pop();
    if (piece != nullptr) {
        piece->divide(static_cast<std::uint32_t>(blockSize));
    } else {
        piece = sizeClass.begun.pop();
    }
    sizeClass.current = piece != nullptr ? piece : newPiece(blockSize);
    return sizeClass.current->take();
}

/// A piece that is not taken from just now got a block back.
void enlist(SizeClass & sizeClass, PoolPiece & piece) noexcept {
    if (piece.isEmpty()) {
        if (piece.place == PoolPiece::Place::Begun) {
            sizeClass.begun.remove(piece);
        }
        emptyPieces.push(piece);
    } else if (piece.place == PoolPiece::Place::Nowhere) {
        sizeClass.begun.push(piece);
    }
}

} // namespace

void * takeFromPool(std::size_t size) {
    if (size > kLargest) {
        return ::operator new(size);
    }
    std::size_t const index = (size - 1) / kGrain;
    SizeClass & sizeClass = sizeClasses[index];
    if (sizeClass.current != nullptr) [[likely]] {
        if (void * const block = sizeClass.current->take()) [[likely]] {
            return block;
        }
    }
    return takeFromNextPiece(sizeClass, (index + 1) * kGrain);
}

void giveToPool(void * memory, std::size_t size) noexcept {
    if (memory == nullptr) {
        return;
    }
    if (size > kLargest) {
        ::operator delete(memory);
        return;
    }
    SizeClass & sizeClass = sizeClasses[(size - 1) / kGrain];
    PoolPiece & piece = PoolPiece::around(memory);
    piece.giveBack(memory);
    if (&piece != sizeClass.current) {
        enlist(sizeClass, piece);
    }
}
#else
void * takeFromPool(std::size_t size) { return ::operator new(size); }

void giveToPool(void * memory, std::size_t) noexcept { ::operator delete(memory); }
#endif

} // namespace ZEL::internal
