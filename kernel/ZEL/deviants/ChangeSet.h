#pragma once

#include <ZEL/deviants/StateMap.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

namespace ZEL {

/// Record of one transaction: the states that its objects had before.
///
/// On the stack the states are those to which the objects go when the entry is run, and the level is the one that holds
/// then; both are exchanged with the present ones at each undo and redo. The states belong to the record.
class ChangeSet {
public:
    explicit ChangeSet(StateMap::Key model) noexcept : states(model) {}
    ChangeSet(ChangeSet const &) = delete;
    ChangeSet & operator=(ChangeSet const &) = delete;
    ~ChangeSet() { states.destroyAndClear(); }

    void swap(ChangeSet & other) noexcept {
        name.swap(other.name);
        std::swap(changeLevel, other.changeLevel);
        states.swap(other.states);
    }

    std::string name;
    std::int32_t changeLevel = 0;
    StateMap states;
    std::unique_ptr<ChangeSet> next; ///< in a list of records that wait for their end or for use
};

/// Change sets one after the other, the last first. Adding one needs no memory.
class ChangeSetList {
public:
    ChangeSetList() noexcept = default;
    ChangeSetList(ChangeSetList const &) = delete;
    ChangeSetList & operator=(ChangeSetList const &) = delete;
    ~ChangeSetList() {
        // One by one: a chain that ends as a whole goes as deep as it is long.
        while (!empty()) {
            static_cast<void>(pop());
        }
    }

    [[nodiscard]] bool empty() const noexcept { return fFirst == nullptr; }
    [[nodiscard]] std::size_t size() const noexcept { return fSize; }
    void push(std::unique_ptr<ChangeSet> record) noexcept {
        record->next = std::move(fFirst);
        fFirst = std::move(record);
        ++fSize;
    }
    /// The list must not be empty.
    [[nodiscard]] std::unique_ptr<ChangeSet> pop() noexcept {
        std::unique_ptr<ChangeSet> record = std::move(fFirst);
        fFirst = std::move(record->next);
        --fSize;
        return record;
    }

private:
    std::unique_ptr<ChangeSet> fFirst;
    std::size_t fSize = 0;
};

} // namespace ZEL
