#include <ZEL/base/ObjectPool.h>
#include <ZEL/metamodel/Fields.h>

#include <cstring>
#include <limits>
#include <new>
#include <stdexcept>

namespace ZEL::internal {

void TextField::set(std::string_view text) {
    if (text.empty()) {
        clear();
        return;
    }
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("text of a property longer than 4 GiB");
    }
    if (fRecord && fRecord->count == 1 && fRecord->size == text.size()) {
        std::memmove(fRecord->text(), text.data(), text.size()); // nobody else holds it; `text` may be its own
        return;
    }
    void * const memory = takeFromPool(sizeof(Record) + text.size());
    auto * const record = new (memory) Record{0, static_cast<std::uint32_t>(text.size())};
    std::memcpy(record->text(), text.data(), text.size());
    fRecord = record;
}

void TextField::destroy(Record * record) noexcept { giveToPool(record, sizeof(Record) + record->size); }

} // namespace ZEL::internal
