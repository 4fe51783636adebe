#include <ZEL/sequences/PersistentSequenceLarge.h>

#include <algorithm>
#include <cassert>
#include <limits>
#include <stdexcept>
#include <utility>

namespace ZEL::internal {

namespace {

using Word = PersistentSequenceLarge::Word;
using Entry = PersistentSequenceTree::Entry;

constexpr Word LastLabel = std::numeric_limits<Word>::max();

// Labels begin in the middle of their range, this far apart: some two thousand million elements can be added at either
// end, and thirty between any two, before labels have to change.
constexpr Word LabelDistance = Word{1} << 32;
constexpr Word MiddleLabel = Word{1} << 63;

// The nodes count in 32 bits, and `makeRoomAround` always finds room up to here.
constexpr std::size_t MaximalSize = std::numeric_limits<std::uint32_t>::max();

void checkSize(std::size_t size) {
    if (size > MaximalSize) {
        throw std::length_error("persistent sequence too long");
    }
}

std::vector<Entry> labelled(std::vector<Word> const & elements) {
    checkSize(elements.size());
    std::vector<Entry> entries;
    entries.reserve(elements.size());
    Word const distance = std::min<Word>(LabelDistance, MiddleLabel / (elements.size() + 1));
    Word label = MiddleLabel - elements.size() / 2 * distance;
    for (Word element : elements) {
        entries.push_back({label, element});
        label += distance;
    }
    return entries;
}

// From label -> element to element -> label. Elements often come in the order of their addresses already.
void invert(std::vector<Entry> & entries) {
    for (Entry & entry : entries) {
        std::swap(entry.key, entry.value);
    }
    auto const less = [](Entry const & left, Entry const & right) { return left.key < right.key; };
    if (!std::is_sorted(entries.begin(), entries.end(), less)) {
        std::sort(entries.begin(), entries.end(), less);
    }
    assert(std::adjacent_find(entries.begin(), entries.end(), [](Entry const & left, Entry const & right) {
               return left.key == right.key;
           }) == entries.end());
}

} // namespace

PersistentSequenceLarge::PersistentSequenceLarge(std::vector<Word> const & elements) {
    std::vector<Entry> entries = labelled(elements);
    elements_ = PersistentSequenceTree(entries);
    invert(entries);
    labels_ = PersistentSequenceTree(entries);
}

std::ptrdiff_t PersistentSequenceLarge::indexOf(Word element) const noexcept {
    Word const * label = labels_.find(element);
    return label == nullptr ? -1 : static_cast<std::ptrdiff_t>(elements_.countBelow(*label));
}

void PersistentSequenceLarge::insert(std::size_t position, Word element) {
    assert(position <= size() && !contains(element));
    checkSize(size() + 1);
    Word label = MiddleLabel;
    while (!findFreeLabel(position, label)) {
        makeRoomAround(elements_.at(position > 0 ? position - 1 : 0).key);
    }
    elements_.prepareInsert(label);
    labels_.prepareInsert(element);
    elements_.insert(label, element);
    labels_.insert(element, label);
}

void PersistentSequenceLarge::eraseAt(std::size_t position) {
    Entry const entry = elements_.at(position);
    elements_.prepareErase(entry.key);
    labels_.prepareErase(entry.value);
    elements_.erase(entry.key);
    labels_.erase(entry.value);
}

void PersistentSequenceLarge::replaceAt(std::size_t position, Word element) {
    assert(!contains(element));
    Entry const entry = elements_.at(position);
    // Two changes of one tree cannot be prepared together: they are made in a copy.
    PersistentSequenceTree labels = labels_;
    labels.prepareErase(entry.value);
    labels.erase(entry.value);
    labels.prepareInsert(element);
    labels.insert(element, entry.key);
    elements_.prepareChange(entry.key);
    elements_.setValue(entry.key, element);
    labels_.swap(labels);
}

bool PersistentSequenceLarge::findFreeLabel(std::size_t position, Word & label) const noexcept {
    std::size_t const count = size();
    if (count == 0) {
        return true;
    }
    if (position == count) {
        Word const last = elements_.at(count - 1).key;
        Word const room = LastLabel - last;
        label = last + (room >= LabelDistance ? LabelDistance : room - room / 2);
        return room != 0;
    }
    Word const next = elements_.at(position).key;
    if (position == 0) {
        label = next >= LabelDistance ? next - LabelDistance : next / 2;
        return next != 0;
    }
    Word const previous = elements_.at(position - 1).key;
    label = previous + (next - previous) / 2;
    return next - previous > 1;
}

// Looks for the least aligned range of labels around `label` that is thin enough, and spreads its elements evenly. A
// range of 2^b labels is thin enough with 2^(b/2) elements: the larger the range, the thinner it must be, so that many
// inserts pass before the same elements move again. An insert moves O(log n) elements on average, wherever it is made.
void PersistentSequenceLarge::makeRoomAround(Word label) {
    for (unsigned bits = 8;; bits += 2) {
        Word const mask = bits < 64 ? (Word{1} << bits) - 1 : LastLabel;
        Word const low = label & ~mask;
        Word const high = label | mask;
        std::size_t const begin = elements_.countBelow(low);
        std::size_t const end = high == LastLabel ? size() : elements_.countBelow(high + 1);
        if (bits == 64 || end - begin <= std::size_t{1} << (bits / 2)) {
            spread(begin, end, low, high);
            return;
        }
    }
}

void PersistentSequenceLarge::spread(std::size_t begin, std::size_t end, Word low, Word high) {
    for (std::size_t i = begin; i < end; ++i) {
        Entry const entry = elements_.at(i);
        elements_.prepareChange(entry.key);
        labels_.prepareChange(entry.value);
    }
    Word const distance = (high - low) / (end - begin);
    Word label = low + distance / 2;
    for (std::size_t i = begin; i < end; ++i) {
        elements_.setKeyAt(i, label);
        labels_.setValue(elements_.at(i).value, label);
        label += distance;
    }
}

} // namespace ZEL::internal
