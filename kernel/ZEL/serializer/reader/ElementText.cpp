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

void ElementText::start(HASP::XmlReader const & xml, std::vector<PrefixBinding> const & bindings) {
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
                                std::vector<PrefixBinding> const & bindings) {
    return uri.empty() ? localName : prefixOf(uri, bindings) + ':' + localName;
}

std::string const & ElementText::prefixOf(std::string const & uri, std::vector<PrefixBinding> const & bindings) {
    auto const [entry, isNew] = fPrefixes.try_emplace(uri);
    if (!isNew) {
        return entry->second;
    }
    if (uri == XmiConstants::XMI_NS_URI || uri == HASP::XmlConstants::XML_NS_URI) {
        return entry->second =
                   uri == XmiConstants::XMI_NS_URI ? XmiConstants::XMI_NS_PREFIX : HASP::XmlConstants::XML_NS_PREFIX;
    }
    auto const isFree = [&](std::string const & prefix) {
        return prefix != XmiConstants::XMI_NS_PREFIX &&
               std::none_of(fPrefixes.begin(), fPrefixes.end(),
                            [&](auto const & used) { return used.second == prefix; });
    };
    auto const found = std::find_if(bindings.rbegin(), bindings.rend(), [&](PrefixBinding const & binding) {
        return *binding.uri == uri && !binding.prefix->empty() && isFree(*binding.prefix);
    });
    if (found != bindings.rend()) {
        return entry->second = *found->prefix;
    }
    std::string made;
    for (std::size_t number = fPrefixes.size(); made.empty() || !isFree(made); ++number) {
        made = "ns" + std::to_string(number);
    }
    return entry->second = made;
}

/// The name of a class, with the prefix by which this text knows its namespace.
std::string ElementText::typeNameOf(std::string_view value, std::vector<PrefixBinding> const & bindings) {
    std::size_t const colon = value.find(':');
    auto const found = std::find_if(bindings.rbegin(), bindings.rend(), [&](PrefixBinding const & binding) {
        return colon != std::string_view::npos && *binding.prefix == value.substr(0, colon);
    });
    return found == bindings.rend() ? std::string(value)
                                    : nameOf(*found->uri, std::string(value.substr(colon + 1)), bindings);
}

} // namespace ZEL::Serializer
