#include <ZEL/base/ObjectPool.h>
#include <ZEL/sequences/PersistentSequence.h>
#include <ZEL/sequences/PersistentSequenceLarge.h>

#include <algorithm>
#include <bit>

namespace ZEL::internal {

struct PersistentSequence::Large : Counted {
    PersistentSequenceLarge sequence;

    explicit Large(std::vector<Word> const & words) : sequence(words) {}
    explicit Large(PersistentSequenceLarge const & other) noexcept : sequence(other) {}
};

static_assert(sizeof(PersistentSequence) == 8);

PersistentSequence::Large * PersistentSequence::large() const noexcept { return static_cast<Large *>(counted()); }

bool PersistentSequence::contains(void const * element) const noexcept {
    return isLarge() ? large()->sequence.contains(toWord(element)) : indexOf(element) >= 0;
}

std::ptrdiff_t PersistentSequence::indexOf(void const * element) const noexcept {
    if (isLarge()) {
        return large()->sequence.indexOf(toWord(element));
    }
    if (isSingle()) {
        return single() == element ? 0 : -1;
    }
    if (!empty()) {
        Word const * elements = block()->elements();
        Word const * end = elements + block()->size;
        Word const * found = std::find(elements, end, toWord(element));
        return found == end ? -1 : found - elements;
    }
    return -1;
}

bool PersistentSequence::insert(std::size_t position, void * element) {
    assert(position <= size());
    if (contains(element)) {
        return false;
    }
    if (isLarge()) {
        ownLarge()->sequence.insert(position, toWord(element));
    } else {
        insertInSmall(position, toWord(element));
    }
    return true;
}

void PersistentSequence::eraseAt(std::size_t position) {
    assert(position < size());
    if (!isLarge()) {
        eraseInSmall(position);
    } else if (largeSize() - 1 <= MinimalTree) {
        becomeBlockWithout(position);
    } else {
        ownLarge()->sequence.eraseAt(position);
    }
}

bool PersistentSequence::erase(void const * element) {
    std::ptrdiff_t const position = indexOf(element);
    if (position < 0) {
        return false;
    }
    eraseAt(static_cast<std::size_t>(position));
    return true;
}

bool PersistentSequence::replaceAt(std::size_t position, void * element) {
    assert(position < size());
    if (at(position) == element) {
        return true;
    }
    if (contains(element)) {
        return false;
    }
    Word const word = toWord(element);
    if (isLarge()) {
        ownLarge()->sequence.replaceAt(position, word);
    } else if (size() == 1) {
        ofWords(&word, 1).swap(*this);
    } else {
        if (counted()->refs > 1) {
            ofWords(block()->elements(), block()->size).swap(*this);
        }
        block()->elements()[position] = word;
    }
    return true;
}

std::size_t PersistentSequence::heapBytes() const noexcept {
    if (!isCounted()) {
        return 0;
    }
    return isLarge() ? sizeof(Large) + large()->sequence.heapBytes() : bytesOf(block()->capacity);
}

// The capacity of a block for `count` elements: half as much again at the most, since most sequences are short and
// never grow again.
std::size_t PersistentSequence::roomFor(std::size_t count) noexcept {
    std::size_t const step = std::max<std::size_t>(std::bit_floor(count) / 2, 1);
    return (count + step - 1) / step * step;
}

std::size_t PersistentSequence::bytesOf(std::size_t capacity) noexcept {
    return sizeof(Block) + capacity * sizeof(Word);
}

PersistentSequence::Large * PersistentSequence::ownLarge() {
    if (counted()->refs > 1) {
        Large * own = new Large(large()->sequence);
        --counted()->refs;
        word_ = toWord(static_cast<Counted *>(own)) | LargeTag;
    }
    return large();
}

PersistentSequence PersistentSequence::ofBlock(std::size_t size, std::size_t capacity) {
    PersistentSequence result;
    Block * block = new (takeFromPool(bytesOf(capacity))) Block;
    block->size = static_cast<std::uint16_t>(size);
    block->capacity = static_cast<std::uint16_t>(capacity);
    result.word_ = toWord(static_cast<Counted *>(block));
    return result;
}

// Of at most `MaximalBlock` elements.
PersistentSequence PersistentSequence::ofWords(Word const * words, std::size_t count) {
    PersistentSequence result;
    if (count == 1 && (*words & SingleTag) == 0) {
        result.word_ = *words | SingleTag;
    } else if (count > 0) {
        result = ofBlock(count, roomFor(count));
        std::copy_n(words, count, result.block()->elements());
    }
    return result;
}

PersistentSequence PersistentSequence::ofLarge(std::vector<Word> const & words) {
    PersistentSequence result;
    result.word_ = toWord(static_cast<Counted *>(new Large(words))) | LargeTag;
    return result;
}

// Copies a part of the elements and returns the end of the copy.
PersistentSequence::Word * PersistentSequence::copyTo(Word * target, std::size_t begin,
                                                      std::size_t end) const noexcept {
    for (Cursor cursor(*this, begin); cursor.position() < end; ++cursor) {
        *target++ = toWord(*cursor);
    }
    return target;
}

// Not for a single element, which lies nowhere.
PersistentSequence::Run PersistentSequence::runAt(std::size_t position) const noexcept {
    if (!isLarge()) {
        return {block()->elements(), 0, block()->size};
    }
    PersistentSequenceLarge::Run const run = large()->sequence.runAt(position);
    return {run.values, run.first, run.count};
}

std::size_t PersistentSequence::largeSize() const noexcept { return large()->sequence.size(); }

bool PersistentSequence::hasEqualElements(PersistentSequence const & other) const noexcept {
    std::size_t const count = size();
    if (count != other.size() || isSingle() || other.isSingle()) {
        return false; // two equal single elements would have equal words
    }
    for (std::size_t position = 0; position < count;) {
        Run const left = runAt(position);
        Run const right = other.runAt(position);
        std::size_t const end = std::min(left.first + left.count, right.first + right.count);
        Word const * leftValues = left.values + (position - left.first);
        Word const * rightValues = right.values + (position - right.first);
        if (leftValues != rightValues && !std::equal(leftValues, leftValues + (end - position), rightValues)) {
            return false;
        }
        position = end;
    }
    return true;
}

void PersistentSequence::assignWords(std::vector<Word> const & words) {
    if (words.size() > MaximalBlock) {
        ofLarge(words).swap(*this);
    } else {
        assignFew(words.data(), words.size());
    }
}

void PersistentSequence::assignFew(Word const * words, std::size_t count) { ofWords(words, count).swap(*this); }

void PersistentSequence::insertInSmall(std::size_t position, Word element) {
    std::size_t const count = size();
    if (count == 0) {
        ofWords(&element, 1).swap(*this);
    } else if (count == MaximalBlock) {
        std::vector<Word> words(count + 1);
        Word * gap = copyTo(words.data(), 0, position);
        *gap = element;
        copyTo(gap + 1, position, count);
        ofLarge(words).swap(*this);
    } else if (isSingle() || counted()->refs > 1 || block()->capacity == count) {
        PersistentSequence grown = ofBlock(count + 1, roomFor(count + 1));
        Word * gap = copyTo(grown.block()->elements(), 0, position);
        *gap = element;
        copyTo(gap + 1, position, count);
        swap(grown);
    } else {
        Word * elements = block()->elements();
        std::copy_backward(elements + position, elements + count, elements + count + 1);
        elements[position] = element;
        ++block()->size;
    }
}

void PersistentSequence::eraseInSmall(std::size_t position) {
    std::size_t const count = size();
    if (count == 1) {
        clear();
    } else if (count == 2) {
        Word const other = block()->elements()[1 - position];
        ofWords(&other, 1).swap(*this);
    } else if (counted()->refs > 1) {
        becomeBlockWithout(position);
    } else {
        Word * elements = block()->elements();
        std::copy(elements + position + 1, elements + count, elements + position);
        --block()->size;
    }
}

// For three elements or more.
void PersistentSequence::becomeBlockWithout(std::size_t position) {
    std::size_t const count = size();
    PersistentSequence shrunk = ofBlock(count - 1, roomFor(count - 1));
    copyTo(copyTo(shrunk.block()->elements(), 0, position), position + 1, count);
    swap(shrunk);
}

void PersistentSequence::release() noexcept {
    if (--counted()->refs != 0) {
        return;
    }
    if (isLarge()) {
        delete large();
    } else {
        giveToPool(block(), bytesOf(block()->capacity));
    }
}

} // namespace ZEL::internal
