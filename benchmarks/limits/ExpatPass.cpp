#include "limits/ExpatPass.h"

#include <expat.h>

#include <algorithm>
#include <memory>
#include <stdexcept>
#include <type_traits>

namespace ZEL::bench {

namespace {

std::uint64_t & sum(void * data) { return *static_cast<std::uint64_t *>(data); }

std::uint64_t first(XML_Char const * text) { return static_cast<unsigned char>(text[0]); }

void XMLCALL startElement(void * data, XML_Char const * name, XML_Char const ** attributes) {
    sum(data) += first(name);
    for (; *attributes != nullptr; attributes += 2) {
        sum(data) += first(attributes[0]) + first(attributes[1]);
    }
}

void XMLCALL endElement(void * data, XML_Char const * name) { sum(data) += first(name); }

void XMLCALL characters(void * data, XML_Char const *, int length) { sum(data) += static_cast<std::uint64_t>(length); }

struct FreeParser {
    void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
};

} // namespace

std::uint64_t expatPass(std::string const & document) {
    constexpr std::size_t kPiece = 65536;
    std::unique_ptr<std::remove_pointer_t<XML_Parser>, FreeParser> const parser(XML_ParserCreate("ISO-8859-1"));
    std::uint64_t result = 0;
    XML_SetUserData(parser.get(), &result);
    XML_SetElementHandler(parser.get(), startElement, endElement);
    XML_SetCharacterDataHandler(parser.get(), characters);
    for (std::size_t at = 0; at < document.size();) {
        std::size_t const size = std::min(kPiece, document.size() - at);
        if (XML_Parse(parser.get(), document.data() + at, static_cast<int>(size), at + size == document.size()) !=
            XML_STATUS_OK) {
            throw std::runtime_error(XML_ErrorString(XML_GetErrorCode(parser.get())));
        }
        at += size;
    }
    return result;
}

} // namespace ZEL::bench
