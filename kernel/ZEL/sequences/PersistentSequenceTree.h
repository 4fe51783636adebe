#pragma once

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace ZEL::internal {

struct PersistentSequenceNode;

/// An ordered map from 64-bit keys to 64-bit values that also knows the position of each entry: a B+ tree whose inner
/// nodes hold the number of entries below each child. Copies share all nodes and cost one counter; a write copies the
/// nodes on its way that another copy can see, and works in place on all others. Counters are plain: copies of one tree
/// belong to one thread.
///
/// A write has two halves, so that several trees can be changed together or not at all: `prepare...` does everything
/// that may fail and leaves all entries as they are, the write itself cannot fail and must follow before the next
/// preparation of this tree. Working part of `PersistentSequenceLarge`, not for use elsewhere.
class PersistentSequenceTree {
public:
    using Word = std::uint64_t;

    struct Entry {
        Word key;
        Word value;
    };

    /// A stretch of neighbouring values: positions `first` to `first + count - 1`.
    struct Run {
        Word const * values = nullptr;
        std::size_t first = 0;
        std::size_t count = 0;
    };

    PersistentSequenceTree() noexcept = default;
    PersistentSequenceTree(PersistentSequenceTree const & other) noexcept;
    PersistentSequenceTree(PersistentSequenceTree && other) noexcept
        : root_(std::exchange(other.root_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    /// Builds from entries in ascending order of their keys, in linear time.
    explicit PersistentSequenceTree(std::vector<Entry> const & entries);
    ~PersistentSequenceTree();

    PersistentSequenceTree & operator=(PersistentSequenceTree other) noexcept {
        swap(other);
        return *this;
    }
    void swap(PersistentSequenceTree & other) noexcept {
        std::swap(root_, other.root_);
        std::swap(size_, other.size_);
    }

    [[nodiscard]] std::size_t size() const noexcept { return size_; }

    /// The value of `key`, or null if it has none.
    [[nodiscard]] Word const * find(Word key) const noexcept;
    [[nodiscard]] Entry at(std::size_t position) const noexcept;
    /// The longest stretch around `position` that lies in one piece.
    [[nodiscard]] Run runAt(std::size_t position) const noexcept;
    /// How many keys are less than `key`; the position of `key` if it is present.
    [[nodiscard]] std::size_t countBelow(Word key) const noexcept;

    /// `key` must be absent.
    void prepareInsert(Word key);
    void insert(Word key, Word value) noexcept;

    /// `key` must be present.
    void prepareErase(Word key);
    void erase(Word key) noexcept;

    /// Makes ready for `setValue` of `key` and for `setKeyAt` of its position. Any number of keys may be prepared
    /// before the first is changed.
    void prepareChange(Word key);
    void setValue(Word key, Word value) noexcept;
    /// Gives the entry at `position` another key. The order of keys may be wrong in between, as long as it is right
    /// again before anything is looked up by key.
    void setKeyAt(std::size_t position, Word key) noexcept;

    /// Bytes of all nodes, those shared with other copies included. Linear in the number of nodes.
    [[nodiscard]] std::size_t heapBytes() const noexcept;

private:
    PersistentSequenceNode * root_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace ZEL::internal
