#include <ZEL/base/AtScopeEnd.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/writer/ContextPrinter.h>
#include <ZEL/serializer/writer/ObjectContexts.h>
#include <ZEL/serializer/writer/RemainderWriter.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>

namespace ZEL::Serializer {
namespace {

using Place = Remainder::Place;

Context contextOf(Remainder::Attribute const & attribute) {
    Context context;
    context.setRole(attribute.uri, attribute.name);
    context.setAttribute(attribute.value);
    return context;
}

void collectNamespace(std::string const & uri, std::string const & prefix, ContextPrinter::Namespaces & namespaces) {
    constexpr std::size_t many = 256; // more than any tool has; the others get prefixes where they are written
    bool const isTaken =
        namespaces.size() >= many || prefix.empty() || uri == XmiConstants::XMI_NS_URI ||
        std::any_of(namespaces.begin(), namespaces.end(), [&](auto const & other) { return other.second == prefix; });
    if (!isTaken) {
        namespaces.emplace(uri, prefix);
    }
}

/// Whether any character is one that ISO 8859-1 does not have.
bool isWide(std::string_view text) {
    constexpr unsigned char first = 0xC4; // that begins such a character
    return std::any_of(text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) >= first; });
}

/// Whether the markup has such a character anywhere but in texts and in values of attributes, where a reference can
/// stand for it.
bool hasWideNames(std::string_view markup) {
    if (!isWide(markup)) {
        return false;
    }
    bool isInTag = false;
    char quote = 0;
    for (std::size_t at = 0; at < markup.size(); ++at) {
        char const c = markup[at];
        if (quote != 0) {
            quote = c == quote ? '\0' : quote;
        } else if (!isInTag) {
            isInTag = c == '<';
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '>') {
            isInTag = false;
        } else if (isWide(markup.substr(at, 1))) {
            return true;
        }
    }
    return false;
}

} // namespace

bool RemainderWriter::hasChildren(Remainder const & remainder) {
    return !remainder.links.empty() ||
           std::any_of(remainder.elements.begin(), remainder.elements.end(),
                       [](Remainder::Element const & element) { return element.place == Place::Inside; });
}

void RemainderWriter::collect(Remainder const & remainder, Collected & collected) {
    for (Remainder::Attribute const & attribute : remainder.attributes) {
        collectNamespace(attribute.uri, attribute.prefix, collected.namespaces);
        collected.hasWideNames = collected.hasWideNames || isWide(attribute.name);
    }
    for (Remainder::Link const & link : remainder.links) {
        collectNamespace(link.typeUri, link.typePrefix, collected.namespaces);
        collected.hasWideNames = collected.hasWideNames || hasWideNames(link.content);
    }
    for (Remainder::Element const & element : remainder.elements) {
        collected.hasWideNames = collected.hasWideNames || hasWideNames(element.xml);
    }
}

void RemainderWriter::appendAttributes(Remainder const & remainder, Context const & parent,
                                       ContextSequence & sequence) {
    if (remainder.attributes.empty()) {
        return;
    }
    std::unordered_set<QualifiedName> taken;
    for (Context const & other : sequence) {
        if (other.isAttribute()) {
            taken.insert(other.getRole());
        }
    }
    for (Remainder::Attribute const & attribute : remainder.attributes) {
        Context context = contextOf(attribute);
        context.setParent(parent);
        if (attribute.place == Place::Inside && taken.insert(context.getRole()).second) {
            sequence.addContext(std::move(context));
        }
    }
}

void RemainderWriter::appendBeside(Remainder const & remainder, ContextSequence & sequence) {
    for (Remainder::Attribute const & attribute : remainder.attributes) {
        if (attribute.place == Place::Beside) {
            sequence.addContext(contextOf(attribute));
        }
    }
}

void RemainderWriter::writeAttributes(Remainder const & remainder) {
    for (Remainder::Attribute const & attribute : remainder.attributes) {
        if (attribute.place == Place::Inside && !fXml.hasAttribute(attribute.name, attribute.uri)) {
            fXml.writeAttribute(attribute.name, attribute.uri, attribute.value);
        }
    }
}

std::size_t RemainderWriter::write(Remainder const & remainder, ContextSequence const & sequence,
                                   ContextPrinter::Elements elements, ContextPrinter::Level level) {
    std::unordered_multimap<std::string, Remainder::Element const *> byLink;
    for (Remainder::Element const & element : remainder.elements) {
        if (!element.property.empty()) {
            byLink.emplace(element.property + '#' + element.target, &element);
        }
    }
    if (byLink.empty()) {
        return fPrinter.write(sequence, elements, level);
    }
    fPrinter.setLinkContents([&](std::string const & role, std::string const & href) -> std::string const * {
        std::size_t const sign = href.rfind('#');
        auto const found = sign == std::string::npos ? byLink.end() : byLink.find(role + href.substr(sign));
        if (found == byLink.end()) {
            return nullptr;
        }
        Remainder::Element const * const element = found->second;
        byLink.erase(found);
        fInLinks.insert(element);
        return &element->xml;
    });
    internal::AtScopeEnd const reset([this] { fPrinter.setLinkContents({}); });
    return fPrinter.write(sequence, elements, level);
}

void RemainderWriter::writeChildren(ImmutableClassObject const & object, Remainder const & remainder) {
    if (!remainder.links.empty()) {
        static_cast<void>(fContexts.selectModel(object));
    }
    for (Remainder::Link const & link : remainder.links) {
        writeLink(link);
    }
    writeElements(remainder, Place::Inside);
}

void RemainderWriter::writeBeside(Remainder const & remainder) { writeElements(remainder, Place::Beside); }

void RemainderWriter::writeElements(Remainder const & remainder, Place place) {
    for (Remainder::Element const & element : remainder.elements) {
        if (element.place == place && fInLinks.erase(&element) == 0) {
            fXml.writeMarkup(element.xml);
        }
    }
}

void RemainderWriter::writeLink(Remainder::Link const & link) {
    if (link.content.empty()) {
        fXml.writeEmptyElement(link.property, HASP::XmlConstants::NULL_NS_URI);
    } else {
        fXml.writeStartElement(link.property, HASP::XmlConstants::NULL_NS_URI);
    }
    if (!link.typeName.empty()) {
        fPrinter.writeType(QualifiedName(link.typeUri, link.typeName));
    }
    if (link.target.find('#') == std::string::npos) {
        fXml.writeAttribute("idref", XmiConstants::XMI_NS_URI, link.target);
    } else {
        fXml.writeAttribute("href", HASP::XmlConstants::NULL_NS_URI, fContexts.relativeTo(link.target));
    }
    if (!link.content.empty()) {
        fXml.writeMarkup(link.content);
        fXml.writeEndElement();
    }
}

} // namespace ZEL::Serializer
