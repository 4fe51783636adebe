#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/serializer/ClassOfName.h>
#include <ZEL/serializer/Tokens.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/writer/FormWriter.h>

#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>

namespace ZEL::Serializer {

using HASP::XmlReader;
using internal::MetaClassView;
using internal::PropertyView;

namespace {

bool isOfXmi(XmlReader::Attribute const & attribute, std::string_view name) {
    return *attribute.localName == name && *attribute.uri == XmiConstants::XMI_NS_URI;
}

bool hasBlanksAlone(std::string_view text) { return takeToken(text).empty(); }

/// The prefix of the name of a class, as `xmi:type` has it; empty if there is none.
std::string_view prefixOf(std::string_view typeName) {
    std::size_t const colon = typeName.find(':');
    return colon == std::string_view::npos ? std::string_view() : typeName.substr(0, colon);
}

/// What `names` has for the name; null for nothing.
template <class Names, class Text> std::string const * find(Names const & names, Text const & name) {
    auto const found = names.find(name);
    return found != names.end() ? &found->second : nullptr;
}

} // namespace

void FormWriter::write() {
    survey();
    fHasEnvelope = fForm.hasEnvelopeOfOne || fTops != 1;
    fXml.writeStartDocument("1.0");
    XmlReader xml(fStandardFile);
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

void FormWriter::survey() {
    struct Open {
        std::size_t number;
        ClassForm const * of;
    };
    std::vector<Open> open;
    XmlReader xml(fStandardFile);
    std::size_t number = 0;
    while (xml.hasNext()) {
        XmlReader::EventType const event = xml.next();
        if (event == XmlReader::EndElement) {
            open.pop_back();
        }
        if (event != XmlReader::StartElement) {
            continue;
        }
        fTops += open.size() == 1 && !isHead(xml) ? 1 : 0;
        fUris.insert(xml.getNamespaceURI());
        std::string_view id;
        for (XmlReader::Attribute const & attribute : xml.attributes()) {
            fUris.insert(*attribute.uri);
            if (isOfXmi(attribute, "type")) {
                fPrefixes.emplace(prefixOf(attribute.value));
            } else if (isOfXmi(attribute, "id")) {
                id = attribute.value;
            }
        }
        if (open.empty()) {
            for (XmlReader::Namespace const & binding : xml.namespaces()) {
                fNamespaces.emplace(*binding.prefix, *binding.uri);
            }
        } else if (!id.empty() && find(open.back().of->subsets, xml.getLocalName()) != nullptr) {
            std::string & ids = fSubsets[open.back().number][xml.getLocalName()];
            ids.append(ids.empty() ? "" : " ").append(id);
        }
        open.push_back({number++, &classOf(xml)});
    }
}

void FormWriter::start(XmlReader const & xml) {
    Level level;
    if (fLevels.empty()) {
        startRoot(xml);
    } else {
        level.isWritten = fLevels.back().isWritten && (fLevels.size() > 1 || !isHead(xml));
    }
    if (level.isWritten) {
        level.of = &classOf(xml);
        if (!fLevels.empty()) {
            startElement(xml, level);
        }
    }
    fLevels.push_back(level);
    ++fElements;
}

/// The envelope, or what takes its place: the one element in it, whose tag takes the namespaces over.
void FormWriter::startRoot(XmlReader const & xml) {
    fTag.uri = translated(XmiConstants::XMI_NS_URI);
    fTag.name = "XMI";
    for (auto const & [prefix, uri] : fNamespaces) {
        if (fUris.count(uri) != 0 || fPrefixes.count(prefix) != 0) {
            std::string const * const other = find(fForm.prefixes, uri);
            fTag.bindings.emplace_back(other != nullptr ? *other : prefix, translated(uri));
        }
    }
    if (!fForm.xmiVersion.empty()) {
        fTag.attributes.push_back({fTag.uri, "version", fForm.xmiVersion});
    }
    for (XmlReader::Attribute const & attribute : xml.attributes()) {
        if (!isOfXmi(attribute, "version")) {
            fTag.attributes.push_back({translated(*attribute.uri), *attribute.localName, std::string(attribute.value)});
        }
    }
    fHasTag = fHasEnvelope;
}

void FormWriter::startElement(XmlReader const & xml, Level & level) {
    if (fHasTag) {
        writeTag(false);
    }
    writeText();
    fTag.uri = translated(xml.getNamespaceURI());
    fTag.name = xml.getLocalName();
    if (fTag.uri.empty()) {
        ClassForm const & owner = *fLevels.back().of;
        bool const isLink = xml.getAttributeValue("id", XmiConstants::XMI_NS_URI).isNull();
        std::string const * other = isLink ? nullptr : find(owner.subsets, fTag.name);
        other = other != nullptr ? other : find(owner.propertyNames, fTag.name);
        fTag.name = other != nullptr ? *other : fTag.name;
    }
    for (XmlReader::Namespace const & binding : xml.namespaces()) {
        fTag.bindings.emplace_back(*binding.prefix, translated(*binding.uri));
    }
    bool const isFirst = fLevels.size() == 1 && level.of->view != nullptr && !std::exchange(fHasTop, true);
    fIsModel = isFirst && level.of->view->isModel();
    takeAttributes(xml, *level.of);
    takeSubsets();
    fHasTag = true;
}

void FormWriter::end() {
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

void FormWriter::writeText() {
    if (!hasBlanksAlone(fText)) {
        fXml.writeValue(fText);
    }
    fText.clear();
}

void FormWriter::writeTag(bool isEmpty) {
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

void FormWriter::writeLinks(Attribute const & links) {
    std::string_view rest = links.value;
    for (std::string_view id = takeToken(rest); !id.empty(); id = takeToken(rest)) {
        fXml.writeEmptyElement(links.name, HASP::XmlConstants::NULL_NS_URI);
        fXml.writeAttribute("idref", translated(XmiConstants::XMI_NS_URI), id);
    }
}

// --- names -----------------------------------------------------------------------------------------------------------

bool FormWriter::isHead(XmlReader const & xml) const {
    if (xml.getNamespaceURI() != XmiConstants::XMI_NS_URI) {
        return false;
    }
    bool const isDocumentation = xml.getLocalName() == "Documentation" && !fForm.hasDocumentation &&
                                 xml.getAttributeValue("exporter", {}) == XmiConstants::ZEL_EXPORTER;
    return isDocumentation ||
           (xml.getLocalName() == "Extension" && xml.getAttributeValue("extender", {}) == XmiConstants::ZEL_EXTENDER);
}

std::string FormWriter::translated(std::string const & uri) const {
    std::string const * const other = find(fForm.namespaces, uri);
    return other != nullptr ? *other : uri;
}

FormWriter::ClassForm const & FormWriter::classOf(XmlReader const & xml) {
    QualifiedName name;
    if (!xml.getNamespaceURI().empty()) {
        name = QualifiedName(xml.getNamespaceURI(), xml.getLocalName());
    }
    for (XmlReader::Attribute const & attribute : xml.attributes()) {
        if (isOfXmi(attribute, "type")) {
            std::string_view const prefix = prefixOf(attribute.value);
            std::string const * const uri = prefix.empty() ? nullptr : find(fNamespaces, prefix);
            name = uri != nullptr ? QualifiedName(*uri, attribute.value.substr(prefix.size() + 1)) : QualifiedName();
        }
    }
    auto const [entry, isNew] = fClasses.try_emplace(name);
    if (isNew && name.hasUri()) {
        entry->second = makeClassForm(name);
    }
    return entry->second;
}

FormWriter::ClassForm FormWriter::makeClassForm(QualifiedName name) const {
    ClassForm form;
    ImmutableClass const metaClass = classOfName(name);
    if (!metaClass.isValid()) {
        return form;
    }
    form.view = MetaClassView::of(metaClass);
    auto const take = [&form](std::vector<FileForm::Rule> const & rules, Names & names) {
        for (FileForm::Rule const & rule : rules) {
            ImmutableClass const general = classOfName(rule.metaClass);
            if (general.isValid() && form.view->inheritsFrom(general.getImplementation())) {
                names.emplace(rule.property, rule.text);
            }
        }
    };
    take(fForm.propertyNames, form.propertyNames);
    take(fForm.subsets, form.subsets);
    take(fForm.values, form.values);
    return form;
}

// --- attributes ------------------------------------------------------------------------------------------------------

void FormWriter::takeAttributes(XmlReader const & xml, ClassForm const & of) {
    auto const attributes = xml.attributes();
    auto const isType = [](XmlReader::Attribute const & attribute) { return isOfXmi(attribute, "type"); };
    // As the others do it, the class first.
    for (XmlReader::Attribute const & attribute : attributes) {
        if (isType(attribute)) {
            fTag.attributes.push_back({translated(*attribute.uri), *attribute.localName, std::string(attribute.value)});
        }
    }
    for (XmlReader::Attribute const & attribute : attributes) {
        if (!isType(attribute)) {
            take(of, *attribute.uri, *attribute.localName, std::string(attribute.value));
        }
    }
    for (auto const & stated : of.values) {
        bool const isThere = std::any_of(attributes.begin(), attributes.end(), [&stated](auto const & attribute) {
            return attribute.uri->empty() && *attribute.localName == stated.first;
        });
        if (!isThere) {
            take(of, {}, stated.first, stated.second);
        }
    }
}

void FormWriter::takeSubsets() {
    if (auto const found = fSubsets.find(fElements); found != fSubsets.end()) {
        for (auto const & [property, ids] : found->second) {
            (fForm.areLinksElements ? fTag.links : fTag.attributes).push_back({{}, property, ids});
        }
    }
}

void FormWriter::take(ClassForm const & of, std::string const & uri, std::string const & name, std::string value) {
    PropertyView const * const property = of.view != nullptr && uri.empty() ? of.view->find(name) : nullptr;
    if (property != nullptr && property->role == PropertyView::Role::Uri && fIsModel) {
        return; // where the file was, which it need not say
    }
    std::string const * const other = uri.empty() ? find(of.propertyNames, name) : nullptr;
    bool const isLink = property != nullptr && !property->isDataType && !property->isComposite;
    (isLink && fForm.areLinksElements ? fTag.links : fTag.attributes)
        .push_back({translated(uri), other != nullptr ? *other : name, std::move(value)});
}

} // namespace ZEL::Serializer
