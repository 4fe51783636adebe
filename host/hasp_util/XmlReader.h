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
#include <vector>

namespace HASP {

/// Pulls the events of an XML document, of a file or in memory: starts and ends of elements, and character data.
///
/// Nothing is thrown for the content of the file, or for a file that cannot be read: the events stop, and `hasError` is
/// true. Only plain files are opened, and nothing else: a reference to an external entity, or to an external document
/// type definition, is an error that names it. Memory grows with the depth and the number of different names, not with
/// the size of the file.
///
/// Names and URIs are kept once per reader: equal ones are the same object, which lives as long as the reader, so they
/// may be compared by address. Texts and attributes are valid until the next call of `next`.
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
    /// Reads the document that the texts, one after the other, make up: in UTF-8, unless it says otherwise. They must
    /// outlive the reader. Places have no name of a file.
    explicit XmlReader(std::vector<std::string_view> texts, XmlReaderSettings const & settings = {});
    ~XmlReader();
    XmlReader(XmlReader const &) = delete;
    XmlReader & operator=(XmlReader const &) = delete;

    /// False at the end of the document and after the last event before an error. Parses further if necessary; the
    /// current event stays valid.
    [[nodiscard]] bool hasNext();
    /// Throws `std::logic_error` if there is no further event.
    EventType next();

    /// Of an element; empty for character data. A name without prefix is in the default namespace.
    [[nodiscard]] std::string const & getLocalName() const;
    [[nodiscard]] std::string const & getNamespaceURI() const;
    /// All character data up to the next tag; empty for an element.
    [[nodiscard]] std::string_view getText() const;

    /// The namespaces that the start of an element declares, in order; the default namespace has the prefix "".
    [[nodiscard]] std::size_t getNamespaceCount() const;
    [[nodiscard]] std::string const & getNamespacePrefix(std::size_t index) const;
    [[nodiscard]] std::string const & getNamespaceURI(std::size_t index) const;

    /// The attributes of the start of an element, in order and without namespace declarations. One without a prefix has
    /// the URI "".
    [[nodiscard]] std::size_t getAttributeCount() const;
    [[nodiscard]] std::string const & getAttributeNamespace(std::size_t index) const;
    [[nodiscard]] std::string const & getAttributeLocalName(std::size_t index) const;
    [[nodiscard]] XmlStringRef getAttributeValue(std::size_t index) const;
    [[nodiscard]] std::string_view attributeValue(std::size_t index) const;
    /// Null if the element has no such attribute.
    [[nodiscard]] XmlStringRef getAttributeValue(std::string_view localName, std::string_view uri) const;

    /// All of them at once, for loops that must be fast.
    [[nodiscard]] std::span<Attribute const> attributes() const;
    [[nodiscard]] std::span<Namespace const> namespaces() const;
    /// The object that this reader uses for a name or URI of this text.
    [[nodiscard]] std::string const & intern(std::string_view text);

    /// Whether an error ended the events; false as long as `hasNext` is true.
    [[nodiscard]] bool hasError() const;
    /// The text of the error; empty if there is none. It names the file only if the file itself is the problem.
    [[nodiscard]] std::string const & error() const;
    /// The place of the error if there is one, otherwise of the current event.
    [[nodiscard]] Location getLocation() const;

private:
    class Impl;
    std::unique_ptr<Impl> fImpl;
};

} // namespace HASP
