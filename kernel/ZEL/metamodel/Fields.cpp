#include <ZEL/base/ObjectPool.h>
#include <ZEL/metamodel/Fields.h>

#include <limits>
#include <new>
#include <stdexcept>

namespace ZEL::internal {

void TextField::set(std::string_view text) {
    if (text.size() > kShort) {
        setLong(text);
        return;
    }
    // By way of other bytes, since `text` may stand in this field or in the record that it gives up.
    Bytes bytes{};
    text.copy(bytes.data(), kShort);
    bytes[kShort] = static_cast<char>(text.size());
    if (isLong()) {
        release();
    }
    fBytes = bytes;
}

void TextField::setLong(std::string_view text) {
    if (text.size() > std::numeric_limits<std::uint32_t>::max()) {
        throw std::length_error("text of a property longer than 4 GiB");
    }
    if (isLong() && record()->count == 1 && record()->size == text.size()) {
        std::memmove(record()->text(), text.data(), text.size()); // nobody else holds it; `text` may be its own
        return;
    }
    auto const size = static_cast<std::uint32_t>(text.size());
    auto * const made = new (takeFromPool(sizeof(Record) + size)) Record{1, size};
    std::memcpy(made->text(), text.data(), size);
    if (isLong()) {
        release();
    }
    std::memcpy(fBytes.data(), &made, sizeof(made));
    std::memcpy(fBytes.data() + kSizeAt, &size, sizeof(size));
    fBytes[kShort] = static_cast<char>(kLong);
}

void TextField::release() noexcept {
    Record * const held = record();
    if (--held->count == 0) {
        giveToPool(held, sizeof(Record) + held->size);
    }
}

} // namespace ZEL::internal
