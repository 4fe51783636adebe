#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlEscaper.h>
#include <hasp_util/XmlScopes.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

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

XmlScopes::XmlScopes() { add({XmlConstants::XML_NS_PREFIX, XmlConstants::XML_NS_URI, 0, 0, true}); }

XmlScopes::Binding & XmlScopes::add(Binding binding) {
    std::size_t const place = fBindings.size();
    Binding & added = fBindings.emplace_back(std::move(binding));
    try {
        fByPrefix[added.prefix].push_back(place);
        fByUri[added.uri].push_back(place);
    } catch (...) {
        dropLast();
        throw;
    }
    fTaken = place + 1;
    return added;
}

/// Also one that has not got all of its places.
void XmlScopes::dropLast() noexcept {
    for (auto [places, text] : {std::pair(&fByPrefix, &fBindings.back().prefix), {&fByUri, &fBindings.back().uri}}) {
        auto const entry = places->find(*text);
        if (entry == places->end()) {
            continue;
        }
        if (!entry->second.empty() && entry->second.back() + 1 == fBindings.size()) {
            entry->second.pop_back();
        }
        if (entry->second.empty()) {
            places->erase(entry);
        }
    }
    fBindings.pop_back();
    fTaken = fBindings.size();
}

XmlScopes::Binding * XmlScopes::byPrefix(std::string_view prefix) noexcept {
    auto const found = fByPrefix.find(prefix);
    return found != fByPrefix.end() ? &fBindings[found->second.back()] : nullptr;
}

XmlScopes::Binding * XmlScopes::byUri(std::string_view uri, bool isAttribute) noexcept {
    auto const found = fByUri.find(uri);
    if (found == fByUri.end()) {
        return nullptr;
    }
    auto const serves = [&](std::size_t place) {
        Binding const & binding = fBindings[place];
        return !(isAttribute && binding.prefix.empty()) && byPrefix(binding.prefix) == &binding;
    };
    auto const place = std::find_if(found->second.rbegin(), found->second.rend(), serves);
    return place != found->second.rend() ? &fBindings[*place] : nullptr;
}

XmlScopes::Binding & XmlScopes::bind(std::string_view prefix, std::string_view uri) {
    refuseUnfit(prefix, uri);
    fLastIncomplete = fTag;
    return add({std::string(prefix), std::string(uri), fTag, fTag, false});
}

std::string const & XmlScopes::prefixFor(std::string_view uri, bool isAttribute) {
    Binding * binding = byUri(uri, isAttribute);
    if (binding == nullptr) {
        std::string fresh;
        // Among many bindings a small number is hardly free.
        constexpr std::size_t many = 64;
        for (std::size_t number = fBindings.size() > many ? fBindings.size() : 1;
             fresh.empty() || byPrefix(fresh) != nullptr; ++number) {
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
    add({std::string(prefix), std::string(uri), fTag, 0, true});
    return true;
}

XmlScopes::Binding const * XmlScopes::takeUndeclaredOfTag() noexcept {
    while (fTaken != 0 && fBindings[fTaken - 1].tag == fTag) {
        Binding & binding = fBindings[--fTaken];
        if (!binding.isWritten) {
            binding.isWritten = true;
            return &binding;
        }
    }
    return nullptr;
}

} // namespace HASP
