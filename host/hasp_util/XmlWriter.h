#pragma once

#include <hasp_util/Export.h>
#include <hasp_util/XmlName.h>
#include <hasp_util/XmlWriterSettings.h>

#include <memory>
#include <string>
#include <string_view>

namespace HASP {

/// Writes an XML document into a file, piece by piece.
///
/// A start tag stays open until something else follows, so that attributes and namespaces can be added. Texts are
/// UTF-8. `std::runtime_error` is thrown for anything that no parser could read back: a control character, malformed
/// UTF-8, a name that the encoding cannot hold, an attribute written twice; its text names the character as U+XXXX and
/// its place. The operation has then written nothing, and the document may be continued or ended. Operations out of
/// place, such as an attribute after content, throw `std::logic_error`.
///
/// Errors of the file are never thrown, even if it cannot be opened: they are remembered, for `good`.
class HOST_API XmlWriter {
public:
    /// Creates or empties the file. A symbolic link of that name is refused.
    XmlWriter(std::string const & fileName, XmlWriterSettings const & settings);
    /// Closes the file without ending the document.
    ~XmlWriter();
    XmlWriter(XmlWriter const &) = delete;
    XmlWriter & operator=(XmlWriter const &) = delete;

    /// In place of that of the settings. Throws `std::logic_error` once the document has begun. Names made by
    /// `makeName` before are good no more, unless they are of ASCII characters.
    void setEncoding(std::string encoding);
    void writeStartDocument(std::string_view version);
    /// The prefix is declared in this tag unless it is already in force, or `writeNamespace` declares it here.
    void writeStartElement(std::string_view prefix, std::string_view localName, std::string_view uri);
    /// With the prefix that is declared for the namespace, or a new one if there is none. The URI "" has no prefix,
    /// even where a default namespace is in force.
    void writeStartElement(std::string_view localName, std::string_view uri);
    // An element without content: it takes attributes but needs no end. The prefix as above.
    void writeEmptyElement(std::string_view prefix, std::string_view localName, std::string_view uri);
    void writeEmptyElement(std::string_view localName, std::string_view uri);
    void writeAttribute(std::string_view prefix, std::string_view localName, std::string_view uri,
                        std::string_view value);
    /// With the prefix that is declared for the namespace, or a new one if there is none.
    void writeAttribute(std::string_view localName, std::string_view uri, std::string_view value);
    /// Whether the open start tag has this attribute. Throws as the writing of one does.
    [[nodiscard]] bool hasAttribute(std::string_view localName, std::string_view uri);
    /// For names that are written often. With the prefix that attributes of the namespace have at this place, where it
    /// must be declared; to be written only where that still holds. Throws as the writing of an attribute does.
    [[nodiscard]] XmlName makeName(std::string_view localName, std::string_view uri);
    void writeStartElement(XmlName const & name);
    void writeEmptyElement(XmlName const & name);
    void writeAttribute(XmlName const & name, std::string_view value);
    /// Declares a namespace; the prefix "" makes it the default one. Throws for a second default namespace in the same
    /// tag, and for one prefix of two namespaces.
    void writeNamespace(std::string_view prefix, std::string_view uri);
    void writeValue(std::string_view text);
    /// An element that is XML already, in the place of an element: the caller answers for its being well-formed, and for
    /// its declaring what it uses. Characters that the encoding cannot hold are written as references.
    void writeMarkup(std::string_view element);
    void writeEndElement();
    /// Ends all open elements. A second call does nothing.
    void writeEndDocument();

    /// Whether the system has accepted everything written so far.
    [[nodiscard]] bool good() const noexcept;
    /// Writes the rest and closes the file. Returns `good`, which is final now.
    bool close();
    /// Why `good` is false, in the system's words; empty if it is true.
    [[nodiscard]] std::string errorText() const;

private:
    class Impl;
    std::unique_ptr<Impl> fImpl;
};

} // namespace HASP
