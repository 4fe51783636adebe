#include <hasp_util/XmlEventQueue.h>

#include <algorithm>
#include <utility>

namespace HASP {

namespace {
constexpr std::size_t blockSize = 64 * 1024;
}

void XmlEventQueue::restart(XmlEventQueue & other) {
    fEvents.clear();
    fAttributes.clear();
    fNamespaces.clear();
    fText.clear();
    fBytes = 0;
    if (fBlocks.size() > 1) {
        fBlocks.resize(1);
    }
    fFree = fBlocks.empty() ? nullptr : fBlocks.front().get();
    fFreeSize = fBlocks.empty() ? 0 : blockSize;

    if (other.lastMayGrow()) {
        Event event = other.fEvents.back();
        other.fEvents.pop_back();
        if (event.textBegin == 0) {
            // A text that has its buffer to itself moves with it, so one that spans many pieces of the file is not
            // copied for each of them.
            fText.swap(other.fText);
        } else {
            fText.assign(other.fText, event.textBegin, event.textLength);
            event.textBegin = 0;
        }
        fEvents.push_back(event);
    }
}

XmlEventQueue::Event & XmlEventQueue::startElement() {
    Event & event = fEvents.emplace_back();
    event.type = XmlReader::StartElement;
    event.firstNamespace = fNamespaces.size();
    event.firstAttribute = fAttributes.size();
    fBytes += sizeof(Event);
    return event;
}

void XmlEventQueue::addNamespace(std::string const & prefix, std::string const & uri) {
    fNamespaces.push_back({&prefix, &uri});
    ++fEvents.back().namespaceCount;
    fBytes += sizeof(XmlReader::Namespace);
}

XmlReader::Attribute & XmlEventQueue::addAttribute(std::string const & uri, std::string const & localName,
                                                   std::string_view value) {
    char * const copy = allocate(value.size());
    std::copy(value.begin(), value.end(), copy);
    ++fEvents.back().attributeCount;
    fBytes += sizeof(XmlReader::Attribute) + value.size();
    return fAttributes.emplace_back(XmlReader::Attribute{&uri, &localName, {copy, value.size()}});
}

void XmlEventQueue::endElement(std::string const & uri, std::string const & localName, std::uint64_t line,
                               std::uint64_t column) {
    Event & event = fEvents.emplace_back();
    event.type = XmlReader::EndElement;
    event.uri = &uri;
    event.localName = &localName;
    event.line = line;
    event.column = column;
    fBytes += sizeof(Event);
}

bool XmlEventQueue::characters(std::string_view text) {
    bool const isNew = !lastMayGrow();
    if (isNew) {
        Event & event = fEvents.emplace_back();
        event.type = XmlReader::Characters;
        event.textBegin = fText.size();
        fBytes += sizeof(Event);
    }
    fText.append(text);
    fEvents.back().textLength += text.size();
    fBytes += text.size();
    return isNew;
}

void XmlEventQueue::setPlace(std::uint64_t line, std::uint64_t column) noexcept {
    fEvents.back().line = line;
    fEvents.back().column = column;
}

char * XmlEventQueue::addBlock(std::size_t size) {
    auto block = std::make_unique_for_overwrite<char[]>(size);
    return fBlocks.emplace_back(std::move(block)).get();
}

char * XmlEventQueue::allocate(std::size_t size) {
    if (size > fFreeSize) {
        if (size > blockSize / 4 && !fBlocks.empty()) {
            // A big value gets a block of its own; the current block stays in use.
            return addBlock(size);
        }
        std::size_t const whole = size > blockSize ? size : blockSize;
        fFree = addBlock(whole);
        fFreeSize = whole;
    }
    char * const result = fFree;
    fFree += size;
    fFreeSize -= size;
    return result;
}

} // namespace HASP
