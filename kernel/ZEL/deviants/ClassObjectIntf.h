#pragma once

#include <ZEL/deviants/ObjectIntf.h>

#include <string>
#include <type_traits>

namespace ZEL {

class Boolean;
class ClassObject;
class ImmutableClass;
class ImmutableClassObject;
class ImmutableObject;
class ImmutableProperty;
class Integer;
class Model;
class StereotypeObject;
template <class T> class ImmutableSequence;
template <class T> class Sequence;

namespace NSInterface {

/// Interface of all instances of metaclasses: reflective access, identity, containment. `ClassObjectOperations`, higher
/// up, implements it for all of them.
///
/// Among the operations on an association end, `setP` and `removeP` keep both ends in step; the `Only` and
/// `WithoutAssociation` forms touch this end alone.
class ZEL_API ClassObjectIntf : public virtual ObjectIntf {
public:
    static CooperativeVisitor::internal::ClassInfo const & classInfo();
    /// The part of an object of a derived interface that is of this one; null for null. Nothing is checked at run
    /// time: `cast` is for an object of which only a base is known.
    static ClassObjectIntf * upcast_helper(ClassObjectIntf * object) noexcept { return object; }
    static ClassObjectIntf const * upcast_helper(ClassObjectIntf const * object) noexcept { return object; }

    using ObjectIntf::getMetaType;
    [[nodiscard]] virtual ImmutableClass getMetaClass(Deviant deviant) const = 0;
    /// A copy of this object and all it contains in the model that `target` is, or belongs to; unparented there.
    virtual ClassObject clone(Deviant deviant, ClassObject const & target) = 0;

    // --- reflective access -----------------------------------------------------------------------------------------
    // An invalid property, and a name that the object's class does not have, throw "Trying to get invalid property!" in
    // the reading forms and "Trying to set invalid property!" in all others.
    /// All values; a single-valued property returns a view of zero or one element.
    [[nodiscard]] virtual Sequence<Object> get(Deviant deviant, ImmutableProperty const & property) = 0;
    [[nodiscard]] virtual Sequence<Object> get(Deviant deviant, String const & name) = 0;
    [[nodiscard]] virtual ImmutableSequence<ImmutableObject> get(Deviant deviant,
                                                                 ImmutableProperty const & property) const = 0;
    [[nodiscard]] virtual ImmutableSequence<ImmutableObject> get(Deviant deviant, String const & name) const = 0;
    /// The value, or the first of many; an invalid handle if there is none.
    [[nodiscard]] virtual Object getOne(Deviant deviant, ImmutableProperty const & property) = 0;
    [[nodiscard]] virtual Object getOne(Deviant deviant, String const & name) = 0;
    [[nodiscard]] virtual ImmutableObject getOne(Deviant deviant, ImmutableProperty const & property) const = 0;
    [[nodiscard]] virtual ImmutableObject getOne(Deviant deviant, String const & name) const = 0;
    [[nodiscard]] virtual Boolean has(Deviant deviant, ImmutableProperty const & property) const = 0;
    [[nodiscard]] virtual Boolean has(Deviant deviant, String const & name) const = 0;
    /// Sets a single-valued property, appends to a multi-valued one.
    virtual void setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value) = 0;
    virtual void setOrAdd(Deviant deviant, String const & name, Object const & value) = 0;
    virtual void setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) = 0;
    virtual void setOrAddOnly(Deviant deviant, String const & name, Object const & value) = 0;
    /// Removes every occurrence of this value.
    virtual void remove(Deviant deviant, ImmutableProperty const & property, Object const & value) = 0;
    virtual void remove(Deviant deviant, String const & name, Object const & value) = 0;
    virtual void removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) = 0;
    virtual void removeOnly(Deviant deviant, String const & name, Object const & value) = 0;
    /// Removes the value of a single-valued property, the first of a multi-valued one.
    virtual void removeOne(Deviant deviant, ImmutableProperty const & property) = 0;
    virtual void removeOne(Deviant deviant, String const & name) = 0;
    virtual void removeOneOnly(Deviant deviant, ImmutableProperty const & property) = 0;
    virtual void removeOneOnly(Deviant deviant, String const & name) = 0;

    // --- identity --------------------------------------------------------------------------------------------------
    /// The number of the object in its model, the same in all deviants; -1 until assigned.
    [[nodiscard]] virtual Boolean hasId(Deviant deviant) const = 0;
    virtual void removeId(Deviant deviant) = 0;
    virtual void setId(Deviant deviant, Integer const & id) = 0;
    [[nodiscard]] virtual Integer getId(Deviant deviant) const = 0;

    // --- containment -----------------------------------------------------------------------------------------------
    /// The objects in all composite properties, in the order of the properties. A pushed element goes to the first
    /// property that accepts its class; none throws "cannot insert value into the combined sequence".
    [[nodiscard]] virtual Sequence<ClassObject> getContaineeZELs(Deviant deviant) const = 0;
    [[nodiscard]] virtual Sequence<ClassObject> getContaineeZELsWithoutAssociation(Deviant deviant) const = 0;
    [[nodiscard]] virtual Sequence<StereotypeObject> getAppliedStereotypeInstances(Deviant deviant) const = 0;
    [[nodiscard]] virtual Sequence<StereotypeObject>
    getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const = 0;

    [[nodiscard]] virtual Boolean hasModelZEL(Deviant deviant) const = 0;
    virtual void removeModelZEL(Deviant deviant) = 0;
    virtual void setModelZEL(Deviant deviant, Model const & model) = 0;
    [[nodiscard]] virtual Model getModelZEL(Deviant deviant) const = 0;
    virtual void removeOnlyModelZEL(Deviant deviant) = 0;
    virtual void setOnlyModelZEL(Deviant deviant, Model const & model) = 0;

    [[nodiscard]] virtual Boolean hasContainerZEL(Deviant deviant) const = 0;
    /// Puts the object among the `unparented` of its model.
    virtual void removeContainerZEL(Deviant deviant) = 0;
    /// Throws "Cyclic composition", "Cross-model composition" or "Parenting of Model" before anything is written.
    virtual void setContainerZEL(Deviant deviant, ClassObject const & container) = 0;
    [[nodiscard]] virtual ClassObject getContainerZEL(Deviant deviant) const = 0;
    virtual void removeOnlyContainerZEL(Deviant deviant) = 0;
    virtual void setOnlyContainerZEL(Deviant deviant, ClassObject const & container) = 0;

    [[nodiscard]] virtual Boolean hasRootModel(Deviant deviant) const = 0;
    virtual void removeRootModel(Deviant deviant) = 0;
    virtual void setRootModel(Deviant deviant, Model const & model) = 0;
    [[nodiscard]] virtual Model getRootModel(Deviant deviant) const = 0;
    virtual void removeOnlyRootModel(Deviant deviant) = 0;
    virtual void setOnlyRootModel(Deviant deviant, Model const & model) = 0;

    /// The model's `siid`, an underscore and the id.
    [[nodiscard]] virtual Boolean hasSiid(Deviant deviant) const = 0;
    virtual void removeSiid(Deviant deviant) = 0;
    virtual void setSiid(Deviant deviant, String const & siid) = 0;
    [[nodiscard]] virtual String getSiid(Deviant deviant) const = 0;

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    /// The container's body in the deviant, null if there is none. Throws as every read does.
    [[nodiscard]] virtual ClassObjectIntf const * internal_container(Deviant) const { return nullptr; }
    /// Puts `state` in the root deviant and returns what stood there, which then belongs to the caller. A body that has
    /// no such place returns `state`; one with an `internal_body` has.
    [[nodiscard]] virtual ObjectIntf * internal_exchangeRootState(ObjectIntf * state) noexcept { return state; }
    /// Called for every element that enters a stored property. An element of another model must be kept alive: the
    /// storage itself counts none of its elements.
    virtual void internal_noteElement(ObjectIntf *) const {}
    /// "'ZEL.Comment' [id = 2 ]": class and number, as all texts name an object. Throws if the class is not known and
    /// `orElse` says so.
    enum class WithoutClass { Raises, ByTypeOfBody };
    [[nodiscard]] virtual std::string internal_describe(Deviant deviant, WithoutClass orElse) const = 0;
};

template <class Copy> Copy ObjectIntf::clone(Deviant deviant, Copy const & target) {
    auto * const object = static_cast<ClassObjectIntf *>(cast(ClassObjectIntf::classInfo()));
    return object == nullptr ? Copy() : object->clone(deviant, target);
}

template <class Class> Class ObjectIntf::getMetaClass(Deviant deviant) const {
    // Dependent, so that the handle's class need be known only where this is made.
    using Interface = std::enable_if_t<!std::is_void_v<Class>, ClassObjectIntf>;
    auto const * const object = static_cast<Interface const *>(cast(Interface::classInfo()));
    return object == nullptr ? Class() : object->getMetaClass(deviant);
}

} // namespace NSInterface
} // namespace ZEL
