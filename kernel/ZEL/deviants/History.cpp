#include <ZEL/deviants/Deviant.h>
#include <ZEL/deviants/History.h>

#include <algorithm>
#include <utility>

namespace ZEL::internal {

History::History(Phases & phases, StateMap::Key model, bool isKept) noexcept
    : fPhases(phases),
      fModel(model),
      fIsKept(isKept),
      fMaximum(isKept ? Deviant::getDefaultMaximumUndoStackLength() : 1) {}

ChangeSet * History::entry(Direction direction, int index) const noexcept {
    bool const isUndo = direction == Direction::Undo;
    if (index < 0 || index >= (isUndo ? undoLength() : redoLength())) {
        return nullptr;
    }
    return fEntries[static_cast<std::size_t>(isUndo ? fDivider - 1 - index : fDivider + index)].get();
}

void History::setMaximum(std::int32_t length) noexcept {
    fMaximum = std::max(length, 0);
    trim();
}

void History::trim() noexcept {
    while (static_cast<std::int32_t>(fEntries.size()) > fMaximum) {
        retireFirst();
    }
    // Entries gone from the old end do not shift the divider.
    fDivider = std::min(fDivider, static_cast<std::int32_t>(fEntries.size()));
}

void History::disable() noexcept {
    clear();
    fMaximum = 0;
}

void History::clearRedo() noexcept {
    while (redoLength() > 0) {
        auto last = std::move(fEntries.back());
        fEntries.pop_back();
        retire(std::move(last));
    }
}

void History::clear() noexcept {
    clearRedo();
    fDivider = 0;
    while (!fEntries.empty()) {
        retireFirst();
    }
}

std::unique_ptr<ChangeSet> History::takeRecord() {
    // Room for the entry before the work that it records, so that what has been done is never left without its record.
    if (fEntries.full()) {
        fEntries.set_capacity(std::max<std::size_t>(4, 2 * fEntries.capacity()));
    }
    return fSpare == nullptr ? std::make_unique<ChangeSet>(fModel) : std::move(fSpare);
}

void History::push(std::unique_ptr<ChangeSet> record) noexcept {
    if (fIsKept) {
        clearRedo();
        fEntries.push_back(std::move(record));
        trim();
        fDivider = static_cast<std::int32_t>(fEntries.size());
    } else {
        retire(std::move(record));
    }
    fLevel = ++fHighestLevel;
}

void History::retireFirst() noexcept {
    auto first = std::move(fEntries.front());
    fEntries.pop_front();
    retire(std::move(first));
}

void History::retire(std::unique_ptr<ChangeSet> record) noexcept {
    if (fPhases.areRunning()) {
        fPhases.keep(std::move(record));
        return;
    }
    record->states.destroyAndClear();
    record->name.clear();
    fSpare = std::move(record);
}

bool History::isAtDivider(ChangeSet const & entry) const noexcept { return &entry == this->entry(Direction::Redo, 0); }

void History::abandonReplay(ChangeSet const & entry, Direction direction) noexcept {
    fDivider += direction == Direction::Undo && isAtDivider(entry) ? 1 : 0;
}

void History::finishReplay(ChangeSet & entry, Direction direction) noexcept {
    if (!isAtDivider(entry)) {
        return; // an observer has cleared it away
    }
    std::swap(entry.changeLevel, fLevel);
    fDivider += direction == Direction::Redo ? 1 : 0;
}

} // namespace ZEL::internal
