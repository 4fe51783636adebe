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

} // namespace

bool RemainderWriter::hasChildren(Remainder const & remainder) {
    return !remainder.links.empty() ||
           std::any_of(remainder.elements.begin(), remainder.elements.end(),
                       [](Remainder::Element const & element) { return element.place == Place::Inside; });
}

void RemainderWriter::collectNamespaces(Remainder const & remainder, ContextPrinter::Namespaces & namespaces) {
    constexpr std::size_t many = 256; // more than any tool has; the others get prefixes where they are written
    for (Remainder::Attribute const & attribute : remainder.attributes) {
        bool const isTaken = namespaces.size() >= many || attribute.prefix.empty() ||
                             attribute.uri == XmiConstants::XMI_NS_URI ||
                             std::any_of(namespaces.begin(), namespaces.end(),
                                         [&](auto const & other) { return other.second == attribute.prefix; });
        if (!isTaken) {
            namespaces.emplace(attribute.uri, attribute.prefix);
        }
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
