#pragma once

#include <ZEL/base/Cleanup.h>

#include <hasp_util/GPair.h>
#include <hasp_util/GVector.h>

#include <map>
#include <string>

namespace ZEL {

/// Pairs the URIs of metamodels with their prefixes in files. A URI has one prefix; a prefix may stand for several
/// URIs.
///
/// One for the process, made on first use.
class ZEL_API NamespaceRegistry : public Cleanup {
public:
    [[nodiscard]] static NamespaceRegistry * instance();

    /// Replaces an earlier prefix of the URI.
    void bindMetaUriToPrefix(std::string const & metaUri, std::string const & prefix);
    /// Nothing for an unknown URI.
    void unbindPrefixMetaUri(std::string const & metaUri);

    /// Empty for an unknown URI.
    [[nodiscard]] std::string getPrefixFromMetaUri(std::string const & metaUri) const;
    /// The first URI in the order of texts that has the prefix, empty if none has. Linear in the number of URIs.
    [[nodiscard]] std::string getMetaUri(std::string const & prefix) const;
    /// All pairs of URI and prefix, in the order of the URIs.
    [[nodiscard]] HASP::GVector<HASP::GPair<std::string, std::string>> getMetaUriMappings() const;

private:
    NamespaceRegistry() = default;

    std::map<std::string, std::string> fPrefixes; ///< by URI
};

} // namespace ZEL
