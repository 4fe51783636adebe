#include <ZEL/metamodel/NamespaceRegistry.h>

#include <algorithm>

namespace ZEL {

NamespaceRegistry * NamespaceRegistry::instance() {
    static NamespaceRegistry registry;
    return &registry;
}

void NamespaceRegistry::bindMetaUriToPrefix(std::string const & metaUri, std::string const & prefix) {
    fPrefixes[metaUri] = prefix;
}

void NamespaceRegistry::unbindPrefixMetaUri(std::string const & metaUri) { fPrefixes.erase(metaUri); }

std::string NamespaceRegistry::getPrefixFromMetaUri(std::string const & metaUri) const {
    auto const found = fPrefixes.find(metaUri);
    return found == fPrefixes.end() ? std::string() : found->second;
}

std::string NamespaceRegistry::getMetaUri(std::string const & prefix) const {
    auto const found =
        std::find_if(fPrefixes.begin(), fPrefixes.end(), [&](auto const & entry) { return entry.second == prefix; });
    return found == fPrefixes.end() ? std::string() : found->first;
}

HASP::GVector<HASP::GPair<std::string, std::string>> NamespaceRegistry::getMetaUriMappings() const {
    return {fPrefixes.begin(), fPrefixes.end()};
}

} // namespace ZEL
