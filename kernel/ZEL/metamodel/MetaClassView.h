#pragma once

#include <ZEL/base/OpenTable.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/PersistenceKind.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/Type.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
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

    // --- values read where they lie --------------------------------------------------------------------------------
    // Nothing is allocated, and but for links nothing is counted. Read are single values of properties for which
    // `isInPlace` holds, of instances of the class that the property was found in; those of another class that has the
    // same property cost a search more.
    // Each throws "Cannot access NULL ref. Use isValid() before calling methods" for a null handle, and what a typed
    // get throws for an object that cannot be read. With the names of both it throws if the object has no such
    // property, or the property no value in place, or one of another type.

    /// Whether its values are stored one in each object, as values of a built-in primitive type, literals or links.
    [[nodiscard]] bool isInPlace() const noexcept { return value != nullptr || (links != nullptr && !isMany); }
    /// A value of a data type, with the word whether there is one.
    template <HandleOf<ClassObjectIntf> H> [[nodiscard]] FieldValue valueOf(H const & object) const {
        return valueOf(*object.getImplementation(), object.getDeviant());
    }
    /// Empty if there is none. Valid until the next write to the model, or its end.
    template <HandleOf<ClassObjectIntf> H> [[nodiscard]] std::string_view textOf(H const & object) const {
        return textOf(*object.getImplementation(), object.getDeviant());
    }
    /// As the typed get returns it, also if there is none.
    template <HandleOf<ClassObjectIntf> H> [[nodiscard]] bool booleanOf(H const & object) const {
        return booleanOf(*object.getImplementation(), object.getDeviant());
    }
    /// As the typed get returns it, also if there is none.
    template <HandleOf<ClassObjectIntf> H> [[nodiscard]] std::int32_t integerOf(H const & object) const {
        return integerOf(*object.getImplementation(), object.getDeviant());
    }
    /// A null handle if there is none.
    template <HandleOf<ClassObjectIntf> H> [[nodiscard]] ImmutableObject linkOf(H const & object) const {
        return linkOf(*object.getImplementation(), object.getDeviant());
    }
    // The same without a handle.
    [[nodiscard]] FieldValue valueOf(ClassObjectIntf const & object, Deviant deviant) const;
    [[nodiscard]] std::string_view textOf(ClassObjectIntf const & object, Deviant deviant) const;
    [[nodiscard]] bool booleanOf(ClassObjectIntf const & object, Deviant deviant) const;
    [[nodiscard]] std::int32_t integerOf(ClassObjectIntf const & object, Deviant deviant) const;
    [[nodiscard]] ImmutableObject linkOf(ClassObjectIntf const & object, Deviant deviant) const;
    /// The stored links of a multi-valued property for which `links` is not null, in a state of the view's class: the
    /// addresses of objects as handles have them. Valid until the next write to the object.
    [[nodiscard]] PersistentSequence const & linksIn(StateCore const & state) const noexcept;

    // Where the values lie in the states of instances of the view's class: the roads without boxes. Both are null if
    // the values are reached by `storage` alone: derived ones, those of hand-written types, and those of a property
    // that has been given a storage of another kind.
    PropertyDescriptor const * descriptor = nullptr; ///< null as well in the last case
    FieldDescriptor const * links = nullptr;         ///< of class type
    ValueDescriptor const * value = nullptr;         ///< a single value of a data type
    ClassDescriptor const * instances = nullptr;     ///< the view's class
    /// Boxes a value that is set as the generated get does, without a count, which the first handle takes. Null where
    /// only the type knows how.
    NSInterface::ValueObjectIntf * (*box)(FieldValue const & value) = nullptr;

    /// Whether it identifies the object in its model rather than saying anything of it.
    [[nodiscard]] bool isIdentity() const noexcept { return role == Role::Id || role == Role::Model; }
    /// Whether its values are contained by the object and stored.
    [[nodiscard]] bool isPart() const noexcept { return isComposite && !isDerived; }

private:
    [[nodiscard]] FieldValue read(ClassObjectIntf const & object, Deviant deviant) const;
    [[nodiscard]] FieldValue read(ClassObjectIntf const & object, Deviant deviant, FieldValue::Form form,
                                  char const * expected) const;
    /// The same property in the view of the object's class. Throws if that has none.
    [[nodiscard]] PropertyView const & inClassOf(ClassObjectIntf const & object, Deviant deviant) const;
    [[noreturn]] void raiseNotInPlace(ClassObjectIntf const & object, Deviant deviant, char const * expected) const;
};

/// What a metamodel says about one class, with all its properties in their order: its own first, then the inherited
/// ones.
///
/// Made at the first question, and kept until a metamodel that any view was read from is written to, or ends. Whoever
/// holds a view may go on reading it; it describes the class as it was then.
///
/// The quick road for who reads objects of any class: a view of the class, its properties found by name once or each
/// time, and values read where they lie.
///
///     PropertyView const * const name = MetaClassView::ofInstance(object).find("name");
///     std::string_view const text = name == nullptr ? std::string_view() : name->textOf(object);
class ZEL_API MetaClassView {
public:
    /// Throws "An Internal Error has occurred" for an invalid class.
    [[nodiscard]] static std::shared_ptr<MetaClassView const> of(ImmutableClass const & metaClass);
    /// Of the class of all objects with this descriptor.
    [[nodiscard]] static std::shared_ptr<MetaClassView const> of(ClassDescriptor const & descriptor);
    /// Of the object's class. Costs a few reads, and is good as long as the view is kept; of a class that is being
    /// changed, until the next such call or change. Throws as all operations do on a null handle.
    template <HandleOf<ClassObjectIntf> H> [[nodiscard]] static MetaClassView const & ofInstance(H const & object) {
        return ofInstance(*object.getImplementation());
    }
    /// Throws "An Internal Error has occurred" for a state.
    [[nodiscard]] static MetaClassView const & ofInstance(ClassObjectIntf const & object);
    /// The view that is kept of the class of all objects with this descriptor, which is made if there is none yet. Null
    /// for a class that is being changed, and for one that cannot be read as a whole.
    [[nodiscard]] static MetaClassView const * kept(ClassDescriptor const & descriptor);
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
    /// The property that `property` is, or has the generated operations of `operations`. Null if there is none.
    [[nodiscard]] PropertyView const * find(ImmutableProperty const & property) const noexcept {
        ObjectIntf const * const body = property.getImplementationWithoutAssert(); // the address that all handles have
        PropertyView const * const found = findAt(body);
        return found != nullptr && found->property.getDeviant() == property.getDeviant() ? found : nullptr;
    }
    [[nodiscard]] PropertyView const * find(Generic::PropertyToSequenceMethods const * operations) const noexcept {
        return findAt(operations);
    }
    /// The first property with this role, null if there is none.
    [[nodiscard]] PropertyView const * find(PropertyView::Role role) const noexcept;
    /// Whether the class is `type` or has it among its superclasses at any distance. False for null. Logarithmic.
    [[nodiscard]] bool inheritsFrom(ObjectIntf const * type) const noexcept;
    [[nodiscard]] bool isModel() const noexcept { return fIsModel; }
    /// The property by which a reader knows an object, invalid if there is none.
    [[nodiscard]] ImmutableProperty nameProperty() const;

private:
    /// A property by the address of its body, or of its generated operations.
    struct Addressed {
        void const * address = nullptr;
        PropertyView const * property = nullptr;
        explicit operator bool() const noexcept { return address != nullptr; }
    };

    /// That this is the view that is kept of it, by which its objects find it at once.
    void tellClass() const noexcept;
    /// Their models tell when they change.
    void noteSources() const;
    void enter(PropertyView const & property);
    void enter(void const * address, PropertyView const & property);
    [[nodiscard]] static std::uint64_t homeOf(void const * address) noexcept {
        return mixed(reinterpret_cast<std::uintptr_t>(address)) >> 32;
    }
    [[nodiscard]] PropertyView const * findAt(void const * address) const noexcept {
        if (fByAddress.size() == 0) {
            return nullptr;
        }
        return fByAddress.find(homeOf(address), [address](Addressed const & slot) { return slot.address == address; })
            .property;
    }

    ImmutableClass fMetaClass;
    std::string fName;
    ClassDescriptor const * fDescriptor;
    std::vector<PropertyView> fProperties;
    OpenTable<PropertyView const *> fByName;
    OpenTable<Addressed> fByAddress;
    std::vector<ObjectIntf const *> fSuperClasses; ///< with the class itself; sorted
    bool fIsModel;
};

/// The class and all above it, each once: a walk upwards, by levels.
[[nodiscard]] ZEL_API std::vector<ImmutableClass> withSuperClasses(ImmutableClass const & metaClass);

/// Whether the class is, or inherits from, that of models or that of factories, whose objects are made by registries.
[[nodiscard]] ZEL_API bool isModelOrFactory(ImmutableClass const & metaClass);

} // namespace ZEL::internal

namespace ZEL {

using internal::FieldValue;
using internal::MetaClassView;
using internal::PropertyView;

} // namespace ZEL
