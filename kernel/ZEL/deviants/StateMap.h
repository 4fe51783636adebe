#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/OpenTable.h>
#include <ZEL/base/SoleOwner.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZEL {

namespace NSInterface {
class ObjectIntf;
class ClassObjectIntf;
} // namespace NSInterface

/// From a body to one state of it: what a deviant stores, and what a change set saves.
///
/// An entry holds one count on its key; the body given to the constructor, the map's own model, is not counted, for it
/// owns the map. States are pointers without an owner here, sentinels included: who stores them destroys them with
/// `destroyAndClear`. A map cannot be copied, since no state may stand in two places.
///
/// Entries are kept as they come and are brought into the order of the keys, that of their addresses, by the first
/// ordered walk. A search costs a few comparisons, or a hash look-up in a larger map. Two entries need no memory of
/// their own. Any change, and an ordered walk after changes, invalidates iterators. Only a new key asks for memory that
/// it cannot do without: a map that gets none for its look-up is searched entry by entry.
class ZEL_API StateMap {
public:
    using Key = NSInterface::ClassObjectIntf const *;
    using State = NSInterface::ObjectIntf *;
    struct Entry {
        Key key;
        State state;
    };
    using const_iterator = Entry const *;

    explicit StateMap(Key uncounted = nullptr) noexcept : fUncounted(uncounted) {}
    StateMap(StateMap const &) = delete;
    StateMap & operator=(StateMap const &) = delete;
    /// Drops the counts on the keys; leaves the states alone.
    ~StateMap() { clear(); }

    /// Exchanges entries and memory. Both maps must belong to one model.
    void swap(StateMap & other) noexcept;

    [[nodiscard]] bool empty() const noexcept { return fSize == 0; }
    [[nodiscard]] std::size_t size() const noexcept { return fSize; }
    /// In the order of the keys.
    [[nodiscard]] const_iterator begin() const noexcept {
        if (!fIsSorted) {
            sort();
        }
        return data();
    }
    [[nodiscard]] const_iterator end() const noexcept { return data() + fSize; }
    /// The entry of `key`, or `end()`.
    [[nodiscard]] const_iterator find(Key key) const noexcept;
    /// The state of `key`, null if there is no entry.
    [[nodiscard]] State get(Key key) const noexcept {
        if (fSize == 0) {
            return nullptr;
        }
        const_iterator const entry = find(key);
        return entry == end() ? nullptr : entry->state;
    }
    /// The keys in order, for a walk during which the map changes.
    [[nodiscard]] std::vector<Key> keys() const;

    /// Makes room, so that `more` new keys can be set without memory. Nothing else changes if there is none.
    void makeRoom(std::size_t more);
    /// Stores `state` and returns the former one, which now belongs to the caller. A new key for which there is no
    /// memory leaves the map as it was.
    [[nodiscard]] State set(Key key, State state);
    /// The same for a key that the caller knows not to be in the map, which need not be searched for it.
    void add(Key key, State state);
    /// Returns the state that stood there, which now belongs to the caller, or null.
    [[nodiscard]] State erase(Key key);
    /// Drops all entries; leaves the states alone.
    void clear();
    /// Has each key destroy its state, then drops all entries.
    void destroyAndClear();
    /// Puts `replace(key, state)` in the place of each state, in the order of the keys. It must not throw.
    template <class Replace> void replaceStates(Replace replace) {
        static_cast<void>(begin());
        for (Entry * entry = data(); entry != end(); ++entry) {
            entry->state = replace(entry->key, entry->state);
        }
    }

private:
    static constexpr std::uint32_t kInline = 2;  ///< entries without memory of their own
    static constexpr std::uint32_t kLinear = 8;  ///< up to here a search compares all keys
    static constexpr std::uint32_t kPooled = 64; ///< a cleared map keeps memory for so many entries
    static constexpr std::uint32_t kNone = ~std::uint32_t{0};

    [[nodiscard]] Entry * data() const noexcept { return fHeap ? fHeap.get() : const_cast<Entry *>(fInline); }
    [[nodiscard]] std::uint32_t position(Key key) const noexcept;
    [[nodiscard]] std::uint32_t positionWithoutIndex(Key key) const noexcept;
    void sort() const noexcept;
    void grow(std::uint32_t capacity);
    void append(Key key, State state);
    void release(Entry const * entries, std::uint32_t count, bool destroyStates) const;
    void clear(bool destroyStates);

    [[nodiscard]] std::uint32_t & slotOf(Key key) const noexcept;
    /// False, and no index, if there is no memory for it.
    bool makeIndex() const noexcept;

    Key fUncounted;
    std::uint32_t fSize = 0;
    std::uint32_t fCapacity = kInline;
    mutable bool fIsSorted = true;
    mutable bool fIsIndexed = false;
    mutable std::uint32_t fLast = 0; ///< where a search in a large map found something last; those in order go on there
    Key fGreatest = nullptr;         ///< no key of the map is greater
    Entry fInline[kInline] = {};
    internal::SoleOwner<Entry[]> fHeap;
    mutable internal::OpenTable<std::uint32_t> fIndex; ///< position plus 1
};

} // namespace ZEL
