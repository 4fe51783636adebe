#pragma once

#include <ZEL/Export.h>

#include <map>
#include <memory>
#include <string>

namespace ZEL::Serializer {

/// One scope of bindings of prefixes to namespace URIs.
///
/// One prefix may hold several URIs; the first binding counts. The default namespace is bound to the prefix
/// `HASP::XmlConstants::XMLNS_ATTRIBUTE`. A new scope binds the XML prefix to the XML namespace. Copies share their
/// bindings until one of them changes. References that are returned stay valid until the scope changes.
class ZEL_API NamespaceContext {
public:
    NamespaceContext();

    /// Adds a binding; of the default namespace only the last one is kept.
    void addNamespace(std::string const & prefix, std::string const & uri);
    /// Removes all bindings of the prefix.
    void removeNamespace(std::string const & prefix);
    /// Removes all bindings of the prefix, whatever their URI.
    void removeNamespace(std::string const & prefix, std::string const & uri);
    /// `HASP::XmlConstants::NULL_NS_URI` if the prefix is not bound.
    [[nodiscard]] std::string const & lookupNamespace(std::string const & prefix) const;
    /// The first prefix, in prefix order, that is bound to the URI, or `HASP::XmlConstants::DEFAULT_NS_PREFIX`. Linear.
    [[nodiscard]] std::string const & lookupPrefix(std::string const & uri) const;
    [[nodiscard]] std::string const & defaultNamespace() const;
    /// Removes all bindings, that of the XML prefix too.
    void clear();

private:
    using Bindings = std::multimap<std::string, std::string>;

    /// The bindings, no longer shared with a copy.
    Bindings & own();

    std::shared_ptr<Bindings> fBindings; ///< never null
};

} // namespace ZEL::Serializer
