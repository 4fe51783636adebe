#include <hasp_util/XmlEncoding.h>
#include <hasp_util/XmlEventQueue.h>
#include <hasp_util/XmlNames.h>
#include <hasp_util/XmlParser.h>
#include <hasp_util/XmlReader.h>
#include <hasp_util/XmlSource.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>

namespace HASP {

namespace {

constexpr std::size_t smallestPiece = 64 * 1024;
constexpr std::size_t biggestPiece = 256 * 1024 * 1024;

/// The parser starts again with a tag of which it has seen only a part. Pieces that grow with that part make it read
/// each byte a few times at most, however long the tag is.
std::size_t pieceAfter(std::size_t unfinished) noexcept { return std::clamp(unfinished, smallestPiece, biggestPiece); }

} // namespace

/// Two queues: parsing fills one while the other still holds the current event.
class XmlReader::Impl {
public:
    template <class Source>
    Impl(Source && source, XmlReaderSettings const & settings)
        : fSource(std::forward<Source>(source)),
          fParser(fNames, settings),
          fQueues(),
          fFilling(&fQueues[0]),
          fQueue(&fQueues[1]) {
        if (!fSource.error().empty()) {
            failSource();
        }
    }

    bool hasNext() {
        if (!isReady()) {
            fill();
        }
        return isReady();
    }

    EventType next() {
        if (!hasNext()) {
            throw std::logic_error("XmlReader: there is no further event");
        }
        fQueue = fFilling;
        fEvent = &(*fQueue)[fNext++];
        return fEvent->type;
    }

    [[nodiscard]] bool hasError() const { return fFailed && !isReady(); }
    [[nodiscard]] std::string const & error() const { return hasError() ? fError : fNames.emptyText(); }

    [[nodiscard]] Location location() const {
        if (hasError()) {
            return {fSource.fileName(), fParser.errorLine(), fParser.errorColumn()};
        }
        return {fSource.fileName(), fEvent->line, fEvent->column};
    }

    [[nodiscard]] std::string const & localName() const {
        return fEvent->localName != nullptr ? *fEvent->localName : fNames.emptyText();
    }
    [[nodiscard]] std::string const & uri() const { return fEvent->uri != nullptr ? *fEvent->uri : fNames.emptyText(); }
    [[nodiscard]] std::string_view text() const { return fQueue->text(*fEvent); }
    [[nodiscard]] std::span<Attribute const> attributes() const {
        return {fQueue->attributes(*fEvent), fEvent->attributeCount};
    }
    [[nodiscard]] std::span<Namespace const> namespaces() const {
        return {fQueue->namespaces(*fEvent), fEvent->namespaceCount};
    }
    [[nodiscard]] std::string const & intern(std::string_view text) { return fNames.intern(text); }

private:
    // Character data at the end of the queue is not complete until something else follows it.
    [[nodiscard]] bool isReady() const {
        std::size_t const complete = fFilling->size() - (fFilling->lastMayGrow() && !fFinished ? 1 : 0);
        return fNext < complete;
    }

    void fill() {
        if (fFinished) {
            return;
        }
        if (fFilling == fQueue) {
            fFilling = fQueue == &fQueues[0] ? &fQueues[1] : &fQueues[0];
            fFilling->restart(*fQueue);
            fNext = 0;
        }
        fParser.setQueue(*fFilling);
        while (!fFinished && !isReady()) {
            if (fParser.isPaused()) {
                fParser.resume();
            } else {
                parsePiece();
            }
            fFinished = fFailed || fParser.hasFailed() || (fAtEnd && !fParser.isPaused());
        }
        if (fParser.hasFailed() && !fFailed) {
            fFailed = true;
            fError = fParser.error();
        }
    }

    void parsePiece() {
        std::size_t const pieceSize = pieceAfter(fParser.unfinished());
        // Of each byte of ISO-8859-1 there may become two.
        char * const buffer = fParser.buffer(fIsLatin1 || !fStarted ? 2 * pieceSize : pieceSize);
        if (buffer == nullptr) {
            fParser.fail("out of memory");
            return;
        }
        std::size_t size = fSource.read(buffer, pieceSize);
        if (!fSource.error().empty()) {
            failSource();
            return;
        }
        if (!fStarted) {
            fStarted = true;
            start({buffer, size});
        }
        fAtEnd = size < pieceSize;
        if (fIsLatin1) {
            size = XmlEncoding::latin1ToUtf8(buffer, size);
        }
        fParser.parse(size, fAtEnd);
    }

    void start(std::string_view head) {
        char const * const encoding = XmlEncoding::builtInName(head);
        if (encoding == nullptr) {
            return;
        }
        // The parser takes UTF-8 as it stands, and would convert ISO-8859-1 byte by byte, of which most are ASCII.
        fIsLatin1 = encoding == std::string_view("ISO-8859-1");
        fParser.setEncoding(fIsLatin1 ? "UTF-8" : encoding);
    }

    void failSource() {
        fFailed = fFinished = true;
        fError = fSource.error();
    }

    XmlSource fSource;
    XmlNames fNames;
    XmlParser fParser;
    std::array<XmlEventQueue, 2> fQueues;
    XmlEventQueue * fFilling;
    XmlEventQueue * fQueue; ///< of the current event
    XmlEventQueue::Event const fNothing{};
    XmlEventQueue::Event const * fEvent = &fNothing; ///< the current one
    std::size_t fNext = 0;                           ///< in fFilling
    std::string fError;
    bool fFailed = false;
    bool fFinished = false;
    bool fStarted = false;
    bool fIsLatin1 = false; ///< and converted before it is parsed
    bool fAtEnd = false;
};

XmlReader::XmlReader(std::string const & fileName, XmlReaderSettings const & settings)
    : fImpl(std::make_unique<Impl>(fileName, settings)) {}

XmlReader::XmlReader(std::vector<std::string_view> texts, XmlReaderSettings const & settings)
    : fImpl(std::make_unique<Impl>(std::move(texts), settings)) {}

XmlReader::~XmlReader() = default;

bool XmlReader::hasNext() { return fImpl->hasNext(); }

XmlReader::EventType XmlReader::next() { return fImpl->next(); }

std::string const & XmlReader::getLocalName() const { return fImpl->localName(); }

std::string const & XmlReader::getNamespaceURI() const { return fImpl->uri(); }

std::string_view XmlReader::getText() const { return fImpl->text(); }

std::size_t XmlReader::getNamespaceCount() const { return fImpl->namespaces().size(); }

std::string const & XmlReader::getNamespacePrefix(std::size_t index) const {
    return *fImpl->namespaces()[index].prefix;
}

std::string const & XmlReader::getNamespaceURI(std::size_t index) const { return *fImpl->namespaces()[index].uri; }

std::size_t XmlReader::getAttributeCount() const { return fImpl->attributes().size(); }

std::string const & XmlReader::getAttributeNamespace(std::size_t index) const {
    return *fImpl->attributes()[index].uri;
}

std::string const & XmlReader::getAttributeLocalName(std::size_t index) const {
    return *fImpl->attributes()[index].localName;
}

XmlStringRef XmlReader::getAttributeValue(std::size_t index) const { return XmlStringRef(attributeValue(index)); }

std::string_view XmlReader::attributeValue(std::size_t index) const { return fImpl->attributes()[index].value; }

XmlStringRef XmlReader::getAttributeValue(std::string_view localName, std::string_view uri) const {
    for (Attribute const & attribute : fImpl->attributes()) {
        if (*attribute.localName == localName && *attribute.uri == uri) {
            return XmlStringRef(attribute.value);
        }
    }
    return {};
}

std::span<XmlReader::Attribute const> XmlReader::attributes() const { return fImpl->attributes(); }

std::span<XmlReader::Namespace const> XmlReader::namespaces() const { return fImpl->namespaces(); }

std::string const & XmlReader::intern(std::string_view text) { return fImpl->intern(text); }

bool XmlReader::hasError() const { return fImpl->hasError(); }

std::string const & XmlReader::error() const { return fImpl->error(); }

Location XmlReader::getLocation() const { return fImpl->location(); }

} // namespace HASP
