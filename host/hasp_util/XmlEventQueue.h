#pragma once

#include <hasp_util/XmlReader.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace HASP {

/// Events that have been parsed and not yet pulled, with their attributes and texts in common buffers.
///
/// Character data that follows character data is joined to it, so the last event may still grow if it is character
/// data.
class XmlEventQueue {
public:
    struct Event {
        XmlReader::EventType type;
        std::uint32_t namespaceCount;
        std::size_t firstNamespace;
        std::size_t firstAttribute;
        std::size_t attributeCount;
        std::size_t textBegin;
        std::size_t textLength;
        std::string const * uri;
        std::string const * localName;
        std::uint64_t line;
        std::uint64_t column;
    };

    XmlEventQueue() = default;
    XmlEventQueue(XmlEventQueue const &) = delete;
    XmlEventQueue & operator=(XmlEventQueue const &) = delete;

    /// Empties the queue and takes over the growing event at the end of another one, if there is one.
    void restart(XmlEventQueue & other);

    /// Begins an element; its namespaces and attributes follow. The reference is valid until the next event.
    Event & startElement();
    void addNamespace(std::string const & prefix, std::string const & uri);
    XmlReader::Attribute & addAttribute(std::string const & uri, std::string const & localName, std::string_view value);
    /// Removes the last event, which turned out to be an error.
    void dropLast() noexcept { fEvents.pop_back(); }
    void endElement(std::string const & uri, std::string const & localName, std::uint64_t line, std::uint64_t column);
    /// Returns true if this began a new event, whose place the caller then sets.
    bool characters(std::string_view text);
    void setPlace(std::uint64_t line, std::uint64_t column) noexcept;

    [[nodiscard]] std::size_t size() const noexcept { return fEvents.size(); }
    [[nodiscard]] bool lastMayGrow() const noexcept {
        return !fEvents.empty() && fEvents.back().type == XmlReader::Characters;
    }
    /// Whether so much is waiting that parsing should pause: a little input can expand to a great deal.
    [[nodiscard]] bool isFull() const noexcept { return fBytes > 1'000'000; }

    [[nodiscard]] Event const & operator[](std::size_t index) const noexcept { return fEvents[index]; }
    [[nodiscard]] XmlReader::Attribute const * attributes(Event const & event) const noexcept {
        return fAttributes.data() + event.firstAttribute;
    }
    [[nodiscard]] XmlReader::Namespace const * namespaces(Event const & event) const noexcept {
        return fNamespaces.data() + event.firstNamespace;
    }
    [[nodiscard]] std::string_view text(Event const & event) const noexcept {
        return std::string_view(fText).substr(event.textBegin, event.textLength);
    }

private:
    [[nodiscard]] char * allocate(std::size_t size);
    [[nodiscard]] char * addBlock(std::size_t size);

    std::vector<Event> fEvents;
    std::vector<XmlReader::Attribute> fAttributes;
    std::vector<XmlReader::Namespace> fNamespaces;
    std::string fText;
    std::size_t fBytes = 0;

    // Attribute values are kept in blocks that never move, so that attributes can point to them.
    std::vector<std::unique_ptr<char[]>> fBlocks;
    char * fFree = nullptr;
    std::size_t fFreeSize = 0;
};

} // namespace HASP
