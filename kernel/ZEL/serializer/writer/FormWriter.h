#pragma once

#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/writer/FileForm.h>

#include <hasp_util/XmlReader.h>

#include <cstddef>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL::internal {
class MetaClassView;
} // namespace ZEL::internal

namespace ZEL::Serializer {

/// Turns a file in the standard form into one of another form, element by element, so that what was kept as text takes
/// part like everything else. Serves one file; needs memory for its depth alone, and for subsets.
class FormWriter {
public:
    /// All arguments must outlive the writer.
    FormWriter(FileForm const & form, std::string const & standardFile, HASP::XmlWriter & xml)
        : fForm(form), fStandardFile(standardFile), fXml(xml) {}

    /// Writes the document. Throws a text with the reason if the file cannot be read.
    void write();

private:
    using Binding = std::pair<std::string, std::string>; ///< a prefix and its namespace
    using Names = std::map<std::string, std::string, std::less<>>;

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
    /// What the form says of a class.
    struct ClassForm {
        std::shared_ptr<internal::MetaClassView const> view; ///< null for none that is known
        Names propertyNames;
        Names subsets;
        Names values;
    };
    /// An element that is open in the file.
    struct Level {
        ClassForm const * of = nullptr;
        bool isWritten = true;
    };

    /// Reads the file once ahead, for what an element has to say before its parts are there.
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
    [[nodiscard]] ClassForm const & classOf(HASP::XmlReader const & xml);
    [[nodiscard]] ClassForm makeClassForm(QualifiedName name) const;
    void takeAttributes(HASP::XmlReader const & xml, ClassForm const & of);
    void takeSubsets();
    /// As a link or an attribute.
    void take(ClassForm const & of, std::string const & uri, std::string const & name, std::string value);

    FileForm const & fForm;
    std::string const & fStandardFile;
    HASP::XmlWriter & fXml;
    std::unordered_map<QualifiedName, ClassForm> fClasses;

    // What the survey has found.
    std::size_t fTops = 0;                        ///< elements at the top
    std::set<std::string> fUris;                  ///< namespaces of elements and attributes
    std::set<std::string, std::less<>> fPrefixes; ///< of names of classes
    Names fNamespaces;                            ///< those that the root declares, by prefix
    /// Ids of parts by the number of the element that has them, and their property.
    std::unordered_map<std::size_t, std::map<std::string, std::string>> fSubsets;

    bool fHasEnvelope = true;  ///< around what stands at the top
    std::size_t fElements = 0; ///< those that have begun
    std::vector<Level> fLevels;
    Tag fTag;
    bool fHasTag = false;
    bool fHasTop = false;  ///< whether an object at the top has begun
    bool fIsModel = false; ///< whether the element at hand is the model; one within another is a package
    std::string fText;
};

} // namespace ZEL::Serializer
