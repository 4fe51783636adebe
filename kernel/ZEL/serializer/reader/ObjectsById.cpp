#include <ZEL/serializer/reader/ObjectsById.h>

#include <algorithm>

namespace ZEL::Serializer {

bool ObjectsById::enter(ObjectId const & id, ClassObject const & object) {
    if (fHead.empty()) {
        fHead = id.head();
    }
    std::size_t const slot = slotOf(id);
    // A number far beyond the count of objects would blow up the array. The bound only rises, so an id that has a slot
    // once has it for good, and the slot counts before the hash.
    if (slot != kNoSlot && slot < 4 * fCount + 4096) {
        if (slot >= fSlots.size()) {
            fSlots.resize(std::max(slot + 1, fSlots.size() * 3 / 2));
        }
        bool const isNew = fSlots[slot].getImplementationWithoutAssert() == nullptr &&
                           (fOthers.empty() || fOthers.find(id.text()) == fOthers.end());
        fSlots[slot] = object;
        fCount += isNew ? 1 : 0;
        return isNew;
    }
    auto const [entry, isNew] = fOthers.try_emplace(std::string(id.text()), object);
    entry->second = object;
    fCount += isNew ? 1 : 0;
    return isNew;
}

ClassObject const * ObjectsById::find(ObjectId const & id) const {
    std::size_t const slot = slotOf(id);
    if (slot < fSlots.size() && fSlots[slot].getImplementationWithoutAssert() != nullptr) {
        return &fSlots[slot];
    }
    auto const found = fOthers.find(id.text());
    return found != fOthers.end() ? &found->second : nullptr;
}

} // namespace ZEL::Serializer
