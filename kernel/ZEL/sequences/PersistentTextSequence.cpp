#include <ZEL/sequences/PersistentTextSequence.h>

#include <algorithm>
#include <memory>

namespace ZEL::internal {

std::ptrdiff_t PersistentTextSequence::indexOf(std::string_view text) const noexcept {
    if (empty()) {
        return -1;
    }
    auto const found = std::find(fBlock->texts.begin(), fBlock->texts.end(), text);
    return found == fBlock->texts.end() ? -1 : found - fBlock->texts.begin();
}

void PersistentTextSequence::insert(std::size_t position, std::string text) {
    if (empty()) {
        auto block = std::make_unique<Block>();
        block->texts.push_back(std::move(text));
        fBlock = block.release();
        return;
    }
    auto & texts = ownTexts();
    texts.insert(texts.begin() + static_cast<std::ptrdiff_t>(position), std::move(text));
}

void PersistentTextSequence::eraseAt(std::size_t position) {
    if (size() == 1) {
        clear();
        return;
    }
    auto & texts = ownTexts();
    texts.erase(texts.begin() + static_cast<std::ptrdiff_t>(position));
}

void PersistentTextSequence::replaceAt(std::size_t position, std::string text) {
    ownTexts()[position] = std::move(text);
}

bool PersistentTextSequence::operator==(PersistentTextSequence const & other) const noexcept {
    return fBlock == other.fBlock || (!empty() && !other.empty() && fBlock->texts == other.fBlock->texts);
}

std::vector<std::string> & PersistentTextSequence::ownTexts() {
    if (fBlock->count > 1) {
        auto copy = std::make_unique<Block>();
        copy->texts = fBlock->texts;
        fBlock = copy.release();
    }
    return fBlock->texts;
}

} // namespace ZEL::internal
