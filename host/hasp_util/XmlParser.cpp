#include <hasp_util/XmlConstants.h>
#include <hasp_util/XmlEncoding.h>
#include <hasp_util/XmlParser.h>

#include <algorithm>
#include <array>
#include <new>
#include <set>
#include <string_view>
#include <utility>

namespace HASP {

namespace {
XmlParser & parserOf(void * self) { return *static_cast<XmlParser *>(self); }
} // namespace

XmlParser::XmlParser(XmlNames & names, XmlReaderSettings const & settings)
    : fNames(names),
      fParser(XML_ParserCreate(nullptr)),
      fDepthLimit(settings.getDepthLimit()),
      fTranslation(settings.getNamespaceTranslation()) {
    if (!fParser) {
        throw std::bad_alloc();
    }
    XML_Parser const parser = fParser.get();
    XML_SetUserData(parser, this);
    XML_SetElementHandler(parser, &onStart, &onEnd);
    XML_SetCharacterDataHandler(parser, &onText);
    XML_SetStartDoctypeDeclHandler(parser, &onDoctype);
    XML_SetEntityDeclHandler(parser, &onEntity);
    XML_SetUnknownEncodingHandler(parser, &onEncoding, this);
    // Without these, expat would drop references that it cannot follow, and the text with them.
    XML_SetParamEntityParsing(parser, XML_PARAM_ENTITY_PARSING_ALWAYS);
    XML_SetExternalEntityRefHandler(parser, &onExternal);
    XML_SetSkippedEntityHandler(parser, &onSkipped);
    XML_SetBillionLaughsAttackProtectionMaximumAmplification(parser, std::max(1.0f, settings.getAmplificationLimit()));
    XML_SetBillionLaughsAttackProtectionActivationThreshold(parser, settings.getAmplificationThreshold());
}

void XmlParser::setEncoding(char const * name) { XML_SetEncoding(fParser.get(), name); }

char * XmlParser::buffer(std::size_t size) {
    return static_cast<char *>(XML_GetBuffer(fParser.get(), static_cast<int>(size)));
}

void XmlParser::parse(std::size_t size, bool isLast) {
    fFed += size;
    settle(XML_ParseBuffer(fParser.get(), static_cast<int>(size), isLast ? XML_TRUE : XML_FALSE));
}

void XmlParser::resume() { settle(XML_ResumeParser(fParser.get())); }

void XmlParser::settle(XML_Status status) {
    XML_Index const reached = XML_GetCurrentByteIndex(fParser.get());
    fUnfinished = reached < 0 ? 0 : fFed - static_cast<std::size_t>(reached);
    fPaused = status == XML_STATUS_SUSPENDED;
    if (status == XML_STATUS_ERROR && !fFailed) {
        fail(XML_ErrorString(XML_GetErrorCode(fParser.get())));
    }
}

void XmlParser::fail(std::string message) {
    if (fFailed) {
        return;
    }
    fFailed = true;
    fError = std::move(message);
    fErrorLine = line();
    fErrorColumn = column();
    XML_StopParser(fParser.get(), XML_FALSE); // fails outside of callbacks, where there is nothing to stop
}

void XmlParser::onStart(void * self, XML_Char const * name, XML_Char const ** attributes) {
    parserOf(self).start(name, attributes);
}

void XmlParser::onEnd(void * self, XML_Char const *) { parserOf(self).end(); }

void XmlParser::onText(void * self, XML_Char const * text, int length) {
    XmlParser & parser = parserOf(self);
    if (!parser.fFailed && parser.fQueue->characters({text, static_cast<std::size_t>(length)})) {
        parser.fQueue->setPlace(parser.line(), parser.column());
    }
}

void XmlParser::start(XML_Char const * name, XML_Char const ** attributes) {
    if (fFailed) {
        return;
    }
    if (fOpen.size() >= fDepthLimit) {
        fail("more than " + std::to_string(fDepthLimit) + " elements are open");
        return;
    }
    XmlEventQueue::Event & event = fQueue->startElement();
    event.line = line();
    event.column = column();
    std::size_t const mark = fNames.bindingMark();
    declareNamespaces(attributes);
    XmlNames::Name const & element = fNames.find(name);
    std::string const * const uri = resolve(element);
    addAttributes(attributes);
    refuseDoubleAttributes(element);
    if (fFailed) {
        fQueue->dropLast();
        return;
    }
    event.uri = uri;
    event.localName = element.local;
    fOpen.push_back({uri, element.local, mark});
    if (fQueue->isFull()) {
        XML_StopParser(fParser.get(), XML_TRUE);
    }
}

void XmlParser::end() {
    if (fFailed) {
        return;
    }
    OpenElement const & element = fOpen.back();
    fQueue->endElement(*element.uri, *element.localName, line(), column());
    fNames.unbindTo(element.bindingMark);
    fOpen.pop_back();
}

// Declarations apply to the whole tag, so they are processed before any of its names.
void XmlParser::declareNamespaces(XML_Char const ** attributes) {
    for (; *attributes != nullptr; attributes += 2) {
        if (attributes[0][0] == 'x' && attributes[0][1] == 'm' && attributes[0][2] == 'l') {
            XmlNames::Name const & name = fNames.findCached(attributes[0]);
            if (name.kind == XmlNames::Kind::Declaration) {
                declareNamespace(*name.prefix, attributes[1]);
            }
        }
    }
}

void XmlParser::declareNamespace(XmlNames::Prefix & prefix, char const * uri) {
    std::string const & name = *prefix.name;
    std::string const & text = fNames.intern(uri);
    bool const isXml = name == XmlConstants::XML_NS_PREFIX;
    if (name == XmlConstants::XMLNS_ATTRIBUTE || isXml != (text == XmlConstants::XML_NS_URI) ||
        text == XmlConstants::XMLNS_ATTRIBUTE_NS_URI) {
        fail("prefix '" + name + "' must not be bound to namespace '" + text + "'");
    } else if (!name.empty() && text.empty()) {
        fail("prefix '" + name + "' must not be undeclared");
    } else {
        std::string const & meant = fTranslation && !isXml && !text.empty() ? fNames.intern(fTranslation(text)) : text;
        fNames.bind(prefix, meant);
        fQueue->addNamespace(name, meant);
    }
}

void XmlParser::addAttributes(XML_Char const ** attributes) {
    for (; *attributes != nullptr && !fFailed; attributes += 2) {
        XmlNames::Name const & name = fNames.findCached(attributes[0]);
        if (name.kind == XmlNames::Kind::Declaration) {
            continue;
        }
        // The default namespace does not apply to attributes.
        bool const hasPrefix = name.kind == XmlNames::Kind::Broken || !name.prefix->name->empty();
        std::string const * const uri = hasPrefix ? resolve(name) : &fNames.emptyText();
        if (uri != nullptr) {
            fQueue->addAttribute(*uri, *name.local, attributes[1]);
        }
    }
}

// Expat has compared the names as written; two prefixes may still stand for the same namespace.
void XmlParser::refuseDoubleAttributes(XmlNames::Name const & element) {
    XmlEventQueue::Event const & event = (*fQueue)[fQueue->size() - 1];
    std::span const attributes(fQueue->attributes(event), event.attributeCount);
    auto const refuse = [&](XmlReader::Attribute const & attribute) {
        fail("element '" + element.raw + "' has attribute '" + *attribute.localName + "' of namespace '" +
             *attribute.uri + "' twice");
    };
    constexpr std::size_t fewAttributes = 16;
    if (attributes.size() > fewAttributes) {
        std::set<std::pair<std::string const *, std::string const *>> seen;
        for (XmlReader::Attribute const & attribute : attributes) {
            if (!seen.emplace(attribute.uri, attribute.localName).second) {
                refuse(attribute);
            }
        }
        return;
    }
    for (std::size_t i = 1; i < attributes.size(); ++i) {
        for (std::size_t j = 0; attributes[i].uri != &fNames.emptyText() && j < i; ++j) {
            if (attributes[i].uri == attributes[j].uri && attributes[i].localName == attributes[j].localName) {
                refuse(attributes[i]);
            }
        }
    }
}

std::string const * XmlParser::resolve(XmlNames::Name const & name) {
    if (name.kind != XmlNames::Kind::Plain) {
        fail("'" + name.raw + "' is not a qualified name");
    } else if (name.prefix->uri == nullptr) {
        fail("prefix '" + *name.prefix->name + "' is not declared");
    }
    return fFailed ? nullptr : name.prefix->uri;
}

void XmlParser::onDoctype(void * self, XML_Char const *, XML_Char const * systemId, XML_Char const *, int) {
    if (systemId != nullptr) {
        parserOf(self).fail(std::string("external document type definition '") + systemId + "' is not opened");
    }
}

void XmlParser::onEntity(void * self, XML_Char const * name, int, XML_Char const *, int, XML_Char const *,
                         XML_Char const * systemId, XML_Char const *, XML_Char const *) {
    if (systemId != nullptr) {
        parserOf(self).fExternalEntities.emplace(systemId, name);
    }
}

int XmlParser::onExternal(XML_Parser parser, XML_Char const *, XML_Char const *, XML_Char const * systemId,
                          XML_Char const *) {
    XmlParser & self = parserOf(XML_GetUserData(parser));
    std::string const file = systemId != nullptr ? systemId : "";
    auto const found = self.fExternalEntities.find(file);
    std::string const name = found != self.fExternalEntities.end() ? "'" + found->second + "' " : std::string();
    self.fail("external entity " + name + "in '" + file + "' is not opened");
    return XML_STATUS_ERROR;
}

void XmlParser::onSkipped(void * self, XML_Char const * name, int) {
    parserOf(self).fail(std::string("entity '") + name + "' is not declared");
}

int XmlParser::onEncoding(void * self, XML_Char const * name, XML_Encoding * encoding) {
    std::array<int, 256> table{};
    std::string problem = XmlEncoding::singleByteTable(name, table);
    if (!problem.empty()) {
        parserOf(self).fail(std::move(problem));
        return XML_STATUS_ERROR;
    }
    std::copy(table.begin(), table.end(), encoding->map);
    encoding->data = nullptr;
    encoding->convert = nullptr;
    encoding->release = nullptr;
    return XML_STATUS_OK;
}

} // namespace HASP
