#pragma once

#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>

#include <cstddef>
#include <functional>
#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL::Serializer {

/// Prints Contexts as XML; knows of no dialect and of no object.
class ContextPrinter {
public:
    /// By namespace URI: its prefix.
    using Namespaces = std::map<std::string, std::string>;

    /// `namespaces` are those collected, and takes in those that are printed. `isElementPerValue` is about attributes
    /// with several values.
    ContextPrinter(HASP::XmlWriter & xml, Namespaces & namespaces, bool isElementPerValue)
        : fXml(xml), fNamespaces(namespaces), fIsElementPerValue(isElementPerValue) {}

    /// Whether an element is below the top of the file, where its role does not imply its type and `xmi:type` states
    /// it.
    enum class Level : bool { Top, Nested };
    /// Open elements get a start tag, to be ended by the caller; others are written as empty ones.
    enum class Elements : bool { Empty, Open };

    /// Returns the number of elements that are still open.
    [[nodiscard]] std::size_t write(ContextSequence const & sequence, Elements elements, Level level);
    void end(std::size_t elements);
    /// `write`, with all elements ended.
    void writeWhole(ContextSequence const & sequence, Level level);
    /// The type as `xmi:type` names it: the prefix of its namespace, a colon and its name. Empty, with an entry in the log,
    /// if no prefix is known.
    [[nodiscard]] std::string const & typeNameOf(QualifiedName type);
    /// `xmi:type` into the open tag; nothing for a type without a prefix.
    void writeType(QualifiedName type);
    /// From now on, links that are elements contain what this returns for their role and their `href`: elements, as text;
    /// null for nothing. An empty function ends that.
    using LinkContents = std::function<std::string const *(std::string const & role, std::string const & href)>;
    void setLinkContents(LinkContents contents) { fLinkContents = std::move(contents); }
    /// Logs, by property, where several values were joined that will be read back as one.
    void logJoinedValues() const;

private:
    /// Whether the last element of the path is the parent of this one.
    [[nodiscard]] bool pathLeadsTo(Context const & element) const;
    void startElement(Context const & context, Elements elements, Level level);
    void writeReference(Context const & context);
    void writeAttribute(Context const & context);
    void writeValues(Context const & context);
    [[nodiscard]] std::string makeTypeName(QualifiedName type);

    HASP::XmlWriter & fXml;
    Namespaces & fNamespaces;
    bool const fIsElementPerValue;
    LinkContents fLinkContents;
    std::map<std::string, std::size_t> fJoinedValues; ///< by class and property: in how many objects
    std::unordered_map<QualifiedName, std::string> fTypeNames;
    std::vector<Context const *> fPath; ///< of the sequence being printed: the elements around the Context at hand
};

} // namespace ZEL::Serializer
