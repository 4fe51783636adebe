#include <ZEL/metamodel/NamespaceRegistry.h>

#include <algorithm>

namespace ZEL {

NamespaceRegistry * NamespaceRegistry::instance() {
    static NamespaceRegistry registry;
    return &registry;
}

std::string NamespaceRegistry::getPrefixFromMetaUri(std::string const & metaUri) const {
    auto const found = fPrefixes.find(metaUri);
    return found == fPrefixes.end() ? std::string() : found->second;
}

std::string NamespaceRegistry::getMetaUri(std::string const & prefix) const {
    auto const found =
        std::find_if(fPrefixes.begin(), fPrefixes.end(), [&](auto const & entry) { return entry.second == prefix; });
    return found == fPrefixes.end() ? std::string() : found->first;
}

} // namespace ZEL
