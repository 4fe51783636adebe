#pragma once

#include <ZEL/Export.h>
#include <ZEL/base/CooperativeVisitor.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/metamodel/PropertyDescriptor.h>

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace HASP {
class TypeInfo;
} // namespace HASP

namespace ZEL {

class FactoryObject;
class Model;

namespace NSInterface {
class ClassObjectIntf;
class ObjectIntf;
} // namespace NSInterface

/// What the generator knows of a metamodel, as constant tables: the source of the bootstrap, of reflective access and
/// of the operations that treat all properties of an object alike (containment, copies, deletion).
namespace internal {

class BodyCore;
class ClassRuntime;
class FieldValue;
class PersistentSequence;
class StateCore;
struct ClassDescriptor;

/// One stored property of class type in the states of a concrete class.
struct FieldDescriptor {
    PropertyDescriptor const * property;
    CooperativeVisitor::internal::ClassInfo const & (*elementInfo)(); ///< of the property's type
    /// The field of a multi-valued property, null otherwise.
    PersistentSequence const & (*sequence)(StateCore const & state);
    /// The same to be written: a field that few objects use is made by it.
    PersistentSequence & (*writableSequence)(StateCore & state);
    /// The field of a single-valued property, null otherwise.
    ObjectIntf * (*get)(StateCore const & state);
    /// Stores a pointer that the caller knows to be null or of the property's type.
    void (*set)(StateCore & state, ObjectIntf * value);
};

/// One stored single value of a data type in the states of a concrete class.
struct ValueDescriptor {
    PropertyDescriptor const * property;
    FieldValue (*get)(StateCore const & state);
};

enum class BuiltAs : std::uint8_t { Class, Stereotype, Model };

/// How much it matters that an object does not satisfy a rule.
enum class Severity : std::uint8_t { Error, Warning, Note };

/// One rule of an application about the instances of a class and of its subclasses, as its definition states it.
struct ConstraintDescriptor {
    char const * name;
    Severity severity;
    char const * text; ///< what holds of an instance that satisfies it
    /// Whether an instance satisfies it as it is seen in the deviant: a function written by hand.
    bool (*isSatisfied)(NSInterface::ClassObjectIntf const & object, Deviant deviant);
};

/// One metamodel class.
struct ClassDescriptor {
    char const * name;
    char const * orcaName;          ///< "ZEL.X"
    char const * immutableOrcaName; ///< "ZEL.ImmutableX"
    CooperativeVisitor::internal::ClassInfo const & (*classInfo)();
    bool isAbstract;
    BuiltAs builtAs;
    std::span<ClassDescriptor const * const> superClasses;
    std::span<PropertyDescriptor const> ownProperties;
    /// The inherited properties of which the class has a clone, in their order.
    std::span<PropertyDescriptor const * const> clones;
    /// The parts that follow are null, empty or zero for an abstract class.
    std::span<FieldDescriptor const> fields; ///< own first, then in the order of the clones
    /// In the same order. Values of hand-written types are not among them.
    std::span<ValueDescriptor const> values;
    BodyCore * (*createBody)();
    StateCore * (*createState)();
    /// Copies all fields; both states are of this class.
    void (*assignState)(StateCore & target, StateCore const & source);
    std::size_t bodySize;
    std::size_t stateSize;
    ClassRuntime * runtime; ///< what is known of the class once its metamodel is built
    /// Its own; those of its superclasses hold for it as well.
    std::span<ConstraintDescriptor const> constraints = {};

    [[nodiscard]] bool isKindOf(ClassDescriptor const & other) const noexcept;
};

/// One enumeration; a literal's index is the value of its kind.
struct EnumerationDescriptor {
    char const * name;
    char const * registeredName; ///< "ZEL.VisibilityKind"
    std::span<char const * const> literals;
    HASP::TypeInfo const & (*typeInfo)();
};

/// One primitive type.
struct PrimitiveDescriptor {
    char const * name;
    char const * registeredName;
    HASP::TypeInfo (*typeInfo)();
};

/// One metamodel: what the bootstrap and the registration of an application's metamodel walk.
struct MetaModelDescriptor {
    char const * prefix;                          ///< the XML prefix, and the first part of registered names: "ZEL"
    char const * topPackage;                      ///< name of the package that holds the classes
    std::span<char const * const> uris;           ///< the first is the URI of the model and of its top package
    std::span<char const * const> additionalUris; ///< bound in the factory and metamodel registries only
    /// Around the association's name in the keys of the ends that associations own: prefix, name, "::", infix, name.
    std::string_view ownedEndKeyPrefix;
    std::string_view ownedEndKeyInfix;
    char const * uuidBase; ///< constant, so that references into the metamodel are the same in every process
    /// Names of classes, enumerations and primitive types in the order in which their objects are created.
    std::span<char const * const> declareOrder;
    std::span<ClassDescriptor const * const> classes; ///< in declare order
    std::span<EnumerationDescriptor const> enumerations;
    std::span<PrimitiveDescriptor const> primitives;
    ClassDescriptor const * modelClass; ///< null for a profile
    ClassDescriptor const * factoryClass;
    Model (*createModel)(); ///< null for a profile
    FactoryObject (*createFactory)(Model model);
};

} // namespace internal
} // namespace ZEL
