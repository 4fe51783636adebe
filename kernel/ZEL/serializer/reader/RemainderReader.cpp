#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/reader/RemainderReader.h>

#include <hasp_util/XmlReader.h>

#include <memory>
#include <utility>

namespace ZEL::Serializer {
namespace {

/// A document of all elements, which may use the prefix "xmi" without declaring it.
std::vector<std::string_view> documentOf(std::vector<std::string_view> && elements) {
    elements.insert(elements.begin(), {"<xmi:XMI xmlns:xmi=\"", XmiConstants::XMI_NS_URI, "\">"});
    elements.emplace_back("</xmi:XMI>");
    return std::move(elements);
}

} // namespace

RemainderReader::RemainderReader(std::vector<std::string_view> elements)
    : fXml(std::make_unique<HASP::XmlReader>(documentOf(std::move(elements)))) {}

RemainderReader::~RemainderReader() = default;

RemainderReader::Event RemainderReader::next() {
    while (fXml->hasNext()) {
        switch (fXml->next()) {
        case HASP::XmlReader::StartElement:
            if (fDepth++ > 0) {
                return Event::Start;
            }
            break;
        case HASP::XmlReader::EndElement:
            if (--fDepth > 0) {
                return Event::End;
            }
            break;
        case HASP::XmlReader::Characters:
            return Event::Text;
        }
    }
    return Event::Nothing;
}

std::string const & RemainderReader::name() const { return fXml->getLocalName(); }

std::string_view RemainderReader::attribute(std::string_view name, std::string_view uri) const {
    for (HASP::XmlReader::Attribute const & attribute : fXml->attributes()) {
        if (*attribute.localName == name && *attribute.uri == uri) {
            return attribute.value;
        }
    }
    return {};
}

std::string_view RemainderReader::text() const { return fXml->getText(); }

} // namespace ZEL::Serializer
