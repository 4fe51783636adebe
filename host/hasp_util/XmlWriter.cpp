#include <hasp_util/XmlBytes.h>
#include <hasp_util/XmlEscaper.h>
#include <hasp_util/XmlOutputFile.h>
#include <hasp_util/XmlScopes.h>
#include <hasp_util/XmlWriter.h>

#include <algorithm>
#include <cstdint>
#include <set>
#include <stdexcept>
#include <system_error>
#include <utility>
#include <vector>

namespace HASP {

namespace {

/// Undoes what was written to the buffer and noted about namespaces, unless `succeed` is called.
class Attempt {
public:
    Attempt(XmlOutputFile & out, XmlScopes & scopes) noexcept
        : fOut(out), fScopes(scopes), fPosition(out.position()), fMark(scopes.mark()) {}
    ~Attempt() {
        if (!fDone) {
            fOut.rewindTo(fPosition);
            fScopes.leaveTo(fMark);
        }
    }
    Attempt(Attempt const &) = delete;
    Attempt & operator=(Attempt const &) = delete;

    void succeed() noexcept { fDone = true; }

private:
    XmlOutputFile & fOut;
    XmlScopes & fScopes;
    std::size_t fPosition;
    std::size_t fMark;
    bool fDone = false;
};

} // namespace

struct XmlName::Looked {
    XmlPiece text; ///< with the prefix, as it is written
    std::string localName;
    std::uint64_t attributeBit;
};

XmlName::XmlName(std::shared_ptr<Looked const> looked) noexcept : fLooked(std::move(looked)) {}

class XmlWriter::Impl {
public:
    Impl(std::string const & fileName, XmlWriterSettings const & settings)
        : fSettings(settings), fOut(fileName), fEscaper(settings.isLatin1()) {}

    void setEncoding(std::string encoding) {
        requireFresh();
        fSettings = XmlWriterSettings(fSettings.getIndent(), std::move(encoding), fSettings.getAutoFlush());
        fEscaper = XmlEscaper(fSettings.isLatin1());
    }

    void startDocument(std::string_view version) {
        requireFresh();
        fOut.put("<?xml version=\"");
        fOut.put(version);
        fOut.put("\" encoding=\"");
        fOut.put(fSettings.getEncoding());
        fOut.put("\"?>\n");
    }

    template <class ChoosePrefix>
    void startElement(std::string_view localName, bool isEmpty, ChoosePrefix choosePrefix) {
        closeTag();
        requirePlaceOfElement();
        std::size_t const mark = fScopes.mark();
        Attempt attempt(fOut, fScopes);
        beginTag();
        std::size_t const position = fOut.position();
        putName(choosePrefix(), localName, "element");
        enterElement(fOut.since(position), mark, isEmpty);
        attempt.succeed();
    }

    void startElement(XmlName::Looked const & name, bool isEmpty) {
        closeTag();
        requirePlaceOfElement();
        beginTag();
        put(name.text);
        enterElement(name.text.view(), fScopes.mark(), isEmpty);
    }

    [[nodiscard]] std::string_view prefixFor(std::string_view prefix, std::string_view uri, bool isAttribute) {
        return uri.empty() && prefix.empty() ? std::string_view() : fScopes.prefixFor(prefix, uri, isAttribute);
    }
    [[nodiscard]] std::string_view prefixFor(std::string_view uri, bool isAttribute) {
        return uri.empty() ? std::string_view() : fScopes.prefixFor(uri, isAttribute);
    }

    template <class ChoosePrefix>
    void attribute(std::string_view localName, std::string_view value, ChoosePrefix choosePrefix) {
        requireTag();
        Attempt attempt(fOut, fScopes);
        fOut.put(' ');
        std::size_t const position = fOut.position();
        putName(choosePrefix(), localName, "attribute");
        std::size_t const nameLength = fOut.position() - position;
        std::string_view const name = fOut.slice(position, nameLength);
        std::uint64_t const bit = attributeBit(name);
        if ((fAttributeSet & bit) != 0 && isWritten(name)) {
            refuseSecond(name);
        }
        putValue(localName, value);
        noteAttribute(position, nameLength);
        fAttributeSet |= bit;
        attempt.succeed();
    }

    [[nodiscard]] bool hasAttribute(std::string_view localName, std::string_view uri) {
        requireTag();
        std::string const * const declared = uri.empty() ? nullptr : fScopes.declaredPrefix(uri);
        if (!uri.empty() && declared == nullptr) {
            return false;
        }
        // Made where it would be written, and taken back.
        std::size_t const position = fOut.position();
        Attempt const attempt(fOut, fScopes);
        putName(declared == nullptr ? std::string_view() : std::string_view(*declared), localName, "attribute");
        return isWritten(std::string(fOut.since(position)));
    }

    void attribute(XmlName::Looked const & name, std::string_view value) {
        requireTag();
        std::size_t const begin = fOut.position();
        fOut.put(' ');
        std::size_t const position = fOut.position();
        put(name.text);
        if ((fAttributeSet & name.attributeBit) != 0 && isWritten(name.text.view())) {
            fOut.rewindTo(begin);
            refuseSecond(name.text.view());
        }
        fOut.put("=\"");
        if (char const * const at = fEscaper.put(fOut, value, XmlEscaper::Place::Attribute)) {
            fOut.rewindTo(begin);
            refuse(XmlEscaper::describe(value, at), "attribute", name.localName);
        }
        fOut.put('"');
        try {
            noteAttribute(position, name.text.size());
        } catch (...) {
            fOut.rewindTo(begin);
            throw;
        }
        fAttributeSet |= name.attributeBit;
    }

    [[nodiscard]] std::shared_ptr<XmlName::Looked const> look(std::string_view localName, std::string_view uri) {
        std::string prefix;
        if (!uri.empty()) {
            std::string const * const declared = fScopes.declaredPrefix(uri);
            if (declared == nullptr) {
                throw std::logic_error("XmlWriter: namespace '" + std::string(uri) + "' is not declared");
            }
            prefix = *declared;
        }
        // Made where it would be written, and taken back.
        std::size_t const position = fOut.position();
        Attempt const attempt(fOut, fScopes);
        putName(prefix, localName, "attribute");
        std::string_view const text = fOut.since(position);
        return std::make_shared<XmlName::Looked const>(
            XmlName::Looked{XmlPiece(text), std::string(localName), attributeBit(text)});
    }

    void declareNamespace(std::string_view prefix, std::string_view uri) {
        requireTag();
        Attempt attempt(fOut, fScopes);
        if (fScopes.declare(prefix, uri)) {
            putDeclaration(prefix, uri);
        }
        attempt.succeed();
    }

    void value(std::string_view text) {
        closeTag();
        if (fOpen.empty()) {
            throw std::logic_error("XmlWriter: text stands outside of the root element");
        }
        Attempt attempt(fOut, fScopes);
        if (char const * const at = fEscaper.put(fOut, text, XmlEscaper::Place::Content)) {
            std::string_view const name = std::string_view(fNames).substr(fOpen.back().nameBegin);
            refuse(XmlEscaper::describe(text, at), "content of element", name);
        }
        fOpen.back().hasText = true;
        attempt.succeed();
        flushIfFull();
    }

    void markup(std::string_view element) {
        closeTag();
        if (fOpen.empty()) {
            throw std::logic_error("XmlWriter: markup stands outside of the root element");
        }
        Attempt attempt(fOut, fScopes);
        putIndent();
        if (char const * const at = fEscaper.put(fOut, element, XmlEscaper::Place::Markup)) {
            refuse(XmlEscaper::describe(element, at), "markup", element.substr(0, element.find_first_of(" />")));
        }
        fOpen.back().hasElements = true;
        attempt.succeed();
        flushIfFull();
    }

    void endElement() {
        closeTag();
        if (fOpen.empty()) {
            throw std::logic_error("XmlWriter: no element is open");
        }
        Element const & element = fOpen.back();
        if (element.hasElements && !element.hasText && fSettings.getIndent()) {
            putLineBreak(fOpen.size() - 1);
        }
        fOut.put("</");
        fOut.put(std::string_view(fNames).substr(element.nameBegin));
        fOut.put('>');
        leaveElement();
    }

    void endDocument() {
        closeTag();
        while (!fOpen.empty()) {
            endElement();
        }
    }

    [[nodiscard]] XmlOutputFile & out() noexcept { return fOut; }
    [[nodiscard]] XmlOutputFile const & out() const noexcept { return fOut; }

private:
    enum class State { Fresh, InTag, InContent, Ended };
    struct Element {
        std::size_t nameBegin; ///< in fNames
        std::size_t scopeMark;
        bool isEmpty;
        bool hasElements;
        bool hasText;
    };
    static constexpr std::size_t kMany = 64; ///< attributes of a tag, beyond which a search would be slow
    struct WrittenAttribute {
        std::size_t position;
        std::size_t length;
    };

    void requireFresh() const {
        if (fState != State::Fresh || fOut.position() != 0) {
            throw std::logic_error("XmlWriter: the document has begun");
        }
    }

    void requireTag() const {
        if (fState != State::InTag) {
            throw std::logic_error("XmlWriter: no start tag is open");
        }
    }

    void requirePlaceOfElement() const {
        if (fState == State::Ended) {
            throw std::logic_error("XmlWriter: a document has one root element");
        }
    }

    // What stands before the name of an element.
    void beginTag() {
        fScopes.startTag();
        putIndent();
        fOut.put('<');
    }

    void putIndent() {
        if (!fOpen.empty() && fSettings.getIndent() && !fOpen.back().hasText) {
            putLineBreak(fOpen.size());
        }
    }

    void enterElement(std::string_view writtenName, std::size_t scopeMark, bool isEmpty) {
        if (!fOpen.empty()) {
            fOpen.back().hasElements = true;
        }
        fOpen.push_back({fNames.size(), scopeMark, isEmpty, false, false});
        fNames.append(writtenName);
        fState = State::InTag;
        if (fAttributes.size() >= kMany) {
            fAttributeNames.clear();
        }
        fAttributes.clear();
        fAttributeSet = 0;
    }

    void put(XmlPiece const & piece) {
        piece.copyTo(fOut.room(piece.size()));
        fOut.advance(piece.size());
    }

    // Ends the open start tag, and with it an element that has no content.
    void closeTag() {
        if (fState != State::InTag) {
            return;
        }
        while (XmlScopes::Binding const * const binding = fScopes.takeUndeclared()) {
            putDeclaration(binding->prefix, binding->uri);
        }
        fState = State::InContent;
        if (fOpen.back().isEmpty) {
            fOut.put("/>");
            leaveElement();
        } else {
            fOut.put('>');
            flushIfFull();
        }
    }

    void leaveElement() {
        fNames.resize(fOpen.back().nameBegin);
        fScopes.leaveTo(fOpen.back().scopeMark);
        fOpen.pop_back();
        if (fOpen.empty()) {
            fState = State::Ended;
            fOut.put('\n');
        }
        if (fSettings.getAutoFlush()) {
            fOut.flush();
        } else {
            flushIfFull();
        }
    }

    // Never while a tag is open: its beginning must stay in the buffer, to be examined or undone.
    void flushIfFull() noexcept {
        if (fOut.isFull()) {
            fOut.flush();
        }
    }

    /// Deeper elements are not indented further, or the size of a file would grow with the square of its depth.
    static constexpr std::size_t kDeepestIndent = 64;

    void putLineBreak(std::size_t depth) {
        fOut.put('\n');
        fOut.putBlanks(2 * std::min(depth, kDeepestIndent));
    }

    void putName(std::string_view prefix, std::string_view localName, char const * what) {
        if (!prefix.empty()) {
            if (char const * const at = fEscaper.putName(fOut, prefix)) {
                refuse(XmlEscaper::describe(prefix, at), "prefix", prefix);
            }
            fOut.put(':');
        }
        if (char const * const at = fEscaper.putName(fOut, localName)) {
            refuse(XmlEscaper::describe(localName, at), std::string("name of ") + what, localName);
        }
    }

    void putValue(std::string_view attributeName, std::string_view value) {
        fOut.put("=\"");
        if (char const * const at = fEscaper.put(fOut, value, XmlEscaper::Place::Attribute)) {
            refuse(XmlEscaper::describe(value, at), "attribute", attributeName);
        }
        fOut.put('"');
    }

    void putDeclaration(std::string_view prefix, std::string_view uri) {
        fOut.put(" xmlns");
        if (!prefix.empty()) {
            fOut.put(':');
            putName({}, prefix, "namespace prefix");
        }
        putValue(prefix, uri);
    }

    // Most names differ in length, first or last character, which together choose one bit.
    [[nodiscard]] static std::uint64_t attributeBit(std::string_view name) noexcept {
        auto const mix =
            name.size() * 31 + static_cast<unsigned char>(name.front()) * 7u + static_cast<unsigned char>(name.back());
        return std::uint64_t(1) << (mix % 64);
    }

    void noteAttribute(std::size_t position, std::size_t length) {
        fAttributes.push_back({position, length});
        try {
            std::size_t const first = fAttributes.size() == kMany ? 0 : fAttributes.size() - 1;
            for (std::size_t i = first; fAttributes.size() >= kMany && i < fAttributes.size(); ++i) {
                fAttributeNames.emplace(fOut.slice(fAttributes[i].position, fAttributes[i].length));
            }
        } catch (...) {
            fAttributes.pop_back(); // it will be taken back
            throw;
        }
    }

    /// Whether the tag has an attribute of this name.
    [[nodiscard]] bool isWritten(std::string_view name) const noexcept {
        if (fAttributes.size() >= kMany) {
            return fAttributeNames.count(name) != 0;
        }
        return std::any_of(fAttributes.begin(), fAttributes.end(), [&](WrittenAttribute const & attribute) {
            return fOut.slice(attribute.position, attribute.length) == name;
        });
    }

    [[noreturn]] static void refuseSecond(std::string_view name) {
        throw std::runtime_error("attribute '" + std::string(name) + "' is written twice");
    }
    [[noreturn]] static void refuse(std::string const & found, std::string const & where, std::string_view name) {
        throw std::runtime_error("cannot write " + found + " in " + where + " '" + std::string(name) + "'");
    }

    XmlWriterSettings fSettings;
    XmlOutputFile fOut;
    XmlEscaper fEscaper;
    XmlScopes fScopes;
    State fState = State::Fresh;
    std::vector<Element> fOpen;
    std::string fNames; ///< of the open elements, as written
    std::vector<WrittenAttribute> fAttributes;
    std::set<std::string, std::less<>> fAttributeNames; ///< the same, of a tag with many
    std::uint64_t fAttributeSet = 0;
};

XmlWriter::XmlWriter(std::string const & fileName, XmlWriterSettings const & settings)
    : fImpl(std::make_unique<Impl>(fileName, settings)) {}

XmlWriter::~XmlWriter() = default;

void XmlWriter::setEncoding(std::string encoding) { fImpl->setEncoding(std::move(encoding)); }

void XmlWriter::writeStartDocument(std::string_view version) { fImpl->startDocument(version); }

void XmlWriter::writeStartElement(std::string_view prefix, std::string_view localName, std::string_view uri) {
    fImpl->startElement(localName, false, [&] { return fImpl->prefixFor(prefix, uri, false); });
}

void XmlWriter::writeStartElement(std::string_view localName, std::string_view uri) {
    fImpl->startElement(localName, false, [&] { return fImpl->prefixFor(uri, false); });
}

void XmlWriter::writeEmptyElement(std::string_view prefix, std::string_view localName, std::string_view uri) {
    fImpl->startElement(localName, true, [&] { return fImpl->prefixFor(prefix, uri, false); });
}

void XmlWriter::writeEmptyElement(std::string_view localName, std::string_view uri) {
    fImpl->startElement(localName, true, [&] { return fImpl->prefixFor(uri, false); });
}

void XmlWriter::writeAttribute(std::string_view prefix, std::string_view localName, std::string_view uri,
                               std::string_view value) {
    fImpl->attribute(localName, value, [&] { return fImpl->prefixFor(prefix, uri, true); });
}

void XmlWriter::writeAttribute(std::string_view localName, std::string_view uri, std::string_view value) {
    fImpl->attribute(localName, value, [&] { return fImpl->prefixFor(uri, true); });
}

bool XmlWriter::hasAttribute(std::string_view localName, std::string_view uri) {
    return fImpl->hasAttribute(localName, uri);
}

XmlName XmlWriter::makeName(std::string_view localName, std::string_view uri) {
    return XmlName(fImpl->look(localName, uri));
}

void XmlWriter::writeStartElement(XmlName const & name) { fImpl->startElement(*name.fLooked, false); }

void XmlWriter::writeEmptyElement(XmlName const & name) { fImpl->startElement(*name.fLooked, true); }

void XmlWriter::writeAttribute(XmlName const & name, std::string_view value) { fImpl->attribute(*name.fLooked, value); }

void XmlWriter::writeNamespace(std::string_view prefix, std::string_view uri) { fImpl->declareNamespace(prefix, uri); }

void XmlWriter::writeValue(std::string_view text) { fImpl->value(text); }

void XmlWriter::writeMarkup(std::string_view element) { fImpl->markup(element); }

void XmlWriter::writeEndElement() { fImpl->endElement(); }

void XmlWriter::writeEndDocument() { fImpl->endDocument(); }

bool XmlWriter::good() const noexcept { return fImpl->out().good(); }

bool XmlWriter::close() {
    fImpl->out().close();
    return good();
}

std::string XmlWriter::errorText() const {
    return good() ? std::string() : std::generic_category().message(fImpl->out().error());
}

} // namespace HASP
