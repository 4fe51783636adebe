#include <ZEL/serializer/reader/LinkTable.h>

#include <algorithm>

namespace ZEL::Serializer {
namespace {

constexpr std::size_t npos = std::string_view::npos;

} // namespace

std::size_t ObjectIds::slotOf(ObjectId const & id) const noexcept {
    return id.isRegular() && id.head() == fHead ? id.serial() : npos;
}

bool ObjectIds::enter(ObjectId const & id, ClassObject const & object) {
    if (fHead.empty()) {
        fHead = id.head();
    }
    std::size_t const slot = slotOf(id);
    // A number far beyond the count of objects would blow up the array. The bound only rises, so an id that has a slot
    // once has it for good, and the slot counts before the hash.
    if (slot != npos && slot < 4 * fCount + 4096) {
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

ClassObject const * ObjectIds::find(ObjectId const & id) const {
    std::size_t const slot = slotOf(id);
    if (slot < fSlots.size() && fSlots[slot].getImplementationWithoutAssert() != nullptr) {
        return &fSlots[slot];
    }
    auto const found = fOthers.find(id.text());
    return found != fOthers.end() ? &found->second : nullptr;
}

FileModel & LinkTable::of(std::string const & uri) {
    FileModel *& model = fByUri[uri];
    if (model == nullptr) {
        model = &fModels.emplace_back();
        model->uri = uri;
    }
    return *model;
}

FileModel * LinkTable::find(std::string const & uri) {
    auto const found = fByUri.find(uri);
    return found != fByUri.end() ? found->second : nullptr;
}

void LinkTable::clear() noexcept {
    fModels.clear();
    fByUri.clear();
}

} // namespace ZEL::Serializer
