#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/Location.h>
#include <hasp_util/XmlReaderSettings.h>
#include <hasp_util/XmlStringRef.h>

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace HASP {

/// Pulls the events of an XML file: starts and ends of elements, and character data.
///
/// Nothing throws for what is in the file, or for a file that cannot be read: the events stop, and `hasError` is true.
/// Only plain files are opened. Nothing outside of the file is ever opened: a reference to an external entity, or to an
/// external document type definition, is an error that names it. Memory grows with the depth and with the number of
/// different names, not with the size of the file.
///
/// Names and URIs are kept once per reader: equal ones are one object, which lives as long as the reader, so they may
/// be compared by address. Texts and attributes are valid until the call of `next`.
class HOST_API XmlReader {
public:
    enum EventType : int { StartElement = 4, EndElement = 5, Characters = 6 };

    struct Attribute {
        std::string const * uri;
        std::string const * localName;
        std::string_view value;
    };
    struct Namespace {
        std::string const * prefix;
        std::string const * uri;
    };

    explicit XmlReader(std::string const & fileName, XmlReaderSettings const & settings = {});
    ~XmlReader();
    XmlReader(XmlReader const &) = delete;
    XmlReader & operator=(XmlReader const &) = delete;

    /// False at the end of the document and after the last event before an error. Parses on if need be, and leaves the
    /// current event alone.
    [[nodiscard]] bool hasNext();
    /// Throws `std::logic_error` if there is no further event.
    EventType next();

    /// Of an element; empty for character data. A name without prefix is in the default namespace.
    [[nodiscard]] std::string const & getLocalName() const;
    [[nodiscard]] std::string const & getNamespaceURI() const;
    /// All character data up to the next tag; empty for an element.
    [[nodiscard]] std::string_view getText() const;

    /// What the start of an element declares, exactly as it stands there; the default namespace has the prefix "".
    [[nodiscard]] std::size_t getNamespaceCount() const;
    [[nodiscard]] std::string const & getNamespacePrefix(std::size_t index) const;
    [[nodiscard]] std::string const & getNamespaceURI(std::size_t index) const;

    /// Attributes of the start of an element, in their order and without namespace declarations. One without prefix has
    /// the URI "".
    [[nodiscard]] std::size_t getAttributeCount() const;
    [[nodiscard]] std::string const & getAttributeNamespace(std::size_t index) const;
    [[nodiscard]] std::string const & getAttributeLocalName(std::size_t index) const;
    [[nodiscard]] XmlStringRef getAttributeValue(std::size_t index) const;
    [[nodiscard]] std::string_view attributeValue(std::size_t index) const;
    /// Null if the element has no such attribute.
    [[nodiscard]] XmlStringRef getAttributeValue(std::string_view localName, std::string_view uri) const;

    /// The same at one stroke, for loops that must be fast.
    [[nodiscard]] std::span<Attribute const> attributes() const;
    [[nodiscard]] std::span<Namespace const> namespaces() const;
    /// The one object that this reader uses for a name or URI.
    [[nodiscard]] std::string const & intern(std::string_view text);

    /// Whether the events ended by an error; false as long as `hasNext` is true.
    [[nodiscard]] bool hasError() const;
    /// The error's text, empty if there is none. It names the file only where the file as such is the trouble.
    [[nodiscard]] std::string const & error() const;
    /// Of the error if there is one, otherwise of the current event.
    [[nodiscard]] Location getLocation() const;

private:
    class Impl;
    std::unique_ptr<Impl> fImpl;
};

} // namespace HASP
