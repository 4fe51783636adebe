#include <ZEL/base/ReferenceCountingIntf.h>
#include <ZEL/deviants/DeviantRegistry.h>

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
    ReferenceCountingIntf::internal_tellOfEnds(&DeviantRegistry::retract);
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

void DeviantRegistry::retract(ReferenceCountingIntf * body) noexcept { variants().erase(body); }

} // namespace ZEL
