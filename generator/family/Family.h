#pragma once

#include "check/Catalogue.h"
#include "load/Signature.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zelgen {

// Everything that is decided about the classes of a metamodel before a line is written. Emitters look things up here
// and never in a definition. All pointers point into one `Family`.

struct Class;
struct Metamodel;
struct Property;

/// A type that a property or an operation names.
struct Type {
    TypeKind kind = TypeKind::Class;
    std::string name; ///< "Comment"
    Metamodel const * home = nullptr;
    Class const * asClass = nullptr;      ///< null for data types
    std::vector<std::string> literals;    ///< of an enumeration
    std::vector<std::string> enumerators; ///< what C++ calls these
    Mark mark;

    /// "ZEL.Comment".
    [[nodiscard]] std::string qualifiedName() const;
    /// "ZEL::Comment", or "ZEL::ImmutableComment" with `immutable`; data types have only one form.
    [[nodiscard]] std::string cppName(bool immutable = false) const;
};

/// Which operations a property has.
enum class Form {
    Flag,          ///< required Boolean `isFoo`
    Value,         ///< single value
    RequiredValue, ///< the same without a has-flag
    Reference,     ///< single, of class type
    Many,
};

/// Where values are stored, and how derived ones are made.
enum class Making {
    Field,         ///< in the fields of the states
    Core,          ///< in the part that all states have
    Body,          ///< in the body
    Container,     ///< the object's container, narrowed to the type
    Hand,          ///< derived, its getter is written by hand
    Unimplemented, ///< derived, throws; single values may have a fixed result
    Filter,        ///< derived, the values of another property that are of this property's type
    Union,         ///< derived, the values of other properties one after the other; each class may name its own
    Containees,    ///< derived, the contained objects that are of this property's type
    Extension,     ///< the object's instances of a stereotype
};

enum class FieldKind { Flag, Bits, Int32, Unsigned32, Double, Single, Text, Value, Pointer, Pointers, Texts };

enum class OtherEnd { None, Property, Container };

struct Property {
    Class const * owner = nullptr;
    Mark mark;
    std::string name;    ///< its model name
    std::string base;    ///< the base of its C++ names: the model name, or a prefixed one
    std::string capital; ///< "OwnedComment"
    std::string plural;  ///< "OwnedComments"
    Type const * type = nullptr;
    std::int32_t lower = 0;
    bool many = false;
    std::uint32_t upper = 1; ///< 0xFFFFFFFF for unlimited
    bool isReadOnly = false;
    bool isDerived = false;
    bool isComposite = false;
    bool isOrdered = false;
    bool isUnique = true;
    std::string defaultValue;
    std::string persistence; ///< "default", "transient", "extension"
    std::string association;
    std::string ownedEnd;
    Property const * opposite = nullptr;
    std::string key; ///< "ZEL.X::ZEL.X.p" or an irregular one
    std::string description;
    bool isHidden = false; ///< has operations and a field, but is not a property of the metamodel
    bool isSeldom = false; ///< few objects have a value: its field is apart from the others

    Form form = Form::Value;
    Making making = Making::Field;
    FieldKind field = FieldKind::Value;
    OtherEnd otherEnd = OtherEnd::None;
    /// Whether there is a has-flag: the default of the metamodel differs from that of the type, so it cannot mean "no
    /// value".
    bool keepsHas = false;
    std::string fixed;                       ///< result of an unimplemented single value, empty for none
    Property const * filtered = nullptr;     ///< of `Making::Filter`
    Class const * stereotype = nullptr;      ///< of `Making::Extension`
    std::vector<Property const *> redefined; ///< inherited properties that this one replaces

    [[nodiscard]] std::string qualifiedName() const;
    /// The operation that reads a single value, "isFoo" or "getFoo"; for many, the sequence that updates the other
    /// ends.
    [[nodiscard]] std::string getter() const;
    /// Whether both operations read the same sequence, since there is no other end to update.
    [[nodiscard]] bool isRawOnly() const { return otherEnd == OtherEnd::None; }
    [[nodiscard]] bool isField() const { return making == Making::Field; }
    /// Whether there is one text in the fields, of which a view can be read.
    [[nodiscard]] bool isTextField() const { return isField() && field == FieldKind::Text; }
    /// The operation that reads the view of a text field, "getFooView".
    [[nodiscard]] std::string viewGetter() const { return getter() + "View"; }
    /// The number of bits of a flag or an enumeration in the fields.
    [[nodiscard]] unsigned int bits() const;
};

/// What a derived property shows on the instances of a class.
struct View {
    Property const * property = nullptr;
    std::vector<Property const *> parts;
};

struct Operation {
    struct Parameter {
        Type const * type = nullptr;
        SignatureType form;
        std::string name;
    };
    Type const * result = nullptr; ///< null for void and `Deviant`
    SignatureType resultForm;
    std::string name;
    std::vector<Parameter> parameters;
    bool isConst = false;
    bool overrides = false;
    OperationBody body = OperationBody::Hand;

    /// Whether both have the same parameters, and both or neither are const.
    [[nodiscard]] bool takesTheSame(Operation const & other) const;
    /// Whether one of the two, in a subclass, overrides the other.
    [[nodiscard]] bool isCalledAs(Operation const & other) const { return name == other.name && takesTheSame(other); }
};

struct Constraint {
    std::string name;
    std::string severity; ///< "Error"
    std::string text;
    std::string function; ///< "satisfiesHasParts"
};

struct Class {
    Type const * type = nullptr;
    Metamodel const * home = nullptr;
    Mark mark;
    std::string name;
    bool isAbstract = false;
    bool builtAsStereotype = false;
    bool hasGeneratedInterface = true;
    bool hasGeneratedHandles = true;
    bool isModel = false;        ///< derives from `ZEL.Model`
    bool isNamedElement = false; ///< derives from `ZEL.NamedElement`
    std::vector<Class const *> superclasses;
    std::vector<Class const *> ancestors;    ///< depth first, left to right, each once; without the class itself
    std::vector<Property> own;               ///< in the order of the definition, hidden ones included
    std::vector<Property const *> clones;    ///< inherited ones, as the metamodel shows them
    std::vector<Property const *> inherited; ///< all of them, including redefined and hidden ones
    /// Inherited properties, each with the property whose operations replace its own in this class: those that an own
    /// property redefines, and those that repeat the name of one further left.
    std::vector<std::pair<Property const *, Property const *>> redefinitions;
    std::vector<Property const *> fields; ///< stored in the states of instances: own, then inherited in order of clones
    std::vector<View> views;
    std::vector<Operation> operations;
    std::vector<Constraint> constraints;

    [[nodiscard]] std::string qualifiedName() const;
    [[nodiscard]] bool isKindOf(Class const & other) const;
    [[nodiscard]] bool isFactory() const;
    /// The class itself, then its ancestors.
    [[nodiscard]] std::vector<Class const *> line() const;
    [[nodiscard]] std::vector<Property const *> reflectiveOwn() const;
};

/// A URI: `base` names a constant of the library, or is empty; `path` follows it.
struct Uri {
    std::string base;
    std::string path;
};

struct Metamodel {
    std::vector<std::string> files; ///< names of the definition file and its parts, without folders
    std::string prefix;
    std::string cppNamespace;
    std::string includeDirectory;
    std::string topPackage;
    std::vector<Uri> uris; ///< the first is that of the model
    std::vector<Uri> alsoRegistered;
    std::string uuid; ///< of the metamodel's model; empty for one made from the prefix
    std::vector<std::string> ownedEndKeys;
    Class const * modelClass = nullptr;
    Class const * factoryClass = nullptr;
    std::vector<std::unique_ptr<Type>> types; ///< in declare order
    std::vector<std::unique_ptr<Class>> classes;
    std::vector<Metamodel const *> dependencies;

    [[nodiscard]] bool isBuiltIn() const { return prefix == "ZEL"; }
};

class Family {
public:
    /// `definitions` must have passed the check. The first is the one to generate; it builds on the others.
    explicit Family(std::vector<Definition const *> const & definitions);

    [[nodiscard]] Metamodel const & main() const { return *fMetamodels.front(); }
    /// The class of a name such as "ZEL.Comment"; null if there is none.
    [[nodiscard]] Class const * findClass(std::string_view qualifiedName) const;

private:
    std::vector<std::unique_ptr<Metamodel>> fMetamodels;
};

} // namespace zelgen
