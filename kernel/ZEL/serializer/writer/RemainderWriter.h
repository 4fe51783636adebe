#pragma once

#include <ZEL/metamodel/Remainder.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/writer/ContextPrinter.h>

#include <cstddef>
#include <unordered_set>

namespace HASP {
class XmlWriter;
} // namespace HASP

namespace ZEL {
class ImmutableClassObject;
} // namespace ZEL

namespace ZEL::Serializer {

class ObjectContexts;

/// Writes what is kept with objects beside their values.
class RemainderWriter {
public:
    /// All arguments must outlive the run.
    RemainderWriter(HASP::XmlWriter & xml, ObjectContexts & contexts, ContextPrinter & printer)
        : fXml(xml), fContexts(contexts), fPrinter(printer) {}

    /// Whether there is anything to stand among the parts of the object.
    [[nodiscard]] static bool hasChildren(Remainder const & remainder);
    /// What is found before anything is written.
    struct Collected {
        ContextPrinter::Namespaces namespaces; ///< of attributes, and of the classes that links name
        bool hasWideNames = false;             ///< names that ISO 8859-1 cannot hold
    };
    /// Namespaces are added by their prefixes, as far as these are free. Linear in the size of the remainder.
    static void collect(Remainder const & remainder, Collected & collected);
    /// Appends the attributes of the object's tag, but for those whose names it has already.
    static void appendAttributes(Remainder const & remainder, Context const & parent, ContextSequence & sequence);
    /// Appends the attributes of the root of the file.
    static void appendBeside(Remainder const & remainder, ContextSequence & sequence);
    /// The same as `appendAttributes` into the open tag.
    void writeAttributes(Remainder const & remainder);
    /// The contexts of the object, with what the file had in links that are elements now. Returns what `ContextPrinter::write`
    /// does. To be called before `writeChildren`, which has the rest.
    [[nodiscard]] std::size_t write(Remainder const & remainder, ContextSequence const & sequence,
                                    ContextPrinter::Elements elements, ContextPrinter::Level level);
    void writeChildren(ImmutableClassObject const & object, Remainder const & remainder);
    void writeBeside(Remainder const & remainder);

private:
    void writeElements(Remainder const & remainder, Remainder::Place place);
    void writeLink(Remainder::Link const & link);

    HASP::XmlWriter & fXml;
    ObjectContexts & fContexts;
    ContextPrinter & fPrinter;
    std::unordered_set<Remainder::Element const *> fInLinks; ///< written in links
};

} // namespace ZEL::Serializer
