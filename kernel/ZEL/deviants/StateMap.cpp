#include <ZEL/base/Exception.h>
#include <ZEL/base/GiveBackCount.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/deviants/StateMap.h>

#include <algorithm>
#include <array>
#include <functional>
#include <utility>

namespace ZEL {

namespace {

NSInterface::ClassObjectIntf & bodyOf(StateMap::Key key) noexcept {
    return *const_cast<NSInterface::ClassObjectIntf *>(key);
}

bool comesBefore(StateMap::Entry const & left, StateMap::Entry const & right) noexcept {
    return std::less<>()(left.key, right.key);
}

/// Sorts entries that consist of a few ascending runs. False, without any change, if the runs are many.
bool mergeRuns(StateMap::Entry * first, StateMap::Entry * last) noexcept {
    std::array<StateMap::Entry *, 65> ends;
    std::size_t count = 0;
    for (StateMap::Entry * run = first; run != last; ++count) {
        if (count == ends.size() - 1) {
            return false;
        }
        run = std::is_sorted_until(run, last, comesBefore);
        ends[count] = run;
    }
    while (count > 1) {
        std::size_t merged = 0;
        StateMap::Entry * begin = first;
        for (std::size_t i = 0; i < count; i += 2) {
            StateMap::Entry * const end = ends[std::min(i + 1, count - 1)];
            std::inplace_merge(begin, ends[i], end, comesBefore);
            begin = end;
            ends[merged++] = end;
        }
        count = merged;
    }
    return true;
}

std::uint64_t homeOf(StateMap::Key key) noexcept {
    return internal::mixed(reinterpret_cast<std::uintptr_t>(key)) >> 32;
}

} // namespace

void StateMap::swap(StateMap & other) noexcept {
    std::swap(fSize, other.fSize);
    std::swap(fCapacity, other.fCapacity);
    std::swap(fIsSorted, other.fIsSorted);
    std::swap(fGreatest, other.fGreatest);
    std::swap(fIsIndexed, other.fIsIndexed);
    std::swap(fInline, other.fInline);
    fHeap.swap(other.fHeap);
    fIndex.swap(other.fIndex);
}

// --- search ----------------------------------------------------------------------------------------------------------

StateMap::const_iterator StateMap::find(Key key) const noexcept {
    std::uint32_t const found = position(key);
    return found == kNone ? end() : data() + found;
}

std::uint32_t StateMap::position(Key key) const noexcept {
    if (fSize <= kLinear) {
        return positionWithoutIndex(key);
    }
    Entry const * const entries = data();
    // The body of a new object mostly lies above all others, and walks ask for one entry after the other.
    if (std::less<>()(fGreatest, key)) {
        return kNone;
    }
    for (std::uint32_t i = fLast; i < fSize && i < fLast + 2; ++i) {
        if (entries[i].key == key) {
            return fLast = i;
        }
    }
    if (!fIsIndexed && !makeIndex()) {
        return positionWithoutIndex(key);
    }
    std::uint32_t const place = slotOf(key);
    return place == 0 ? kNone : (fLast = place - 1);
}

std::uint32_t StateMap::positionWithoutIndex(Key key) const noexcept {
    Entry const * const entries = data();
    for (std::uint32_t i = 0; i < fSize; ++i) {
        if (entries[i].key == key) {
            return i;
        }
    }
    return kNone;
}

std::vector<StateMap::Key> StateMap::keys() const {
    std::vector<Key> result;
    result.reserve(fSize);
    for (Entry const & entry : *this) {
        result.push_back(entry.key);
    }
    return result;
}

void StateMap::sort() const noexcept {
    // Objects that are made together lie together, so the keys of a large change mostly ascend over long stretches.
    if (!mergeRuns(data(), data() + fSize)) {
        std::sort(data(), data() + fSize, comesBefore);
    }
    fIsSorted = true;
    fIsIndexed = false;
}

// --- change ----------------------------------------------------------------------------------------------------------

StateMap::State StateMap::set(Key key, State state) {
    if (key == nullptr) {
        raiseNullReference();
    }
    std::uint32_t const found = position(key);
    if (found != kNone) {
        return std::exchange(data()[found].state, state);
    }
    add(key, state);
    return nullptr;
}

void StateMap::add(Key key, State state) {
    append(key, state);
    if (key != fUncounted) {
        bodyOf(key).incRef();
    }
}

void StateMap::makeRoom(std::size_t more) {
    if (more > fCapacity - fSize) {
        grow(std::max({static_cast<std::uint32_t>(fSize + more), kLinear, 2 * fCapacity}));
    }
}

void StateMap::grow(std::uint32_t capacity) {
    internal::SoleOwner<Entry[]> larger(new Entry[capacity]);
    std::copy(data(), data() + fSize, larger.get());
    fHeap = std::move(larger);
    fCapacity = capacity;
}

void StateMap::append(Key key, State state) {
    makeRoom(1);
    Entry * const entries = data();
    if (fIsSorted && fSize != 0 && std::less<>()(key, entries[fSize - 1].key)) {
        fIsSorted = false;
    }
    entries[fSize] = {key, state};
    fLast = fSize;
    fGreatest = std::max(fGreatest, key, std::less<>());
    ++fSize;
    if (fIsIndexed) {
        if (2 * fSize > fIndex.size()) {
            makeIndex();
        } else {
            fIndex.findFree(homeOf(key)) = fSize;
        }
    }
}

StateMap::State StateMap::erase(Key key) {
    std::uint32_t const found = position(key);
    if (found == kNone) {
        return nullptr;
    }
    Entry * const entries = data();
    std::uint32_t const last = fSize - 1;
    if (fIsIndexed) {
        fIndex.erase(slotOf(key), [entries](std::uint32_t place) { return homeOf(entries[place - 1].key); });
        if (found != last) {
            slotOf(entries[last].key) = found + 1;
        }
    }
    State const state = entries[found].state;
    if (found != last) {
        entries[found] = entries[last];
        fIsSorted = false;
    }
    fSize = last;
    // Last of all: the body may go with this count.
    if (key != fUncounted) {
        internal::giveBackCount(bodyOf(key));
    }
    return state;
}

void StateMap::clear() { clear(false); }

void StateMap::destroyAndClear() { clear(true); }

void StateMap::clear(bool destroyStates) {
    if (fSize == 0) {
        return;
    }
    std::uint32_t const count = std::exchange(fSize, 0);
    fGreatest = nullptr;
    fIsSorted = true;
    fIsIndexed = false;
    // The map is empty before any code of a body runs, which may come back to it.
    if (!fHeap) {
        Entry const entries[kInline] = {fInline[0], fInline[1]};
        release(entries, count, destroyStates);
        return;
    }
    internal::SoleOwner<Entry[]> entries = std::move(fHeap);
    std::uint32_t const capacity = std::exchange(fCapacity, kInline);
    release(entries.get(), count, destroyStates);
    if (capacity <= kPooled && !fHeap && fSize == 0) {
        fHeap = std::move(entries);
        fCapacity = capacity;
    } else if (capacity > kPooled && !fIsIndexed) {
        internal::OpenTable<std::uint32_t>().swap(fIndex);
    }
}

void StateMap::release(Entry const * entries, std::uint32_t count, bool destroyStates) const {
    for (Entry const * entry = entries; entry != entries + count; ++entry) {
        if (destroyStates) {
            bodyOf(entry->key).deviant_destroyState(entry->state);
        }
        if (entry->key != fUncounted) {
            internal::giveBackCount(bodyOf(entry->key));
        }
    }
}

// --- index -----------------------------------------------------------------------------------------------------------

std::uint32_t & StateMap::slotOf(Key key) const noexcept {
    Entry const * const entries = data();
    return fIndex.find(homeOf(key), [=](std::uint32_t place) { return entries[place - 1].key == key; });
}

bool StateMap::makeIndex() const noexcept {
    std::uint32_t size = 4 * kLinear;
    while (size < 4 * fSize) {
        size *= 2;
    }
    fIsIndexed = fIndex.reset(size);
    for (std::uint32_t i = 0; fIsIndexed && i < fSize; ++i) {
        fIndex.findFree(homeOf(data()[i].key)) = i + 1;
    }
    return fIsIndexed;
}

} // namespace ZEL
