#pragma once

#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/PersistenceKind.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/Type.h>

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace ZEL::internal {

class PersistentSequence;
class StateCore;
struct ClassDescriptor;
struct FieldDescriptor;
struct PropertyDescriptor;
struct ValueDescriptor;

/// What a metamodel says about one property, read from it once. Here alone properties are known by their names.
struct ZEL_API PropertyView {
    /// What the kernel itself takes the property for.
    enum class Role : std::uint8_t {
        None,
        Name,                ///< by which a reader knows the object
        Id,                  ///< its number
        Uri,                 ///< of a model
        Model,               ///< to which it belongs
        Unparented,          ///< the objects of a model that have no container
        StereotypeInstances, ///< applied to it
    };

    [[nodiscard]] static Role roleOf(std::string_view name) noexcept;

    explicit PropertyView(ImmutableProperty const & handle);

    ImmutableProperty property;
    PropertyStorage storage;
    ImmutableType type;
    ObjectIntf const * typeBody; ///< of `type`
    std::string name;
    std::string defaultText;
    Role role;
    PersistenceKind persistence;
    bool hasDefault;
    bool isMany; ///< upper bound above 1
    bool isReadOnly;
    bool isComposite;
    bool isDerived;
    bool isDataType;    ///< of a data type, primitive types and enumerations among them
    bool isOfModel;     ///< its values are models or factories, which registries make
    bool hasOpposite;   ///< a property of another class
    bool isContainer;   ///< its value is the object's container: the opposite is composite
    bool isOfContainer; ///< the same, or a derived view of that: it follows from the other end

    // Where the values lie in the states of instances of the view's class: the roads without boxes. Both are null if
    // the values are reached by `storage` alone: derived ones, those of hand-written types, and those of a property
    // that has been given a storage of another kind.
    PropertyDescriptor const * descriptor = nullptr; ///< null as well in the last case
    FieldDescriptor const * links = nullptr;         ///< of class type
    ValueDescriptor const * value = nullptr;         ///< a single value of a data type

    /// Whether it identifies the object in its model rather than saying anything of it.
    [[nodiscard]] bool isIdentity() const noexcept { return role == Role::Id || role == Role::Model; }
    /// Whether its values are contained by the object and stored.
    [[nodiscard]] bool isPart() const noexcept { return isComposite && !isDerived; }
};

/// What a metamodel says about one class, with all its properties in their order: its own first, then the inherited
/// ones.
///
/// Made at the first question, and kept until a metamodel that any view was read from is written to, or ends. Whoever
/// holds a view may go on reading it; it describes the class as it was then.
class ZEL_API MetaClassView {
public:
    /// Throws "An Internal Error has occurred" for an invalid class.
    [[nodiscard]] static std::shared_ptr<MetaClassView const> of(ImmutableClass const & metaClass);
    /// Of the class of all objects with this descriptor.
    [[nodiscard]] static std::shared_ptr<MetaClassView const> of(ClassDescriptor const & descriptor);
    /// Forgets all views that are kept. Called with each change of a metamodel that has been looked at.
    static void forget() noexcept;

    explicit MetaClassView(ImmutableClass const & metaClass);
    MetaClassView(MetaClassView const &) = delete;
    MetaClassView & operator=(MetaClassView const &) = delete;

    [[nodiscard]] ImmutableClass const & metaClass() const noexcept { return fMetaClass; }
    [[nodiscard]] std::string const & name() const noexcept { return fName; }
    /// Of its instances; null for a class that none can be made of.
    [[nodiscard]] ClassDescriptor const * descriptor() const noexcept { return fDescriptor; }
    [[nodiscard]] std::vector<PropertyView> const & properties() const noexcept { return fProperties; }
    /// The first property with this name, null if there is none.
    [[nodiscard]] PropertyView const * find(std::string_view name) const noexcept;
    /// The first property with this role, null if there is none.
    [[nodiscard]] PropertyView const * find(PropertyView::Role role) const noexcept;
    /// Whether the class is `type` or has it among its superclasses at any distance. False for null. Logarithmic.
    [[nodiscard]] bool inheritsFrom(ObjectIntf const * type) const noexcept;
    [[nodiscard]] bool isModel() const noexcept { return fIsModel; }
    /// The property by which a reader knows an object, invalid if there is none.
    [[nodiscard]] ImmutableProperty nameProperty() const;

private:
    ImmutableClass fMetaClass;
    std::string fName;
    ClassDescriptor const * fDescriptor;
    std::vector<PropertyView> fProperties;
    std::unordered_map<std::string_view, PropertyView const *> fByName;
    std::vector<ObjectIntf const *> fSuperClasses; ///< with the class itself; sorted
    bool fIsModel;
};

/// The class and all above it, each once: a walk upwards, by levels.
[[nodiscard]] ZEL_API std::vector<ImmutableClass> withSuperClasses(ImmutableClass const & metaClass);

/// Whether the class is, or inherits from, that of models or that of factories, whose objects are made by registries.
[[nodiscard]] ZEL_API bool isModelOrFactory(ImmutableClass const & metaClass);

} // namespace ZEL::internal
