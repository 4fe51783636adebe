#pragma once

#include <ZEL/Export.h>

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// The value of a multi-valued field in an object's state: an ordered sequence of pointers without duplicates, in one
/// word. An empty sequence and one of one element allocate nothing; up to `MaximalBlock` elements lie in one block and
/// are searched one by one; more are held in trees, where every operation on one element costs O(log n).
///
/// Copies share their storage and cost one counter. The first write to a copy detaches what it changes: a block as a
/// whole, of trees the nodes on the way. So keeping the old value of a field costs no more than the difference.
///
/// Pointers are compared by address, never followed, and not counted. Counters of storage are plain: all copies of a
/// sequence belong to one thread. An operation that throws leaves the sequence as it was; only those not marked
/// `noexcept` do, for lack of memory (`std::bad_alloc`) or with 2^32 elements (`std::length_error`).
class ZEL_API PersistentSequence {
public:
    class Cursor;
    using value_type = void *;
    using const_iterator = Cursor;

    /// More elements than this are held in trees.
    static constexpr std::size_t MaximalBlock = 64;
    /// Trees that shrink to this number of elements become a block again.
    static constexpr std::size_t MinimalTree = 32;

    PersistentSequence() noexcept = default;
    PersistentSequence(PersistentSequence const & other) noexcept : word_(other.word_) {
        if (isCounted()) {
            ++counted()->refs;
        }
    }
    PersistentSequence(PersistentSequence && other) noexcept : word_(std::exchange(other.word_, 0)) {}
    constexpr ~PersistentSequence() { // so that there are constants with empty ones
        if (isCounted()) {
            release();
        }
    }
    PersistentSequence & operator=(PersistentSequence other) noexcept {
        swap(other);
        return *this;
    }
    void swap(PersistentSequence & other) noexcept { std::swap(word_, other.word_); }

    [[nodiscard]] bool empty() const noexcept { return word_ == 0; }
    [[nodiscard]] std::size_t size() const noexcept {
        return word_ == 0 ? 0 : isSingle() ? 1 : isLarge() ? largeSize() : block()->size;
    }
    /// `position` must be less than the size.
    [[nodiscard]] void * at(std::size_t position) const noexcept;
    [[nodiscard]] bool contains(void const * element) const noexcept;
    /// The position of `element`, or -1.
    [[nodiscard]] std::ptrdiff_t indexOf(void const * element) const noexcept;

    /// False, without any change, if `element` is present. `position` must not be greater than the size.
    bool insert(std::size_t position, void * element);
    bool push_back(void * element) { return insert(size(), element); }
    /// `position` must be less than the size.
    void eraseAt(std::size_t position);
    /// False if `element` is not present.
    bool erase(void const * element);
    /// False, without any change, if `element` is present at another position.
    bool replaceAt(std::size_t position, void * element);
    void clear() noexcept { PersistentSequence().swap(*this); }
    /// Takes the pointers of a range, which may be one of this sequence but must not hold duplicates. Linear, apart
    /// from sorting a long range whose addresses do not ascend.
    template <class Iterator> void assign(Iterator first, Iterator last);

    /// True if a look at the two words shows that the sequences are equal.
    [[nodiscard]] bool sharesStorageWith(PersistentSequence const & other) const noexcept {
        return word_ == other.word_;
    }
    /// Same elements in the same order. Linear, but parts that both share are passed over.
    [[nodiscard]] bool operator==(PersistentSequence const & other) const noexcept {
        return word_ == other.word_ || hasEqualElements(other);
    }

    [[nodiscard]] Cursor begin() const noexcept;
    [[nodiscard]] Cursor end() const noexcept;
    /// Calls `function(void *)` for each element in order. It must not change this sequence; it may change a copy.
    template <class Function> void forEach(Function function) const;

    /// Bytes of the storage, whether shared or not. Not constant: asks every node of a tree.
    [[nodiscard]] std::size_t heapBytes() const noexcept;

private:
    using Word = std::uint64_t;
    static_assert(sizeof(void *) == sizeof(Word), "the kinds of storage are told apart by bits of a 64-bit address");

    struct Counted {
        std::uint32_t refs = 1;
    };
    // Its elements follow it.
    struct alignas(Word) Block : Counted {
        std::uint16_t size;
        std::uint16_t capacity;

        Word * elements() noexcept { return reinterpret_cast<Word *>(this + 1); }
    };
    struct Large;
    // Neighbouring elements that lie in one piece: positions `first` to `first + count - 1`.
    struct Run {
        Word const * values = nullptr;
        std::size_t first = 0;
        std::size_t count = 0;
    };

    // 0: empty. Lowest bit set: the only element, whose own lowest bit is clear. Else the address of storage: of a
    // `Large` if the next bit is set, of a `Block` if not. An only element with an odd address lies in a block.
    static constexpr Word SingleTag = 1;
    static constexpr Word LargeTag = 2;
    Word word_ = 0;

    static Word toWord(void const * pointer) noexcept { return reinterpret_cast<std::uintptr_t>(pointer); }
    static void * toPointer(Word word) noexcept { return reinterpret_cast<void *>(std::uintptr_t{word}); }

    constexpr bool isSingle() const noexcept { return (word_ & SingleTag) != 0; }
    constexpr bool isCounted() const noexcept { return word_ != 0 && !isSingle(); }
    bool isLarge() const noexcept { return (word_ & (SingleTag | LargeTag)) == LargeTag; }
    void * single() const noexcept { return toPointer(word_ & ~SingleTag); }
    Counted * counted() const noexcept { return static_cast<Counted *>(toPointer(word_ & ~LargeTag)); }
    Block * block() const noexcept { return static_cast<Block *>(counted()); }
    Large * large() const noexcept;
    Large * ownLarge();

    static PersistentSequence ofBlock(std::size_t size, std::size_t capacity);
    static PersistentSequence ofWords(Word const * words, std::size_t count);
    static PersistentSequence ofLarge(std::vector<Word> const & words);
    Word * copyTo(Word * target, std::size_t begin, std::size_t end) const noexcept;
    Run runAt(std::size_t position) const noexcept;
    std::size_t largeSize() const noexcept;
    bool hasEqualElements(PersistentSequence const & other) const noexcept;
    static std::size_t roomFor(std::size_t count) noexcept;
    static std::size_t bytesOf(std::size_t capacity) noexcept;
    void assignWords(std::vector<Word> const & words);
    void assignFew(Word const * words, std::size_t count);
    void insertInSmall(std::size_t position, Word element);
    void eraseInSmall(std::size_t position);
    void becomeBlockWithout(std::size_t position);
    void release() noexcept;
};

/// A position in a sequence; steps cost O(1) on average, in both directions. It does not hold the sequence and is dead
/// after the next write to it: who writes on the way iterates over a copy. The end may be reached, not read.
class PersistentSequence::Cursor {
public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = void *;
    using difference_type = std::ptrdiff_t;
    using pointer = void * const *;
    using reference = void *;

    Cursor() noexcept = default;
    Cursor(PersistentSequence const & sequence, std::size_t position) noexcept
        : sequence_(&sequence), position_(position) {}

    [[nodiscard]] std::size_t position() const noexcept { return position_; }
    [[nodiscard]] void * operator*() const noexcept {
        if (sequence_->isSingle()) {
            return sequence_->single();
        }
        if (position_ - run_.first >= run_.count) { // unsigned: also if it lies before the run
            run_ = sequence_->runAt(position_);
        }
        return toPointer(run_.values[position_ - run_.first]);
    }
    Cursor & operator++() noexcept {
        ++position_;
        return *this;
    }
    Cursor operator++(int) noexcept {
        Cursor const old = *this;
        ++position_;
        return old;
    }
    Cursor & operator--() noexcept {
        --position_;
        return *this;
    }
    Cursor operator--(int) noexcept {
        Cursor const old = *this;
        --position_;
        return old;
    }
    /// Of two cursors on the same sequence.
    [[nodiscard]] bool operator==(Cursor const & other) const noexcept { return position_ == other.position_; }

private:
    PersistentSequence const * sequence_ = nullptr;
    std::size_t position_ = 0;
    mutable Run run_;
};

inline PersistentSequence::Cursor PersistentSequence::begin() const noexcept { return Cursor(*this, 0); }

inline PersistentSequence::Cursor PersistentSequence::end() const noexcept { return Cursor(*this, size()); }

inline void * PersistentSequence::at(std::size_t position) const noexcept {
    assert(position < size());
    if (isSingle()) {
        return single();
    }
    Run const run = isLarge() ? runAt(position) : Run{block()->elements(), 0, 0};
    return toPointer(run.values[position - run.first]);
}

template <class Iterator> void PersistentSequence::assign(Iterator first, Iterator last) {
    std::vector<Word> words;
    if constexpr (std::forward_iterator<Iterator>) {
        auto const count = static_cast<std::size_t>(std::distance(first, last));
        if (count <= MaximalBlock) {
            Word few[MaximalBlock];
            for (Word * next = few; first != last; ++first) {
                *next++ = toWord(*first);
            }
            assignFew(few, count);
            return;
        }
        words.reserve(count);
    }
    for (; first != last; ++first) {
        words.push_back(toWord(*first));
    }
    assignWords(words);
}

template <class Function> void PersistentSequence::forEach(Function function) const {
    if (isSingle()) {
        function(single());
        return;
    }
    for (std::size_t position = 0, count = size(); position < count;) {
        Run const run = runAt(position);
        for (std::size_t i = 0; i < run.count; ++i) {
            function(toPointer(run.values[i]));
        }
        position += run.count;
    }
}

} // namespace ZEL::internal
