#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/XmlWriterSettings.h>

#include <memory>
#include <string>
#include <string_view>

namespace HASP {

/// Writes an XML document into a file, piece by piece.
///
/// A start tag stays open until something else follows, so that attributes and namespaces can be added. Texts are
/// UTF-8. What no parser could read back throws `std::runtime_error`: a control character, broken UTF-8, a name that
/// the encoding cannot hold, an attribute written twice; the text names the character as U+XXXX, and where it was to
/// stand. The operation has then written nothing, and the document may be carried on or ended. Operations that do not
/// fit their place, such as an attribute after content, throw `std::logic_error`.
///
/// The file's troubles never throw, not even when it cannot be opened: they are remembered until `good` is asked.
class HOST_API XmlWriter {
public:
    /// Makes or empties the file. A symbolic link of that name is not followed but refused.
    XmlWriter(std::string const & fileName, XmlWriterSettings const & settings);
    /// Closes the file, without ending the document.
    ~XmlWriter();
    XmlWriter(XmlWriter const &) = delete;
    XmlWriter & operator=(XmlWriter const &) = delete;

    void writeStartDocument(std::string_view version);
    /// The prefix is declared in this tag unless it is in force, or `writeNamespace` declares it here.
    void writeStartElement(std::string_view prefix, std::string_view localName, std::string_view uri);
    /// With the prefix that is declared for the namespace, a fresh one if there is none. The URI "" has no prefix,
    /// even where a default namespace is in force.
    void writeStartElement(std::string_view localName, std::string_view uri);
    /// An element without content, which takes attributes but no end.
    void writeEmptyElement(std::string_view localName, std::string_view uri);
    void writeAttribute(std::string_view prefix, std::string_view localName, std::string_view uri,
                        std::string_view value);
    /// With the prefix that is declared for the namespace, a fresh one if there is none.
    void writeAttribute(std::string_view localName, std::string_view uri, std::string_view value);
    /// Declares a namespace, the default one with the prefix "". A second default one in the same tag throws, as does
    /// one prefix for two namespaces.
    void writeNamespace(std::string_view prefix, std::string_view uri);
    void writeValue(std::string_view text);
    void writeEndElement();
    /// Ends all open elements. A second call does nothing.
    void writeEndDocument();

    /// Whether everything so far could be handed over to the system.
    [[nodiscard]] bool good() const noexcept;
    /// Hands the rest over and closes the file. Returns `good`; only now it is certain.
    bool close();
    /// Why `good` is false, in the system's words; empty if it is true.
    [[nodiscard]] std::string errorText() const;

private:
    class Impl;
    std::unique_ptr<Impl> fImpl;
};

} // namespace HASP
