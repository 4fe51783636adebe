#pragma once

#include <ZEL/deviants/ChangeSet.h>

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace ZEL::internal {

/// The change sets of a deviant that can be undone and redone, oldest first; it owns them.
///
/// Room for an entry is made before the work that the entry records, so that what has been done is never left without
/// its record for lack of memory. Both ends and each index cost the same; room once made is kept.
class UndoStack {
public:
    [[nodiscard]] std::size_t size() const noexcept { return fSize; }
    [[nodiscard]] bool empty() const noexcept { return fSize == 0; }
    /// `index` must be less than the size.
    [[nodiscard]] ChangeSet & operator[](std::size_t index) const noexcept { return *fSlots[slotOf(index)]; }

    /// From here on one `push_back` needs no memory.
    void makeRoom() {
        if (fSize < fSlots.size()) {
            return;
        }
        std::vector<std::unique_ptr<ChangeSet>> larger(fSlots.empty() ? 4 : 2 * fSlots.size());
        for (std::size_t i = 0; i < fSize; ++i) {
            larger[i] = std::move(fSlots[slotOf(i)]);
        }
        fSlots.swap(larger);
        fFirst = 0;
    }
    /// Only after `makeRoom`.
    void push_back(std::unique_ptr<ChangeSet> entry) noexcept { fSlots[slotOf(fSize++)] = std::move(entry); }
    /// The stack must not be empty.
    [[nodiscard]] std::unique_ptr<ChangeSet> pop_front() noexcept {
        std::unique_ptr<ChangeSet> entry = std::move(fSlots[fFirst]);
        fFirst = slotOf(1);
        --fSize;
        return entry;
    }
    [[nodiscard]] std::unique_ptr<ChangeSet> pop_back() noexcept { return std::move(fSlots[slotOf(--fSize)]); }

private:
    [[nodiscard]] std::size_t slotOf(std::size_t index) const noexcept {
        return (fFirst + index) & (fSlots.size() - 1);
    }

    std::vector<std::unique_ptr<ChangeSet>> fSlots; ///< a ring; their number is a power of two
    std::size_t fFirst = 0;
    std::size_t fSize = 0;
};

} // namespace ZEL::internal
