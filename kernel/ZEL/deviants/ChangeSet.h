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
    std::unique_ptr<ChangeSet> next; ///< in a list of records that wait for their end
};

} // namespace ZEL
