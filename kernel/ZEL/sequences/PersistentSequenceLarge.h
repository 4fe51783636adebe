#pragma once

#include <ZEL/sequences/PersistentSequenceTree.h>

#include <cstddef>
#include <vector>

namespace ZEL::internal {

/// The storage of a `PersistentSequence` of many elements. Two trees: one from a label, a number that grows along the
/// sequence, to the element, and one from the element back to its label. So the position of an element is found without
/// a walk over the others. A new element gets a label between those of its neighbours; where no number is left between
/// them, the elements around it get new labels, as few as will do.
///
/// Elements are addresses as numbers. Copying costs two counters. Every operation that may fail leaves the sequence as
/// it was if it does.
class PersistentSequenceLarge {
public:
    using Word = PersistentSequenceTree::Word;
    using Run = PersistentSequenceTree::Run;

    /// `elements` are without duplicates.
    explicit PersistentSequenceLarge(std::vector<Word> const & elements);

    [[nodiscard]] std::size_t size() const noexcept { return elements_.size(); }
    [[nodiscard]] Word at(std::size_t position) const noexcept { return elements_.at(position).value; }
    [[nodiscard]] Run runAt(std::size_t position) const noexcept { return elements_.runAt(position); }
    [[nodiscard]] bool contains(Word element) const noexcept { return labels_.find(element) != nullptr; }
    /// The position of `element`, or -1.
    [[nodiscard]] std::ptrdiff_t indexOf(Word element) const noexcept;

    /// `element` must be absent.
    void insert(std::size_t position, Word element);
    void eraseAt(std::size_t position);
    /// `element` must be absent.
    void replaceAt(std::size_t position, Word element);

    [[nodiscard]] std::size_t heapBytes() const noexcept { return elements_.heapBytes() + labels_.heapBytes(); }

private:
    PersistentSequenceTree elements_; // label -> element
    PersistentSequenceTree labels_;   // element -> label

    [[nodiscard]] bool findFreeLabel(std::size_t position, Word & label) const noexcept;
    void makeRoomAround(Word label);
    void spread(std::size_t begin, std::size_t end, Word low, Word high);
};

} // namespace ZEL::internal
