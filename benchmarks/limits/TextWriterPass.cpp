#include "limits/TextWriterPass.h"

#include <libxml/xmlreader.h>
#include <libxml/xmlwriter.h>

#include <memory>
#include <stdexcept>

namespace ZEL::bench {

namespace {

struct Free {
    void operator()(xmlTextReaderPtr reader) const { xmlFreeTextReader(reader); }
    void operator()(xmlTextWriterPtr writer) const { xmlFreeTextWriter(writer); }
};
using Reader = std::unique_ptr<xmlTextReader, Free>;
using Writer = std::unique_ptr<xmlTextWriter, Free>;

std::string text(xmlChar const * characters) {
    return characters == nullptr ? std::string() : reinterpret_cast<char const *>(characters);
}

xmlChar const * text(std::string const & characters) { return reinterpret_cast<xmlChar const *>(characters.c_str()); }

} // namespace

TextWriterPass::TextWriterPass(std::string const & document) {
    Reader const reader(
        xmlReaderForMemory(document.data(), static_cast<int>(document.size()), nullptr, nullptr, XML_PARSE_HUGE));
    int status = 0;
    while ((status = xmlTextReaderRead(reader.get())) == 1) {
        int const type = xmlTextReaderNodeType(reader.get());
        if (type == XML_READER_TYPE_TEXT) {
            fElements.back().text = text(xmlTextReaderConstValue(reader.get()));
        } else if (type == XML_READER_TYPE_ELEMENT) {
            Element element{xmlTextReaderDepth(reader.get()), text(xmlTextReaderConstName(reader.get())), {}, {}};
            while (xmlTextReaderMoveToNextAttribute(reader.get()) == 1) {
                element.attributes.emplace_back(text(xmlTextReaderConstName(reader.get())),
                                                text(xmlTextReaderConstValue(reader.get())));
            }
            fElements.push_back(std::move(element));
        }
    }
    if (status != 0) {
        throw std::runtime_error("the document is not well-formed");
    }
}

void TextWriterPass::write(std::string const & path) const {
    Writer const writer(xmlNewTextWriterFilename(path.c_str(), 0));
    xmlTextWriterSetIndent(writer.get(), 1);
    xmlTextWriterSetIndentString(writer.get(), text(std::string("  ")));
    xmlTextWriterStartDocument(writer.get(), "1.0", "ISO-8859-1", nullptr);
    int open = 0;
    for (Element const & element : fElements) {
        for (; open > element.depth; --open) {
            xmlTextWriterEndElement(writer.get());
        }
        xmlTextWriterStartElement(writer.get(), text(element.name));
        for (auto const & [name, value] : element.attributes) {
            xmlTextWriterWriteAttribute(writer.get(), text(name), text(value));
        }
        if (!element.text.empty()) {
            xmlTextWriterWriteString(writer.get(), text(element.text));
        }
        ++open;
    }
    xmlTextWriterEndDocument(writer.get());
}

} // namespace ZEL::bench
