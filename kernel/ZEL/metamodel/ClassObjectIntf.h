#pragma once

#include <ZEL/metamodel/ObjectIntf.h>

namespace ZEL {

class Boolean;
class ImmutableClassObject;
class ImmutableObject;
class ImmutableProperty;
class Integer;
class Model;
class StereotypeObject;
namespace internal {
struct ClassDescriptor;
struct PropertyDescriptor;
} // namespace internal
template <class T> class ImmutableSequence;
template <class T> class Sequence;

namespace NSInterface {

/// Interface of all instances of metaclasses: reflective access, identity, containment.
///
/// Of the operations on an association end, `setP` and `removeP` keep both ends in step; the `Only` and
/// `WithoutAssociation` forms touch this end alone.
class ZEL_API ClassObjectIntf : public virtual ObjectIntf {
public:
    static CooperativeVisitor::internal::ClassInfo const & classInfo();
    /// The part of an object of a derived interface that is of this one; null of null. No check is made at run time: for
    /// an object of which only a base is known there is `cast`.
    static ClassObjectIntf * upcast_helper(ClassObjectIntf * object) noexcept { return object; }
    static ClassObjectIntf const * upcast_helper(ClassObjectIntf const * object) noexcept { return object; }
    static internal::ClassDescriptor const & descriptor() noexcept;
    static internal::PropertyDescriptor const & appliedStereotypeInstanceProperty() noexcept;
    static internal::PropertyDescriptor const & modelZELProperty() noexcept;
    static internal::PropertyDescriptor const & containerZELProperty() noexcept;
    static internal::PropertyDescriptor const & containeeZELProperty() noexcept;
    static internal::PropertyDescriptor const & rootModelProperty() noexcept;
    static internal::PropertyDescriptor const & idProperty() noexcept;
    static internal::PropertyDescriptor const & siidProperty() noexcept;

    // --- reflective access -----------------------------------------------------------------------------------------
    // An invalid property, and a name that the object's class does not have, raise "Trying to get invalid property!" in
    // the reading forms and "Trying to set invalid property!" in all others.
    /// All values; a single-valued property gives a view of zero or one element.
    [[nodiscard]] virtual Sequence<Object> get(Deviant deviant, ImmutableProperty const & property);
    [[nodiscard]] virtual Sequence<Object> get(Deviant deviant, String const & name);
    [[nodiscard]] virtual ImmutableSequence<ImmutableObject> get(Deviant deviant,
                                                                 ImmutableProperty const & property) const;
    [[nodiscard]] virtual ImmutableSequence<ImmutableObject> get(Deviant deviant, String const & name) const;
    /// The value, or the first of many; an invalid handle if there is none.
    [[nodiscard]] virtual Object getOne(Deviant deviant, ImmutableProperty const & property);
    [[nodiscard]] virtual Object getOne(Deviant deviant, String const & name);
    [[nodiscard]] virtual ImmutableObject getOne(Deviant deviant, ImmutableProperty const & property) const;
    [[nodiscard]] virtual ImmutableObject getOne(Deviant deviant, String const & name) const;
    [[nodiscard]] virtual Boolean has(Deviant deviant, ImmutableProperty const & property) const;
    [[nodiscard]] virtual Boolean has(Deviant deviant, String const & name) const;
    /// Sets a single-valued property, appends to a multi-valued one.
    virtual void setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value);
    virtual void setOrAdd(Deviant deviant, String const & name, Object const & value);
    virtual void setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value);
    virtual void setOrAddOnly(Deviant deviant, String const & name, Object const & value);
    /// Removes every occurrence of this value.
    virtual void remove(Deviant deviant, ImmutableProperty const & property, Object const & value);
    virtual void remove(Deviant deviant, String const & name, Object const & value);
    virtual void removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value);
    virtual void removeOnly(Deviant deviant, String const & name, Object const & value);
    /// Removes the value of a single-valued property, the first of a multi-valued one.
    virtual void removeOne(Deviant deviant, ImmutableProperty const & property);
    virtual void removeOne(Deviant deviant, String const & name);
    virtual void removeOneOnly(Deviant deviant, ImmutableProperty const & property);
    virtual void removeOneOnly(Deviant deviant, String const & name);

    // --- identity --------------------------------------------------------------------------------------------------
    /// The number of the object in its model, the same in all deviants; -1 until assigned.
    [[nodiscard]] virtual Boolean hasId(Deviant deviant) const;
    virtual void removeId(Deviant deviant);
    virtual void setId(Deviant deviant, Integer const & id);
    [[nodiscard]] virtual Integer getId(Deviant deviant) const;

    // --- containment -----------------------------------------------------------------------------------------------
    /// The objects in all composite properties, in the order of the properties. A pushed element goes to the first
    /// property that accepts its class; none raises "cannot insert value into the combined sequence".
    [[nodiscard]] virtual Sequence<ClassObject> getContaineeZELs(Deviant deviant) const;
    [[nodiscard]] virtual Sequence<ClassObject> getContaineeZELsWithoutAssociation(Deviant deviant) const;
    [[nodiscard]] virtual Sequence<StereotypeObject> getAppliedStereotypeInstances(Deviant deviant) const;
    [[nodiscard]] virtual Sequence<StereotypeObject>
    getAppliedStereotypeInstancesWithoutAssociation(Deviant deviant) const;

    [[nodiscard]] virtual Boolean hasModelZEL(Deviant deviant) const;
    virtual void removeModelZEL(Deviant deviant);
    virtual void setModelZEL(Deviant deviant, Model const & model);
    [[nodiscard]] virtual Model getModelZEL(Deviant deviant) const;
    virtual void removeOnlyModelZEL(Deviant deviant);
    virtual void setOnlyModelZEL(Deviant deviant, Model const & model);

    [[nodiscard]] virtual Boolean hasContainerZEL(Deviant deviant) const;
    /// Puts the object among the `unparented` of its model.
    virtual void removeContainerZEL(Deviant deviant);
    /// Raises "Cyclic composition", "Cross-model composition" or "Parenting of Model" before anything is written.
    virtual void setContainerZEL(Deviant deviant, ClassObject const & container);
    [[nodiscard]] virtual ClassObject getContainerZEL(Deviant deviant) const;
    virtual void removeOnlyContainerZEL(Deviant deviant);
    virtual void setOnlyContainerZEL(Deviant deviant, ClassObject const & container);

    [[nodiscard]] virtual Boolean hasRootModel(Deviant deviant) const;
    virtual void removeRootModel(Deviant deviant);
    virtual void setRootModel(Deviant deviant, Model const & model);
    [[nodiscard]] virtual Model getRootModel(Deviant deviant) const;
    virtual void removeOnlyRootModel(Deviant deviant);
    virtual void setOnlyRootModel(Deviant deviant, Model const & model);

    /// The model's `siid`, an underscore and the id.
    [[nodiscard]] virtual Boolean hasSiid(Deviant deviant) const;
    virtual void removeSiid(Deviant deviant);
    virtual void setSiid(Deviant deviant, String const & siid);
    [[nodiscard]] virtual String getSiid(Deviant deviant) const;

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    /// The container's body in the deviant, null if there is none. Raises as a read.
    [[nodiscard]] virtual ClassObjectIntf const * internal_container(Deviant) const { return nullptr; }
    /// Puts `state` in the root deviant and returns what stood there, which then belongs to the caller. A body that has no
    /// such place returns `state`; one with an `internal_body` has.
    [[nodiscard]] virtual ObjectIntf * internal_exchangeRootState(ObjectIntf * state) noexcept { return state; }
};

} // namespace NSInterface
} // namespace ZEL
