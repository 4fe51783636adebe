#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlEscaper.h>
#include <hasp_util/XmlScopes.h>

#include <algorithm>
#include <stdexcept>

namespace HASP {

namespace {

void refuseUnfit(std::string_view prefix, std::string_view uri) {
    bool const isXml = prefix == XmlConstants::XML_NS_PREFIX;
    if (prefix == XmlConstants::XMLNS_ATTRIBUTE || uri == XmlConstants::XMLNS_ATTRIBUTE_NS_URI ||
        isXml != (uri == XmlConstants::XML_NS_URI)) {
        throw std::runtime_error("prefix '" + std::string(prefix) + "' cannot stand for namespace '" +
                                 std::string(uri) + "'");
    }
    if (!prefix.empty() && uri.empty()) {
        throw std::runtime_error("prefix '" + std::string(prefix) + "' has no namespace");
    }
    // Checked here, because the declaration is written later, where it is too late to fail.
    if (char const * const at = XmlEscaper::findUnwritable(uri)) {
        throw std::runtime_error("cannot write " + XmlEscaper::describe(uri, at) + " in the namespace of prefix '" +
                                 std::string(prefix) + "'");
    }
}

} // namespace

XmlScopes::XmlScopes() { fBindings.push_back({XmlConstants::XML_NS_PREFIX, XmlConstants::XML_NS_URI, 0, 0, true}); }

XmlScopes::Binding * XmlScopes::byPrefix(std::string_view prefix) noexcept {
    auto const found = std::find_if(fBindings.rbegin(), fBindings.rend(),
                                    [prefix](Binding const & binding) { return binding.prefix == prefix; });
    return found != fBindings.rend() ? &*found : nullptr;
}

XmlScopes::Binding * XmlScopes::byUri(std::string_view uri, bool isAttribute) noexcept {
    auto const serves = [&](Binding const & binding) {
        return binding.uri == uri && !(isAttribute && binding.prefix.empty()) && byPrefix(binding.prefix) == &binding;
    };
    auto const found = std::find_if(fBindings.rbegin(), fBindings.rend(), serves);
    return found != fBindings.rend() ? &*found : nullptr;
}

XmlScopes::Binding & XmlScopes::bind(std::string_view prefix, std::string_view uri) {
    refuseUnfit(prefix, uri);
    fLastIncomplete = fTag;
    return fBindings.emplace_back(Binding{std::string(prefix), std::string(uri), fTag, fTag, false});
}

std::string const & XmlScopes::prefixFor(std::string_view uri, bool isAttribute) {
    Binding * binding = byUri(uri, isAttribute);
    if (binding == nullptr) {
        std::string fresh;
        for (int number = 1; fresh.empty() || byPrefix(fresh) != nullptr; ++number) {
            fresh = "ns" + std::to_string(number);
        }
        binding = &bind(fresh, uri);
    }
    binding->lastUse = fTag;
    return binding->prefix;
}

std::string const & XmlScopes::prefixFor(std::string_view prefix, std::string_view uri, bool isAttribute) {
    if (prefix.empty() && isAttribute) {
        return prefixFor(uri, isAttribute);
    }
    Binding * binding = byPrefix(prefix);
    if (binding == nullptr || binding->uri != uri) {
        if (binding != nullptr && (binding->tag == fTag || binding->lastUse == fTag)) {
            return prefixFor(uri, isAttribute);
        }
        binding = &bind(prefix, uri);
    }
    binding->lastUse = fTag;
    return binding->prefix;
}

bool XmlScopes::declare(std::string_view prefix, std::string_view uri) {
    refuseUnfit(prefix, uri);
    Binding * const binding = byPrefix(prefix);
    bool const isOfThisTag = binding != nullptr && binding->tag == fTag;
    if (isOfThisTag && binding->isWritten && prefix.empty()) {
        throw std::runtime_error("default namespace '" + std::string(uri) + "' is declared beside '" + binding->uri +
                                 "'");
    }
    if (binding != nullptr && binding->uri != uri && (isOfThisTag || binding->lastUse == fTag)) {
        throw std::runtime_error("prefix '" + std::string(prefix) + "' stands for namespace '" + binding->uri +
                                 "' already, it cannot be declared for '" + std::string(uri) + "'");
    }
    if (isOfThisTag) {
        bool const wasWritten = binding->isWritten;
        binding->isWritten = true;
        return !wasWritten;
    }
    if (binding != nullptr && binding->tag == 0) {
        return false; // "xml", which needs no declaration
    }
    fBindings.push_back({std::string(prefix), std::string(uri), fTag, 0, true});
    return true;
}

XmlScopes::Binding const * XmlScopes::takeUndeclaredOfTag() noexcept {
    for (auto at = fBindings.rbegin(); at != fBindings.rend() && at->tag == fTag; ++at) {
        if (!at->isWritten) {
            at->isWritten = true;
            return &*at;
        }
    }
    return nullptr;
}

} // namespace HASP
