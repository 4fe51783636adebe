#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/ElementText.h>

#include <hasp_util/XmlConstants.h>

#include <algorithm>
#include <utility>

namespace ZEL::Serializer {
namespace {

enum class Place { Content, Attribute };

void appendEscaped(std::string & text, std::string_view value, Place place) {
    for (char const c : value) {
        bool const isInAttribute = place == Place::Attribute;
        if (c == '&') {
            text += "&amp;";
        } else if (c == '<') {
            text += "&lt;";
        } else if (c == '>') {
            text += "&gt;";
        } else if (c == '\r') {
            text += "&#13;";
        } else if (isInAttribute && c == '"') {
            text += "&quot;";
        } else if (isInAttribute && c == '\n') {
            text += "&#10;";
        } else if (isInAttribute && c == '\t') {
            text += "&#9;";
        } else {
            text += c;
        }
    }
}

void appendAttribute(std::string & text, std::string_view name, std::string_view value) {
    text.append(1, ' ').append(name).append("=\"");
    appendEscaped(text, value, Place::Attribute);
    text += '"';
}

bool isOfType(HASP::XmlReader::Attribute const & attribute) {
    return *attribute.localName == "type" && (*attribute.uri == XmiConstants::XMI_NS_URI ||
                                              *attribute.uri == HASP::XmlConstants::W3C_XML_SCHEMA_INSTANCE_NS_URI);
}

} // namespace

std::string const * PrefixBindings::prefixOf(std::string const & uri) const {
    auto const found = std::find_if(fBindings.rbegin(), last(), [&uri](Binding const & binding) {
        return *binding.uri == uri && !binding.prefix->empty();
    });
    return found != last() ? found->prefix : nullptr;
}

std::string const * PrefixBindings::uriOf(std::string_view prefix) const {
    auto const found = std::find_if(fBindings.rbegin(), last(),
                                    [prefix](Binding const & binding) { return *binding.prefix == prefix; });
    return found != last() ? found->uri : nullptr;
}

void ElementText::start(HASP::XmlReader const & xml, PrefixBindings const & bindings) {
    closeTag();
    std::string name = nameOf(xml.getNamespaceURI(), xml.getLocalName(), bindings);
    fText.append(1, '<').append(name);
    if (fOpen.empty()) {
        fDeclarations = fText.size();
    }
    fOpen.push_back(std::move(name));
    for (HASP::XmlReader::Attribute const & attribute : xml.attributes()) {
        std::string const attributeName = nameOf(*attribute.uri, *attribute.localName, bindings);
        if (isOfType(attribute)) {
            appendAttribute(fText, attributeName, typeNameOf(attribute.value, bindings));
        } else {
            appendAttribute(fText, attributeName, attribute.value);
        }
    }
    fIsInTag = true;
}

void ElementText::characters(std::string_view text) {
    if (!text.empty()) {
        closeTag();
        appendEscaped(fText, text, Place::Content);
    }
}

void ElementText::end() {
    if (std::exchange(fIsInTag, false)) {
        fText += "/>";
    } else {
        fText.append("</").append(fOpen.back()).append(1, '>');
    }
    fOpen.pop_back();
}

std::string ElementText::take() {
    std::string declarations;
    for (auto const & [uri, prefix] : std::exchange(fPrefixes, {})) {
        if (uri != XmiConstants::XMI_NS_URI && uri != HASP::XmlConstants::XML_NS_URI) {
            appendAttribute(declarations, "xmlns:" + prefix, uri);
        }
    }
    fUsed.clear();
    fText.insert(fDeclarations, declarations);
    return std::exchange(fText, {});
}

std::string ElementText::of(std::string_view name, std::string_view text) {
    std::string element = "<";
    element.append(name).append(1, '>');
    appendEscaped(element, text, Place::Content);
    return element.append("</").append(name).append(1, '>');
}

void ElementText::closeTag() {
    if (std::exchange(fIsInTag, false)) {
        fText += '>';
    }
}

// --- names -----------------------------------------------------------------------------------------------------------

std::string ElementText::nameOf(std::string const & uri, std::string const & localName,
                                PrefixBindings const & bindings) {
    return uri.empty() ? localName : prefixOf(uri, bindings) + ':' + localName;
}

std::string const & ElementText::prefixOf(std::string const & uri, PrefixBindings const & bindings) {
    auto const [entry, isNew] = fPrefixes.try_emplace(uri);
    if (!isNew) {
        return entry->second;
    }
    if (uri == XmiConstants::XMI_NS_URI || uri == HASP::XmlConstants::XML_NS_URI) {
        return entry->second =
                   uri == XmiConstants::XMI_NS_URI ? XmiConstants::XMI_NS_PREFIX : HASP::XmlConstants::XML_NS_PREFIX;
    }
    auto const isFree = [this](std::string const & prefix) {
        return prefix != XmiConstants::XMI_NS_PREFIX && fUsed.count(prefix) == 0;
    };
    std::string prefix;
    if (std::string const * const known = bindings.prefixOf(uri); known != nullptr && isFree(*known)) {
        prefix = *known;
    }
    for (std::size_t number = fPrefixes.size(); prefix.empty() || !isFree(prefix); ++number) {
        prefix = "ns" + std::to_string(number);
    }
    fUsed.insert(prefix);
    return entry->second = std::move(prefix);
}

/// The name of a class, with the prefix by which this text knows its namespace.
std::string ElementText::typeNameOf(std::string_view value, PrefixBindings const & bindings) {
    std::size_t const colon = value.find(':');
    std::string const * const uri = colon != std::string_view::npos ? bindings.uriOf(value.substr(0, colon)) : nullptr;
    return uri == nullptr ? std::string(value) : nameOf(*uri, std::string(value.substr(colon + 1)), bindings);
}

} // namespace ZEL::Serializer
