#pragma once

#include <ZEL/deviants/Phases.h>

#include <boost/circular_buffer.hpp>

#include <cstdint>
#include <memory>

namespace ZEL::internal {

/// The committed transactions of a deviant, oldest first, with a divider between those that can be undone and those
/// that can be redone, and the change levels. Nothing here fails but `takeRecord`.
class History {
public:
    enum class Direction { Undo, Redo };

    /// `isKept` is true for the root alone: the history of another deviant counts levels and keeps no entries.
    History(Phases & phases, StateMap::Key model, bool isKept) noexcept;

    [[nodiscard]] std::int32_t undoLength() const noexcept { return fDivider; }
    [[nodiscard]] std::int32_t redoLength() const noexcept {
        return static_cast<std::int32_t>(fEntries.size()) - fDivider;
    }
    [[nodiscard]] std::int32_t level() const noexcept { return fLevel; }
    [[nodiscard]] std::int32_t maximum() const noexcept { return fMaximum; }
    /// Whether old states are saved and listeners called.
    [[nodiscard]] bool isOn() const noexcept { return fMaximum > 0; }
    /// Counted from the divider: 0 is the next to undo or redo. Null outside the history.
    [[nodiscard]] ChangeSet * entry(Direction direction, int index) const noexcept;

    /// A negative `length` counts as 0.
    void setMaximum(std::int32_t length) noexcept;
    void disable() noexcept;
    void clearRedo() noexcept;
    /// All entries, on both sides of the divider.
    void clear() noexcept;

    /// An empty record, with room for it in the history.
    [[nodiscard]] std::unique_ptr<ChangeSet> takeRecord();
    /// The record of a commit. What could have been redone goes, and a new level begins.
    void push(std::unique_ptr<ChangeSet> record) noexcept;

    /// Begins to run the next entry in this direction; one of the two operations below ends it. An undo moves the
    /// divider at its beginning, a redo at its end.
    void beginReplay(Direction direction) noexcept { fDivider -= direction == Direction::Undo ? 1 : 0; }
    void abandonReplay(ChangeSet const & entry, Direction direction) noexcept;
    /// Exchanges the levels; does nothing if the entry has left the divider meanwhile.
    void finishReplay(ChangeSet & entry, Direction direction) noexcept;

private:
    [[nodiscard]] bool isAtDivider(ChangeSet const & entry) const noexcept;
    void trim() noexcept;
    void retire(std::unique_ptr<ChangeSet> record) noexcept;
    void retireFirst() noexcept;

    Phases & fPhases;
    StateMap::Key fModel;
    bool fIsKept;
    std::int32_t fMaximum;
    std::int32_t fLevel = 1;
    std::int32_t fHighestLevel = 1;
    std::int32_t fDivider = 0;                                   ///< entries below it can be undone
    boost::circular_buffer<std::unique_ptr<ChangeSet>> fEntries; ///< room once made is kept
    std::unique_ptr<ChangeSet> fSpare;                           ///< a record for use again
};

} // namespace ZEL::internal
