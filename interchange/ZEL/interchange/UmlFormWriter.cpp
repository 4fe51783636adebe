#include <ZEL/base/Exception.h>
#include <ZEL/interchange/UmlFormWriter.h>
#include <ZEL/metamodel/NamespaceRegistry.h>
#include <ZEL/serializer/XmiConstants.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>

namespace ZEL::Interchange {

using HASP::XmlReader;
using internal::PropertyView;
using Serializer::QualifiedName;
using Serializer::XmiConstants;

namespace {

constexpr char kXmi[] = "http://www.omg.org/spec/XMI/20131001";
constexpr char kUmlOfEclipse[] = "http://www.eclipse.org/uml2/5.0.0/UML";
constexpr char kUmlOfOmg[] = "http://www.omg.org/spec/UML/20161101";
constexpr char kTags[] = "http://www.omg.org/spec/MOF/20131001"; ///< of MOF's extension by tags
constexpr char kVersion[] = "20131001";                          ///< of XMI, which Eclipse asks for

bool isOfXmi(XmlReader::Attribute const & attribute, std::string_view name) {
    return *attribute.localName == name && *attribute.uri == XmiConstants::XMI_NS_URI;
}

bool isBlank(std::string_view text) { return text.find_first_not_of(" \t\r\n") == std::string_view::npos; }

/// The prefix of the name of a class, as `xmi:type` has it; empty if there is none.
std::string_view prefixOf(std::string_view typeName) {
    std::size_t const colon = typeName.find(':');
    return colon == std::string_view::npos ? std::string_view() : typeName.substr(0, colon);
}

} // namespace

UmlFormWriter::UmlFormWriter(UmlForm form, std::string plainFile, HASP::XmlWriter & xml)
    : fForm(form),
      fPlainFile(std::move(plainFile)),
      fUml(NamespaceRegistry::instance()->getMetaUri("uml")),
      fForeign(NamespaceRegistry::instance()->getMetaUri("Foreign")),
      fXml(xml) {}

void UmlFormWriter::write() {
    survey();
    // Eclipse has an envelope around several elements only.
    fHasEnvelope = fForm != UmlForm::EclipseUml2 || fTops != 1;
    fXml.writeStartDocument("1.0");
    XmlReader xml(fPlainFile);
    while (xml.hasNext()) {
        switch (xml.next()) {
        case XmlReader::StartElement:
            start(xml);
            break;
        case XmlReader::EndElement:
            end();
            break;
        case XmlReader::Characters:
            if (fLevels.back().isWritten) {
                fText += xml.getText();
            }
            break;
        }
    }
    if (xml.hasError()) {
        throw Exception(xml.error());
    }
    fXml.writeEndDocument();
}

void UmlFormWriter::survey() {
    XmlReader xml(fPlainFile);
    std::size_t depth = 0;
    while (xml.hasNext()) {
        XmlReader::EventType const event = xml.next();
        if (event == XmlReader::EndElement) {
            --depth;
        } else if (event == XmlReader::StartElement) {
            fTops += depth == 1 && !isHead(xml) ? 1 : 0;
            fUris.insert(xml.getNamespaceURI());
            for (XmlReader::Attribute const & attribute : xml.attributes()) {
                fUris.insert(*attribute.uri);
                if (isOfXmi(attribute, "type")) {
                    fPrefixes.emplace(prefixOf(attribute.value));
                }
            }
            for (XmlReader::Namespace const & binding : xml.namespaces()) {
                if (depth == 0) {
                    fNamespaces.emplace(*binding.prefix, *binding.uri);
                }
            }
            ++depth;
        }
    }
}

void UmlFormWriter::start(XmlReader const & xml) {
    if (!fLevels.empty() && !fLevels.back().isWritten) {
        fLevels.push_back({nullptr, false});
        return;
    }
    if (fLevels.empty()) {
        fLevels.emplace_back();
        startRoot(xml);
        return;
    }
    Level level;
    level.isWritten = fLevels.size() > 1 || !isHead(xml);
    if (level.isWritten) {
        startElement(xml, level);
    }
    fLevels.push_back(level);
}

/// The envelope, or what its place is taken by: the one element in it, whose tag takes the namespaces over.
void UmlFormWriter::startRoot(XmlReader const & xml) {
    fTag.uri = kXmi;
    fTag.name = "XMI";
    for (auto const & [prefix, uri] : fNamespaces) {
        if (fUris.count(uri) != 0 || fPrefixes.count(prefix) != 0) {
            fTag.bindings.emplace_back(uri == fForeign ? "mofext" : prefix, translated(uri));
        }
    }
    if (fForm == UmlForm::EclipseUml2) {
        fTag.attributes.push_back({kXmi, "version", kVersion});
    }
    for (XmlReader::Attribute const & attribute : xml.attributes()) {
        if (!isOfXmi(attribute, "version")) {
            fTag.attributes.push_back({translated(*attribute.uri), *attribute.localName, std::string(attribute.value)});
        }
    }
    fHasTag = fHasEnvelope;
}

void UmlFormWriter::startElement(XmlReader const & xml, Level & level) {
    if (fHasTag) {
        writeTag(false);
    }
    writeText();
    fTag.uri = translated(xml.getNamespaceURI());
    fTag.name = xml.getLocalName();
    for (XmlReader::Namespace const & binding : xml.namespaces()) {
        fTag.bindings.emplace_back(*binding.prefix, translated(*binding.uri));
    }
    level.metaClass = classOf(xml);
    takeAttributes(xml, level);
    fHasTag = true;
}

void UmlFormWriter::end() {
    bool const isWritten = fLevels.back().isWritten && (fHasEnvelope || fLevels.size() > 1);
    fLevels.pop_back();
    if (!isWritten) {
        return;
    }
    if (fHasTag) {
        bool const isEmpty = fText.empty() && fTag.links.empty();
        writeTag(isEmpty);
        if (isEmpty) {
            return;
        }
        if (!fText.empty()) {
            fXml.writeValue(std::exchange(fText, {})); // be it blank
        }
    }
    writeText();
    fXml.writeEndElement();
}

void UmlFormWriter::writeText() {
    if (!isBlank(fText)) {
        fXml.writeValue(fText);
    }
    fText.clear();
}

void UmlFormWriter::writeTag(bool isEmpty) {
    Tag const tag = std::exchange(fTag, {});
    fHasTag = false;
    auto const own = std::find_if(tag.bindings.begin(), tag.bindings.end(),
                                  [&tag](Binding const & binding) { return binding.second == tag.uri; });
    bool const isOwn = own != tag.bindings.end();
    if (isOwn && isEmpty) {
        fXml.writeEmptyElement(own->first, tag.name, tag.uri);
    } else if (isOwn) {
        fXml.writeStartElement(own->first, tag.name, tag.uri);
    } else if (isEmpty) {
        fXml.writeEmptyElement(tag.name, tag.uri);
    } else {
        fXml.writeStartElement(tag.name, tag.uri);
    }
    for (auto const & [prefix, uri] : tag.bindings) {
        fXml.writeNamespace(prefix, uri);
    }
    for (Attribute const & attribute : tag.attributes) {
        fXml.writeAttribute(attribute.name, attribute.uri, attribute.value);
    }
    std::for_each(tag.links.begin(), tag.links.end(), [this](Attribute const & links) { writeLinks(links); });
}

void UmlFormWriter::writeLinks(Attribute const & links) {
    std::string_view rest = links.value;
    while (!isBlank(rest)) {
        rest.remove_prefix(rest.find_first_not_of(" \t\r\n"));
        std::size_t const end = std::min(rest.find_first_of(" \t\r\n"), rest.size());
        fXml.writeEmptyElement(links.name, HASP::XmlConstants::NULL_NS_URI);
        fXml.writeAttribute("idref", kXmi, rest.substr(0, end));
        rest.remove_prefix(end);
    }
}

bool UmlFormWriter::isHead(XmlReader const & xml) const {
    if (xml.getNamespaceURI() != XmiConstants::XMI_NS_URI) {
        return false;
    }
    bool const isDocumentation = xml.getLocalName() == "Documentation" && fForm == UmlForm::EclipseUml2 &&
                                 xml.getAttributeValue("exporter", {}) == XmiConstants::ZEL_EXPORTER;
    return isDocumentation ||
           (xml.getLocalName() == "Extension" && xml.getAttributeValue("extender", {}) == XmiConstants::ZEL_EXTENDER);
}

std::string UmlFormWriter::translated(std::string const & uri) const {
    if (uri == XmiConstants::XMI_NS_URI) {
        return kXmi;
    }
    if (uri == fForeign) {
        return kTags; // all else that is foreign is written by its own names
    }
    return uri != fUml ? uri : fForm == UmlForm::EclipseUml2 ? kUmlOfEclipse : kUmlOfOmg;
}

internal::MetaClassView const * UmlFormWriter::classOf(XmlReader const & xml) {
    for (XmlReader::Attribute const & attribute : xml.attributes()) {
        if (isOfXmi(attribute, "type")) {
            std::string_view const prefix = prefixOf(attribute.value);
            auto const found = fNamespaces.find(prefix);
            return found == fNamespaces.end() || prefix.empty()
                       ? nullptr
                       : fMetaClasses.find({found->second, attribute.value.substr(prefix.size() + 1)});
        }
    }
    return xml.getNamespaceURI().empty() ? nullptr : fMetaClasses.find({xml.getNamespaceURI(), xml.getLocalName()});
}

void UmlFormWriter::takeAttributes(XmlReader const & xml, Level const & level) {
    bool const isTag = fTag.uri == kTags;
    auto const nameOf = [isTag](XmlReader::Attribute const & attribute) {
        return isTag && *attribute.localName == "base_Element" ? "element" : *attribute.localName;
    };
    auto const take = [&](XmlReader::Attribute const & attribute) {
        fTag.attributes.push_back({translated(*attribute.uri), nameOf(attribute), std::string(attribute.value)});
    };
    auto const attributes = xml.attributes();
    // As the others do it, the class first.
    for (XmlReader::Attribute const & attribute : attributes) {
        if (isOfXmi(attribute, "type")) {
            take(attribute);
        }
    }
    for (XmlReader::Attribute const & attribute : attributes) {
        PropertyView const * const property = level.metaClass != nullptr && attribute.uri->empty()
                                                  ? level.metaClass->find(*attribute.localName)
                                                  : nullptr;
        bool const isLink = property != nullptr && !property->isDataType && !property->isComposite;
        if (property != nullptr && property->role == PropertyView::Role::Uri && level.metaClass->isModel()) {
            continue; // where the file was, which it need not say
        }
        if (isLink && fForm == UmlForm::Xmi251) {
            fTag.links.push_back({{}, nameOf(attribute), std::string(attribute.value)});
        } else if (!isOfXmi(attribute, "type")) {
            take(attribute);
        }
    }
}

} // namespace ZEL::Interchange
