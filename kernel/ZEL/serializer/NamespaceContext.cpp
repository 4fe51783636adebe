#include <ZEL/serializer/NamespaceContext.h>

#include <hasp_util/XmlConstants.h>

namespace ZEL::Serializer {

using HASP::XmlConstants;

NamespaceContext::NamespaceContext() : fBindings(std::make_shared<Bindings>()) {
    fBindings->emplace(XmlConstants::XML_NS_PREFIX, XmlConstants::XML_NS_URI);
}

NamespaceContext::Bindings & NamespaceContext::own() {
    if (fBindings.use_count() != 1) {
        fBindings = std::make_shared<Bindings>(*fBindings);
    }
    return *fBindings;
}

void NamespaceContext::addNamespace(std::string const & prefix, std::string const & uri) {
    Bindings & bindings = own();
    // Entered first: the arguments may be texts of the binding that goes.
    auto const added = bindings.emplace(prefix, uri);
    if (added->first == XmlConstants::XMLNS_ATTRIBUTE) {
        bindings.erase(bindings.lower_bound(added->first), added);
    }
}

void NamespaceContext::removeNamespace(std::string const & prefix) { own().erase(prefix); }

void NamespaceContext::removeNamespace(std::string const & prefix, std::string const &) { removeNamespace(prefix); }

std::string const & NamespaceContext::lookupNamespace(std::string const & prefix) const {
    // Of several bindings the first counts, which `find` does not promise.
    auto const found = fBindings->lower_bound(prefix);
    return found != fBindings->end() && found->first == prefix ? found->second : XmlConstants::NULL_NS_URI;
}

std::string const & NamespaceContext::lookupPrefix(std::string const & uri) const {
    for (auto const & [prefix, boundUri] : *fBindings) {
        if (boundUri == uri) {
            return prefix;
        }
    }
    return XmlConstants::DEFAULT_NS_PREFIX;
}

std::string const & NamespaceContext::defaultNamespace() const {
    return lookupNamespace(XmlConstants::XMLNS_ATTRIBUTE);
}

void NamespaceContext::clear() { fBindings = std::make_shared<Bindings>(); }

} // namespace ZEL::Serializer
