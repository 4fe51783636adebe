#pragma once

#include <hasp_util/XmlEventQueue.h>
#include <hasp_util/XmlNames.h>
#include <hasp_util/XmlReaderSettings.h>

#include <expat.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace HASP {

/// Drives expat and turns its callbacks into events of a queue.
///
/// Namespaces are resolved here and not by expat, which would build a new text for every qualified name. Any error ends
/// the parsing and is kept with its place.
class XmlParser {
public:
    XmlParser(XmlNames & names, XmlReaderSettings const & settings);
    XmlParser(XmlParser const &) = delete;
    XmlParser & operator=(XmlParser const &) = delete;

    void setQueue(XmlEventQueue & queue) noexcept { fQueue = &queue; }
    /// The encoding to use instead of the declared one. To be called before the first piece.
    void setEncoding(char const * name);

    /// Where to put the next piece of the file; null if there is no memory.
    [[nodiscard]] char * buffer(std::size_t size);
    /// Parses the bytes put there.
    void parse(std::size_t size, bool isLast);
    /// How many bytes at the end of the input belong to a tag, or the like, that is not complete yet; they are parsed
    /// again with the next piece.
    [[nodiscard]] std::size_t unfinished() const noexcept { return fUnfinished; }
    /// Whether parsing paused because the queue is full.
    [[nodiscard]] bool isPaused() const noexcept { return fPaused; }
    void resume();

    void fail(std::string message);
    [[nodiscard]] bool hasFailed() const noexcept { return fFailed; }
    [[nodiscard]] std::string const & error() const noexcept { return fError; }
    [[nodiscard]] std::uint64_t errorLine() const noexcept { return fErrorLine; }
    [[nodiscard]] std::uint64_t errorColumn() const noexcept { return fErrorColumn; }

private:
    struct Free {
        void operator()(XML_Parser parser) const noexcept { XML_ParserFree(parser); }
    };
    struct OpenElement {
        std::string const * uri;
        std::string const * localName;
        std::size_t bindingMark;
    };

    static void XMLCALL onStart(void * self, XML_Char const * name, XML_Char const ** attributes);
    static void XMLCALL onEnd(void * self, XML_Char const * name);
    static void XMLCALL onText(void * self, XML_Char const * text, int length);
    static void XMLCALL onDoctype(void * self, XML_Char const * name, XML_Char const * systemId,
                                  XML_Char const * publicId, int hasInternalSubset);
    static void XMLCALL onEntity(void * self, XML_Char const * name, int isParameter, XML_Char const * value,
                                 int length, XML_Char const * base, XML_Char const * systemId,
                                 XML_Char const * publicId, XML_Char const * notation);
    static int XMLCALL onExternal(XML_Parser parser, XML_Char const * context, XML_Char const * base,
                                  XML_Char const * systemId, XML_Char const * publicId);
    static void XMLCALL onSkipped(void * self, XML_Char const * name, int isParameter);
    static int XMLCALL onEncoding(void * self, XML_Char const * name, XML_Encoding * encoding);

    void start(XML_Char const * name, XML_Char const ** attributes);
    void end();
    void declareNamespaces(XML_Char const ** attributes);
    void declareNamespace(XmlNames::Prefix & prefix, char const * uri);
    void addAttributes(XML_Char const ** attributes);
    void refuseDoubleAttributes(XmlNames::Name const & element);
    [[nodiscard]] std::string const * resolve(XmlNames::Name const & name);
    void settle(XML_Status status);
    [[nodiscard]] std::uint64_t line() const { return XML_GetCurrentLineNumber(fParser.get()); }
    [[nodiscard]] std::uint64_t column() const { return XML_GetCurrentColumnNumber(fParser.get()) + 1; }

    XmlNames & fNames;
    XmlEventQueue * fQueue = nullptr;
    std::unique_ptr<XML_ParserStruct, Free> fParser;
    std::uint32_t fDepthLimit;
    XmlReaderSettings::NamespaceTranslation const fTranslation;
    std::size_t fFed = 0; ///< bytes, since the beginning
    std::size_t fUnfinished = 0;
    std::vector<OpenElement> fOpen;
    std::unordered_map<std::string, std::string> fExternalEntities; ///< system identifier to name
    std::string fError;
    std::uint64_t fErrorLine = 0;
    std::uint64_t fErrorColumn = 0;
    bool fFailed = false;
    bool fPaused = false;
};

} // namespace HASP
