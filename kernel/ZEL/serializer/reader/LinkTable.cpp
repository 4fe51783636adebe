#include <ZEL/serializer/reader/LinkTable.h>

#include <algorithm>

namespace ZEL::Serializer {
namespace {

constexpr std::size_t npos = std::string_view::npos;
constexpr std::size_t kMaximumDigits = 9;

/// The size of the part up to the last underscore, with it; `npos` unless only a number without leading zeros follows.
std::size_t headSize(std::string_view id) noexcept {
    std::size_t const underscore = id.rfind('_');
    if (underscore == npos) {
        return npos;
    }
    std::string_view const digits = id.substr(underscore + 1);
    bool const isNumber = !digits.empty() && digits.size() <= kMaximumDigits && digits.front() != '0' &&
                          std::all_of(digits.begin(), digits.end(), [](char c) { return c >= '0' && c <= '9'; });
    return isNumber ? underscore + 1 : npos;
}

} // namespace

std::size_t ObjectIds::slotOf(std::string_view id) const noexcept {
    std::size_t const head = headSize(id);
    if (head == npos || id.substr(0, head) != fHead) {
        return npos;
    }
    std::size_t slot = 0;
    for (char const digit : id.substr(head)) {
        slot = slot * 10 + static_cast<std::size_t>(digit - '0');
    }
    return slot;
}

bool ObjectIds::enter(std::string_view id, ClassObject const & object) {
    if (fHead.empty()) {
        std::size_t const head = headSize(id);
        fHead = head != npos ? id.substr(0, head) : std::string_view();
    }
    std::size_t const slot = slotOf(id);
    // A number far beyond the count of objects would blow up the array. The bound only rises, so an id that has a slot
    // once has it for good, and the slot counts before the hash.
    if (slot != npos && slot < 4 * fCount + 4096) {
        if (slot >= fSlots.size()) {
            fSlots.resize(std::max(slot + 1, fSlots.size() * 3 / 2));
        }
        bool const isNew = fSlots[slot].getImplementationWithoutAssert() == nullptr &&
                           (fOthers.empty() || fOthers.find(id) == fOthers.end());
        fSlots[slot] = object;
        fCount += isNew ? 1 : 0;
        return isNew;
    }
    auto const [entry, isNew] = fOthers.try_emplace(std::string(id), object);
    entry->second = object;
    fCount += isNew ? 1 : 0;
    return isNew;
}

ClassObject const * ObjectIds::find(std::string_view id) const {
    std::size_t const slot = slotOf(id);
    if (slot < fSlots.size() && fSlots[slot].getImplementationWithoutAssert() != nullptr) {
        return &fSlots[slot];
    }
    auto const found = fOthers.find(id);
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
