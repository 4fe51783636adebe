#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/NamespaceManager.h>
#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/reader/TextHash.h>

#include <hasp_util/XmlReader.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::Serializer {

class FileLinks;
class MetaClass;
struct MetaProperty;

/// The names of an XML reader as pairs, found by their addresses instead of their texts.
class RoleNames {
public:
    [[nodiscard]] QualifiedName of(std::string const * uri, std::string const * localName);

private:
    struct Slot {
        std::string const * uri = nullptr;
        std::string const * localName = nullptr;
        QualifiedName name;
    };
    std::array<Slot, 256> fSlots{};
};

/// The namespaces in force at a place of a file, and the types that were named there.
///
/// The first binding of a prefix counts as long as it is in force, so only a prefix that is not bound gets a binding.
class TypeNames {
public:
    void addNamespace(std::string const & prefix, std::string const & uri);
    void pushContext();
    void popContext();
    /// What "prefix:name" stands for; empty, and a log entry, if the text has no colon or its prefix is not bound.
    [[nodiscard]] QualifiedName of(std::string_view text);

private:
    NamespaceManager fNamespaces;
    std::size_t fVersion = 0; ///< of the bindings
    std::size_t fLastVersion = 0;
    std::vector<std::size_t> fSavedVersions;
    std::unordered_map<std::string, QualifiedName, TextHash, std::equal_to<>> fKnown; ///< under the present bindings
};

/// The state of the reading of one file. Put aside as a whole while a file that it links to is read.
struct ParseState {
    /// The object that is being filled.
    struct Cursor {
        ClassObject object; ///< null: not in an object
        MetaClass * metaClass = nullptr;
        Context context;
        std::size_t firstGiven = 0; ///< in `given`
    };
    struct OpenElement {
        Context names; ///< of the element around it
        std::size_t objectDepth;
    };

    ParseState(std::string const & fileName, HASP::XmlReaderSettings const & settings);

    /// That of the element whose start or end is at hand, as in the file.
    [[nodiscard]] QualifiedName elementName() { return roles.of(&xml.getNamespaceURI(), &xml.getLocalName()); }

    HASP::XmlReader xml;
    std::string const & xmiUri; ///< this and the next three as `xml` keeps them, to be compared by address
    std::string const & xmiId;
    std::string const & xmiType;
    std::string const & xmiVersion;
    RoleNames roles;
    TypeNames types;

    std::vector<OpenElement> elements;
    Context currentElement;  ///< names alone
    bool hasRoot = false;    ///< the outermost element has begun
    bool hasVersion = false; ///< the element at hand may say of which version of XMI it is
    std::size_t objectDepth = 0;
    std::vector<Cursor> cursors;
    Cursor cursor;
    std::vector<MetaProperty const *> given; ///< properties for one value that open objects have one for, by object

    bool isSkipping = false;
    std::size_t skipDepth = 0; ///< open elements inside the skipped one that have its name
    QualifiedName skipName;
    bool countsSkipped = false; ///< whether what is inside is reported
    bool isForeign = false;     ///< after a block of another tool: ids are not those of this system

    bool isInText = false;
    std::string text;
    QualifiedName textRole;
    MetaProperty const * textProperty = nullptr;

    Model model;                 ///< that of this file; invalid until its top element has been read
    FileLinks * links = nullptr; ///< of this file; null as long as `model` is invalid
    ContextSequence sequence;    ///< kept for its storage
};

} // namespace ZEL::Serializer
