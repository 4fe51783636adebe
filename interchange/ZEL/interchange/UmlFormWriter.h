#pragma once

#include <ZEL/interchange/MetaClasses.h>
#include <ZEL/interchange/UmlForm.h>
#include <ZEL/serializer/QualifiedName.h>

#include <hasp_util/XmlReader.h>

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL::Interchange {

/// Turns a file that this system has written into one of another form, element by element, so that what was kept as text
/// takes part like everything else. Serves one file.
class UmlFormWriter {
public:
    /// `xml` must outlive the writer.
    UmlFormWriter(UmlForm form, std::string plainFile, HASP::XmlWriter & xml);

    /// Writes the document. Throws a text with the reason if the file cannot be read.
    void write();

private:
    using Binding = std::pair<std::string, std::string>; ///< a prefix and its namespace

    struct Attribute {
        std::string uri;
        std::string name;
        std::string value;
    };
    /// A start tag that waits until it is known whether its element has content.
    struct Tag {
        std::string uri;
        std::string name;
        std::vector<Binding> bindings;
        std::vector<Attribute> attributes;
        std::vector<Attribute> links; ///< attributes that become elements
    };
    /// An element that is open in the file.
    struct Level {
        internal::MetaClassView const * metaClass = nullptr; ///< null for none that is known
        bool isWritten = true;
    };

    /// Reads the file once ahead, for what the root has to say.
    void survey();
    void start(HASP::XmlReader const & xml);
    void end();
    void startRoot(HASP::XmlReader const & xml);
    void startElement(HASP::XmlReader const & xml, Level & level);

    /// What stands before an element, or at the end of one.
    void writeText();
    void writeTag(bool isEmpty);
    void writeLinks(Attribute const & links);

    /// Whether the element says nothing but that this system has written the file.
    [[nodiscard]] bool isHead(HASP::XmlReader const & xml) const;
    [[nodiscard]] std::string translated(std::string const & uri) const;
    [[nodiscard]] internal::MetaClassView const * classOf(HASP::XmlReader const & xml);
    void takeAttributes(HASP::XmlReader const & xml, Level const & level);

    UmlForm const fForm;
    std::string const fPlainFile;
    std::string const fUml;
    std::string const fForeign;
    HASP::XmlWriter & fXml;
    MetaClasses fMetaClasses;

    // What the survey has found.
    std::size_t fTops = 0;                                       ///< elements at the top
    std::set<std::string> fUris;                                 ///< namespaces of elements and attributes
    std::set<std::string, std::less<>> fPrefixes;                ///< of names of classes
    std::map<std::string, std::string, std::less<>> fNamespaces; ///< those that the root declares, by prefix

    bool fHasEnvelope = true; ///< around what stands at the top
    std::vector<Level> fLevels;
    Tag fTag;
    bool fHasTag = false;
    std::string fText;
};

} // namespace ZEL::Interchange
