#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/serializer/Context.h>
#include <ZEL/serializer/ContextSequence.h>
#include <ZEL/serializer/NamespaceContext.h>
#include <ZEL/serializer/QualifiedName.h>
#include <ZEL/serializer/TransformerRegistry.h>
#include <ZEL/serializer/reader/ElementText.h>
#include <ZEL/serializer/reader/TextHash.h>

#include <hasp_util/XmlReader.h>

#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::internal {
class ModelCore;
} // namespace ZEL::internal

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
    /// Bindings that are added from here on go with the `popContext` that belongs to this.
    void pushContext() noexcept { ++fDepth; }
    void popContext();
    /// What "prefix:name" stands for; empty, and a log entry, if the text has no colon or its prefix is not bound.
    [[nodiscard]] QualifiedName of(std::string_view text);

private:
    /// The bindings as they were before the first one was added at a depth.
    struct Saved {
        std::size_t depth;
        NamespaceContext namespaces;
    };

    NamespaceContext fNamespaces;
    std::vector<Saved> fSaved;
    std::size_t fDepth = 0;
    std::unordered_map<std::string, QualifiedName, TextHash, std::equal_to<>> fKnown; ///< under the present bindings
};

/// An element's names and those of the one around it, as in a Context.
struct ElementNames {
    QualifiedName parentType;
    QualifiedName parentRole;
    QualifiedName type;
    QualifiedName role;

    /// Of an element in this one.
    [[nodiscard]] ElementNames within(QualifiedName newRole, QualifiedName newType) const noexcept {
        return {type, role, newType, newRole};
    }
    [[nodiscard]] Context asContext() const;
    friend bool operator==(ElementNames const &, ElementNames const &) noexcept = default;
};

/// What becomes of the elements with certain names in objects of a certain class, with their attributes.
///
/// A file has few combinations of them, so nearly every element finds its plan made.
struct ElementPlan {
    struct Attribute {
        std::string const * uri; ///< this and the next as the XML reader keeps them
        std::string const * localName;
        QualifiedName role;
        bool isPlain; ///< no rule is for it
    };

    ElementNames names;
    MetaClass const * holder = nullptr;  ///< null: none made yet
    MetaProperty const * part = nullptr; ///< the element makes a part, and no rule is for it; null for all others
    std::vector<Attribute> attributes;   ///< those met so far

    /// How parts are made at once, as far as the last one has shown: null if they are not.
    internal::FieldDescriptor const * place = nullptr; ///< that of `part` in the holder
    internal::ModelCore * model = nullptr;             ///< the one in which they are made
    MetaClass * made = nullptr;
    internal::ClassDescriptor const * instances = nullptr; ///< of `made`
};

/// The plans of a file, as long as the rules stay as they are.
class ElementPlans {
public:
    [[nodiscard]] ElementPlan & of(ElementNames const & names, MetaClass & holder, TransformerRegistry const & rules);
    /// The attribute that comes at `place` among those of an element, or anywhere else.
    [[nodiscard]] static ElementPlan::Attribute const & attributeOf(ElementPlan & plan, std::size_t place,
                                                                    HASP::XmlReader::Attribute const & attribute,
                                                                    RoleNames & roles,
                                                                    TransformerRegistry const & rules);

private:
    std::vector<ElementPlan> fPlans; ///< indexed by a hash of the names
    TransformerRegistry::StateOfRules fRules;
};

/// The state of the reading of one file. Put aside as a whole while a file that it links to is read.
struct ParseState {
    /// The object that is being filled.
    struct Cursor {
        ClassObject object; ///< null: not in an object
        MetaClass * metaClass = nullptr;
        Context context;
        std::size_t firstGiven = 0;   ///< in `given`
        std::size_t firstDerived = 0; ///< in `derived`
        std::size_t firstParts = 0;   ///< in `parts`
    };
    struct OpenElement {
        ElementNames names; ///< of the element around it
        std::size_t objectDepth;
    };

    /// What a file is read for that holds a part of another one's model.
    struct Fragment {
        ParseState * host = nullptr;             ///< of the file in which the link to it stands; null for no fragment
        MetaProperty const * property = nullptr; ///< of the object at hand there
        std::string id;                          ///< of the part, in this file
        FileLinks * whole = nullptr;             ///< those of the model's own file
        ClassObject part;                        ///< once it stands in its place
        std::vector<ClassObject> tops;           ///< all objects at the top of the file
    };

    ParseState(std::string const & fileName, HASP::XmlReaderSettings const & settings);

    /// That of the element whose start or end is at hand, as in the file.
    [[nodiscard]] QualifiedName elementName() { return roles.of(&xml.getNamespaceURI(), &xml.getLocalName()); }

    HASP::XmlReader xml;
    std::string const & xmiUri; ///< this and the next four as `xml` keeps them, to be compared by address
    std::string const & xmiId;
    std::string const & xmiType;
    std::string const & xmiVersion;
    std::string const & xsiUri;
    RoleNames roles;
    TypeNames types;
    ElementPlans plans;

    std::vector<OpenElement> elements;
    ElementNames currentElement;
    bool hasRoot = false;    ///< the outermost element has begun
    bool hasVersion = false; ///< the element at hand may say of which version of XMI it is
    std::size_t objectDepth = 0;
    std::vector<Cursor> cursors;
    Cursor cursor;
    std::vector<MetaProperty const *> given; ///< properties for one value that open objects have one for, by object
    /// What the file says of derived properties of open objects, by object.
    std::vector<std::pair<MetaProperty const *, std::string>> derived;
    /// What attributes of open objects name as their parts, by object.
    std::vector<std::pair<MetaProperty const *, std::string>> parts;

    bool isSkipping = false;
    std::size_t skipDepth = 0; ///< open elements inside the skipped one that have its name
    QualifiedName skipName;
    bool countsSkipped = false; ///< whether what is inside is reported

    bool keeps = false;             ///< what no property can hold
    PrefixBindings bindings;        ///< all in force, if it keeps
    ElementText skipped;            ///< the element that is skipped, if it is kept
    Remainder beside;               ///< what the file has beside its model
    std::size_t linkDepth = 0;      ///< of the open element that is a link; 0 for none
    FileLinks * linkFile = nullptr; ///< this and the next: where that link waits; null if it has led to a part:
    std::size_t linkPlace = 0;
    ClassObject linkedPart;
    Fragment fragment;
    std::vector<std::string> fragments; ///< URIs of the files whose contents have become parts of this one's
    std::string modelId;                ///< of `model`, once it has been asked for
    bool isForeign = false;             ///< after a block of another tool: ids are not those of this system

    bool isInText = false;
    std::string text;
    QualifiedName textRole;
    MetaProperty const * textProperty = nullptr;

    Model model;                          ///< that of this file; invalid until its top element has been read
    FileLinks * links = nullptr;          ///< of this file; null as long as `model` is invalid
    ContextSequence sequence;             ///< this and the next are kept for their storage
    std::vector<QualifiedName> roleNames; ///< of the attributes at hand
};

} // namespace ZEL::Serializer
