#pragma once

#include "family/Family.h"
#include "write/Printer.h"
#include "write/forms/PropertyForm.h"

#include <map>
#include <set>
#include <string>

namespace zelgen {

/// What all emitters share: the metamodel, the printer and the names from the command line. The printer knows the
/// namespace as `$ns$` and the export macro as `$API$`.
struct Emission {
    Metamodel const & metamodel;
    Printer print;
    std::string exportMacro;
    unsigned int units = 16;

    /// The first line of a file: what generated it, and from which definition.
    [[nodiscard]] std::string banner(Mark mark, std::string_view emitter) const;
    /// The beginning of the names of compiled files: the namespace, "ZEL".
    [[nodiscard]] std::string filePrefix() const;
    /// The same for files of a namespace within that of the metamodel.
    [[nodiscard]] Emission within(std::string_view inner) const;
    /// The same with a printer that knows further values.
    [[nodiscard]] Emission knowing(Printer::Values const & values) const;
    /// A printer that also knows a property: `$P$` and `$Ps$`, its name in operations, `$p$`, the base of its names,
    /// `$get$`, its getter, `$T$` and `$IT$`, its type for writing and for reading.
    [[nodiscard]] Printer printerFor(Property const & p) const;
    [[nodiscard]] std::string path(std::string_view fileName) const {
        return metamodel.includeDirectory + '/' + std::string(fileName);
    }
    [[nodiscard]] static std::string header(Class const & of, std::string_view suffix = "");
    /// The header that declares a value type or the handles of a class.
    [[nodiscard]] static std::string valueHeader(Type const & type);
    /// The same, for an enumeration without what only its texts and its type need.
    [[nodiscard]] static std::string shapeHeader(Type const & type);
    /// The headers of the parts of operations that `text` names.
    [[nodiscard]] static std::set<std::string> supportFor(std::string_view text);
    /// Include lines, in order, for the headers that are not in `known`: those that the source's own header includes.
    [[nodiscard]] static std::string includes(std::set<std::string> const & headers,
                                              std::set<std::string> const & known = {});
};

/// "&ZEL::tables::CommentClass", null for no class.
[[nodiscard]] std::string classPointer(Class const * c);

/// Whether the text contains the word, not as part of a longer one.
[[nodiscard]] bool mentions(std::string_view text, std::string_view word);

/// Files to write: path below the output directory, and text.
using Files = std::map<std::string, std::string>;

// What the factory class of a metamodel has in addition to the operations of its properties; empty for all other
// classes.
[[nodiscard]] std::string factoryDeclarations(Emission const & emission, Class const & of);
[[nodiscard]] std::string factoryDefinitions(Emission const & emission, Class const & of);
[[nodiscard]] std::string factoryHandleDeclarations(Emission const & emission, Class const & of);
[[nodiscard]] std::string factoryHandleDefinitions(Emission const & emission, Class const & of);
[[nodiscard]] std::set<std::string> factoryHeaders(Emission const & emission, Class const & of);

// The headers that the headers of a class include.
[[nodiscard]] std::set<std::string> headersOfIntf(Emission const & emission, Class const & of);
[[nodiscard]] std::set<std::string> headersOfHandle(Class const & of);

// One emitter for each kind of file.
[[nodiscard]] std::string emitForward(Emission const & emission);
[[nodiscard]] std::string emitIntfHeader(Emission const & emission, Class const & of);
[[nodiscard]] std::string emitIntfSource(Emission const & emission, Class const & of);
[[nodiscard]] std::string emitHandleHeader(Emission const & emission, Class const & of);
[[nodiscard]] std::string emitHandleSource(Emission const & emission, Class const & of);
[[nodiscard]] std::string emitHolderHeader(Emission const & emission, Class const & of, Holder holder);
[[nodiscard]] std::string emitHolderSource(Emission const & emission, Class const & of, Holder holder);
[[nodiscard]] std::string emitEnumerationShape(Emission const & emission, Type const & of);
[[nodiscard]] std::string emitEnumerationHeader(Emission const & emission, Type const & of);
[[nodiscard]] std::string emitEnumerationSource(Emission const & emission, Type const & of);
[[nodiscard]] std::string emitMetamodelHeader(Emission const & emission);
[[nodiscard]] std::string emitBootstrap(Emission const & emission);
[[nodiscard]] std::string emitTablesHeader(Emission const & emission);
[[nodiscard]] std::string emitPropertyTableHeader(Emission const & emission, Class const & of);
[[nodiscard]] std::string emitTables(Emission const & emission, Class const & of);

} // namespace zelgen
