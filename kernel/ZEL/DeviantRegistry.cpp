#include <ZEL/DeviantRegistry.h>

#include <functional>
#include <map>

namespace ZEL {

namespace {

using Variant = std::pair<ReferenceCountingIntf *, Deviant>;
using Variants = std::multimap<ReferenceCountingIntf *, Variant, std::less<>>;

Variants & variants() {
    static Variants & registry = *new Variants;
    return registry;
}

} // namespace

std::size_t DeviantRegistry::fNumberOfIds = 0;

void * DeviantRegistry::getId(ReferenceCountingIntf * body, Deviant deviant) {
    if (body == nullptr) {
        return nullptr;
    }
    auto const [first, last] = variants().equal_range(body);
    for (auto entry = first; entry != last; ++entry) {
        if (entry->second.second == deviant) {
            return &entry->second;
        }
    }
    auto const entry = variants().emplace_hint(last, body, Variant(body, deviant));
    ++fNumberOfIds;
    return &entry->second;
}

std::pair<void *, Deviant> DeviantRegistry::getVariantInfo(void const * id) {
    if (id == nullptr) {
        return {nullptr, Deviant()};
    }
    auto const & variant = *static_cast<Variant const *>(id);
    return {variant.first, variant.second};
}

ReferenceCountingIntf * DeviantRegistry::getReferenceCountingIntf(void const * id) {
    return id == nullptr ? nullptr : static_cast<Variant const *>(id)->first;
}

void DeviantRegistry::erase(ReferenceCountingIntf * body) noexcept { fNumberOfIds -= variants().erase(body); }

} // namespace ZEL
