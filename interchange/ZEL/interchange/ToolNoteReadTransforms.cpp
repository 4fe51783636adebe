#include <ZEL/String.h>
#include <ZEL/interchange/ToolNoteReadTransforms.h>
#include <ZEL/interchange/ToolNotes.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/Comment.h>
#include <ZEL/metamodel/Element.h>
#include <ZEL/metamodel/FactoryObject.h>
#include <ZEL/metamodel/Model.h>
#include <ZEL/metamodel/Package.h>
#include <ZEL/metamodel/PackageableElement.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/metamodel/Type.h>
#include <ZEL/metamodel/TypedElement.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/serializer/XmiConstants.h>
#include <ZEL/serializer/dialects/DialectContexts.h>
#include <ZEL/serializer/reader/ReadFile.h>
#include <ZEL/tools/ObjectsIn.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace ZEL::Interchange {

using Serializer::Context;
using Serializer::ContextSequence;
using Serializer::Pattern;
using Serializer::ReadFile;
using Serializer::XmiConstants;

namespace {

/// Where Enterprise Architect puts the types of programming languages.
constexpr char kPrimitiveTypes[] = "EA_PrimitiveTypes_Package";
constexpr char kPrimitiveTypesId[] = "EAPrimitiveTypesPackage";

bool isBlock(Remainder::Element const & element) { return std::string_view(element.xml).starts_with("<xmi:Extension"); }

/// Names that mean a primitive type in any model.
bool isPrimitive(std::string_view name) {
    static constexpr std::array<std::string_view, 17> names = {
        "Boolean",      "Integer",      "Real", "String", "UnlimitedNatural",
        "bool",         "boolean",      "byte", "char",   "double",
        "float",        "int",          "long", "short",  "string",
        "unsigned int", "unsigned long"};
    return std::find(names.begin(), names.end(), name) != names.end();
}

/// The name in an id such as "EAJava_int", by which Enterprise Architect links to a type that it knows by its name alone.
/// Empty for any other id.
std::string_view nameInId(std::string_view id) {
    std::size_t const end = id.find('_');
    std::string_view const head = id.substr(0, end);
    bool const isOfName = end != std::string_view::npos && head.starts_with("EA") && head != "EAID" && head != "EAPK";
    return isOfName ? id.substr(end + 1) : std::string_view();
}

/// Puts what blocks say into one model.
class Annotator {
public:
    explicit Annotator(ReadFile & file) : fFile(file) {}

    /// Of each object that has a block in it.
    void readBlocksInElements() {
        std::vector<std::string_view> blocks;
        std::vector<ClassObject> owners;
        for (ImmutableClassObject const & object : objects()) {
            for (Remainder::Element const & element : remainderOf(object).elements) {
                if (isBlock(element) && element.xml.find("documentation") != std::string::npos) {
                    blocks.emplace_back(element.xml);
                    owners.push_back(writable(object));
                }
            }
        }
        // Comments are added when all has been read: the blocks lie in the states of the objects.
        ToolNotes const notes = ToolNotes::of(blocks);
        for (ToolNotes::Note const & note : notes.documentation) {
            if (note.id.empty() && note.block < owners.size()) {
                comment(owners[note.block], note.text);
            }
        }
    }

    void readBlocksBeside() {
        std::vector<std::string_view> blocks;
        for (Remainder::Element const & element : remainderOf(fFile.model()).elements) {
            if (isBlock(element)) {
                blocks.emplace_back(element.xml);
            }
        }
        ToolNotes const notes = ToolNotes::of(blocks);
        for (ToolNotes::Note const & note : notes.documentation) {
            if (!note.id.empty()) {
                comment(fFile.find(note.id), note.text);
            }
        }
        setTypes(notes);
    }

private:
    /// All of the model, found once.
    std::vector<ImmutableClassObject> const & objects() {
        if (fObjects.empty()) {
            fObjects = objectsIn(fFile.model());
        }
        return fObjects;
    }

    [[nodiscard]] ClassObject writable(ImmutableClassObject const & object) const {
        return fFile.model().getObjectById(object.getId());
    }

    /// A new object, of the metamodel that the model is of.
    template <class H> [[nodiscard]] H make(char const * name) const {
        return H(fFile.model().getFactory().createFromString(String(name)));
    }

    // --- comments ----------------------------------------------------------------------------------------------------

    void comment(ClassObject const & object, std::string const & text) {
        Element const element(object);
        if (!element.isValid()) {
            return;
        }
        if (Comment const self(object); self.isValid()) {
            if (self.getBodyView().empty()) {
                self.setBody(String(text)); // a note's text
            }
            return;
        }
        if (!textsOf(element).insert(text).second) {
            return;
        }
        Comment const comment = make<Comment>("Comment");
        if (comment.isValid()) {
            comment.setBody(String(text));
            element.getOwnedComments().push_back(comment);
            comment.getAnnotatedElements().push_back(element);
        }
    }

    /// Of the element's comments, looked at once, so that no number of blocks about one element makes this slow.
    std::unordered_set<std::string> & textsOf(Element const & element) {
        auto const [entry, isNew] = fTexts.try_emplace(element.getImplementation());
        if (isNew) {
            element.getOwnedComments().forEach(
                [&texts = entry->second](Comment const & comment) { texts.emplace(comment.getBodyView()); });
        }
        return entry->second;
    }

    // --- types -------------------------------------------------------------------------------------------------------

    void setTypes(ToolNotes const & notes) {
        for (auto const & [id, name] : notes.primitiveTypes) {
            fIds.emplace(name, id);
        }
        for (ToolNotes::Note const & note : notes.typeNames) {
            setType(TypedElement(fFile.find(note.id)), note.text);
        }
        for (ImmutableClassObject const & object : objects()) {
            std::string const id = linkedType(object);
            if (std::string_view const name = nameInId(id); !name.empty()) {
                auto const listed = notes.primitiveTypes.find(id);
                setType(TypedElement(writable(object)),
                        listed != notes.primitiveTypes.end() ? listed->second : std::string(name));
            }
        }
    }

    /// What the element's link to a type names, where that is nowhere.
    [[nodiscard]] static std::string linkedType(ImmutableClassObject const & object) {
        for (Remainder::Link const & link : remainderOf(object).links) {
            if (link.property == "type") {
                return link.target;
            }
        }
        return {};
    }

    void setType(TypedElement const & element, std::string const & name) {
        if (!element.isValid() || element.hasType()) {
            return;
        }
        // A link to what is in another file says more than a name.
        std::string const link = linkedType(element);
        if (!link.empty() && nameInId(link).empty()) {
            return;
        }
        if (Type const type = typeNamed(name); type.isValid()) {
            fFile.setType(element, type);
        }
    }

    /// Those of the model with one name.
    struct Named {
        std::size_t count = 0;
        Type first;
        Type primitive; ///< the first one
    };

    [[nodiscard]] Type typeNamed(std::string const & name) {
        if (fTypes.empty()) {
            for (ImmutableClassObject const & object : objects()) {
                enterType(object);
            }
        }
        Named & named = fTypes[name];
        if (named.count == 0) {
            if (Type const made = makePrimitive(name); made.isValid()) {
                named = {1, made, made};
            }
        }
        return named.count == 1 ? named.first : named.primitive;
    }

    void enterType(ImmutableClassObject const & object) {
        ImmutableType const type(object);
        if (!type.isValid() || type.getNameView().empty()) {
            return;
        }
        std::string const metaClass = type.getMetaClass().getName();
        if (metaClass == "Association" || metaClass == "Extension") {
            return; // nobody means one by the name of a type
        }
        Named & named = fTypes[std::string(type.getNameView())];
        if (named.count++ == 0) {
            named.first = Type(writable(object));
        }
        if (!named.primitive.isValid() && metaClass == "PrimitiveType") {
            named.primitive = Type(writable(object));
        }
    }

    /// The tool has such types outside of its models, but lists them in the file. Made here is what is used of them, in
    /// a package of the tool's name for them: so an attribute has the type that its user has chosen, whoever asks for
    /// it, and the model needs no library for that, nor one that all languages would have in common. Ids are those of
    /// the file.
    [[nodiscard]] Type makePrimitive(std::string const & name) {
        auto const listed = fIds.find(name);
        if (listed == fIds.end() && !isPrimitive(name)) {
            return Type();
        }
        Package const package = packageOfPrimitives();
        Type const type = package.isValid() ? make<Type>("PrimitiveType") : Type();
        if (type.isValid()) {
            type.setName(String(name));
            package.getPackagedElements().push_back(PackageableElement(type));
            if (listed != fIds.end() && !fFile.find(listed->second).isValid()) {
                fFile.enter(type, listed->second);
            }
        }
        return type;
    }

    [[nodiscard]] Package packageOfPrimitives() {
        Package const known(fFile.find(kPrimitiveTypesId));
        Package const whole(fFile.model());
        if (known.isValid() || !whole.isValid()) {
            return known;
        }
        Package const made = make<Package>("Package");
        if (made.isValid()) {
            made.setName(String(kPrimitiveTypes));
            whole.getPackagedElements().push_back(PackageableElement(made));
            fFile.enter(made, kPrimitiveTypesId);
        }
        return made;
    }

    ReadFile & fFile;
    std::vector<ImmutableClassObject> fObjects;
    std::unordered_map<NSInterface::ObjectIntf const *, std::unordered_set<std::string>> fTexts; ///< by element
    std::unordered_map<std::string, std::string> fIds; ///< of listed primitive types, by name
    std::unordered_map<std::string, Named> fTypes;
};

} // namespace

ToolNoteReadTransforms::ToolNoteReadTransforms() {
    auto const note = [this](Context const & tool) {
        noteTool(tool.getFirstValue());
        return ContextSequence(tool);
    };
    addTransform(Pattern().parentRole(XmiConstants::XMI_NS_URI, "Documentation").role("exporter"), note);
    addTransform(Pattern().parentRole(XmiConstants::XMI_NS_URI, "Extension").role("extender"), note);
    setOnRead([this](ReadFile & file) {
        if (fHasParadigm) {
            Annotator(file).readBlocksInElements();
        }
        if (fHasArchitect) {
            Annotator(file).readBlocksBeside();
        }
    });
}

void ToolNoteReadTransforms::noteTool(std::string const & name) {
    fHasArchitect = fHasArchitect || isEnterpriseArchitect(name);
    fHasParadigm = fHasParadigm || isVisualParadigm(name);
}

} // namespace ZEL::Interchange
