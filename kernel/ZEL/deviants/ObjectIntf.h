#pragma once

#include <ZEL/base/ReferenceCountingIntf.h>
#include <ZEL/deviants/Deviant.h>

#include <cstddef>

namespace ZEL {

class ClassObject;
class ImmutableClass;
class ImmutableType;
class Object;
class String;

namespace internal {
class BodyCore;
class StateCore;
class CloneMap;
} // namespace internal

namespace NSInterface {

/// The tag space shared by all metamodel classes, built-in and of applications.
class ZEL_API ObjectDomain : public CooperativeVisitor::VisitationDomain {};

class ObjectIntf;

/// A body and the deviant through which it is seen, as a handle has them; without a count.
struct SeenObject {
    ObjectIntf const * body = nullptr;
    Deviant deviant;
};

/// Interface of everything a model consists of: bodies of class objects, their states, boxed values.
///
/// Every operation takes the deviant first. The operations below are the protocol between bodies, states and deviants;
/// the defaults here do nothing and return null, as a state does. Bases are shared
/// (virtual) throughout the interface layer, so each object has one address per interface and one count. The deviants
/// know objects by this interface and `ClassObjectIntf` alone. Operations that answer in handles of the metamodel are
/// templates: they are made where they are called, and there the handle's class is known.
class ZEL_API ObjectIntf : public virtual ReferenceCountingIntf {
public:
    static CooperativeVisitor::internal::ClassInfo const & classInfo();
    /// The part of an object of a derived interface that is of this one; null for null. Nothing is checked at run
    /// time: `cast` is for an object of which only a base is known.
    static ObjectIntf * upcast_helper(ObjectIntf * object) noexcept { return object; }
    static ObjectIntf const * upcast_helper(ObjectIntf const * object) noexcept { return object; }

    // --- copies and deletion ---------------------------------------------------------------------------------------
    /// Second pass of `clone`: sets the references of the copies, through the map of copies.
    virtual void internal_cloneReferences(Deviant, internal::CloneMap &) {}
    /// First pass of `clone`: makes the copies of this object and all it contains, with their plain values.
    virtual void internal_cloneContents(Deviant, internal::CloneMap &) {}
    /// A copy of this object and all it contains in the model that `target` is, or belongs to; unparented there. Null
    /// for anything that is not an object of a class.
    template <class Copy = ClassObject> [[nodiscard]] Copy clone(Deviant deviant, Copy const & target);
    /// First pass of `destroy`: takes this object and all it contains off the ends that others hold of them.
    virtual void internal_unlinkForDestroy(Deviant) {}
    /// Last pass of `destroy`: ends this object and all it contains in the deviant, saving their old states.
    virtual void internal_destroyContents(Deviant) {}
    virtual void destroy(Deviant) {}
    [[nodiscard]] virtual std::size_t getByteSize() const { return 0; }

    // --- state protocol --------------------------------------------------------------------------------------------
    /// Whether the object exists in the deviant, by a state of its own or through the root. Never throws.
    [[nodiscard]] virtual bool deviant_isValid(Deviant) const { return false; }
    /// Deletes `state` if it is real.
    virtual void deviant_destroyState(ObjectIntf * /*state*/) {}
    virtual void deviant_markModelDestroyed() {}
    /// On the root: hands deviants that follow the root a copy of the state before the transaction.
    virtual void deviant_commitTransientState(Deviant) {}
    /// A copy of the state in the deviant, owned by the caller, or the sentinel or null found there.
    [[nodiscard]] virtual ObjectIntf * deviant_getCopyOfDeviation(Deviant) const { return nullptr; }
    /// The state in the deviant itself, without reading through to the root; may be a sentinel or null.
    [[nodiscard]] virtual ObjectIntf * internal_getDeviation(Deviant) const { return nullptr; }
    /// Deletes the present state and stores `state`, which the deviant then owns. Storing what is there does nothing.
    virtual void internal_setDeviation(Deviant, ObjectIntf * /*state*/) {}
    /// A new empty state, stored in the deviant; null and no change if there is a real one.
    virtual ObjectIntf * internal_createDeviation(Deviant) { return nullptr; }
    /// Deletes the present state and stores `Deviant::InvalidObject`.
    virtual void internal_destroyDeviation(Deviant) {}
    /// Makes this state a copy of `source`, property by property.
    virtual void internal_deviationAssign(Deviant /*target*/, ObjectIntf * /*source*/, Deviant /*sourceDeviant*/) {}

    // --- naming and values -----------------------------------------------------------------------------------------
    /// "ZEL.ImmutableX" or "ZEL.X". Throws "Internal Error" unless overridden.
    [[nodiscard]] virtual char const * getOrcaName(bool immutable) const;
    [[nodiscard]] virtual String toString(Deviant deviant) const = 0;
    virtual Object fromString(Deviant deviant, String const & text) = 0;
    /// The class of an object, the data type of a value. Throws "The Object.getMetaType operation is not yet
    /// implemented!" for what has neither.
    template <class Type = ImmutableType> [[nodiscard]] Type getMetaType(Deviant deviant) const {
        return handleOn<Type>(internal_metaType(deviant));
    }

    // --- access to states ------------------------------------------------------------------------------------------
    /// The state to read in the deviant: its own or the root's. Throws when the model or the deviant has gone, and when
    /// the object is not present in the deviant.
    [[nodiscard]] virtual ObjectIntf * getReadDeviant(Deviant) const { return nullptr; }
    /// The state to write in the deviant, made and saved as needed. Throws also when no transaction is open.
    [[nodiscard]] virtual ObjectIntf * getWriteDeviant(Deviant) const { return nullptr; }
    /// Null for anything that is not an object of a class.
    template <class Class = ImmutableClass> [[nodiscard]] Class getMetaClass(Deviant deviant) const;

    // --- for the kernel's own use ----------------------------------------------------------------------------------
    /// This object as a body, null for states and values.
    [[nodiscard]] virtual internal::BodyCore * internal_body() const noexcept { return nullptr; }
    /// This object as a state, null for bodies and values.
    [[nodiscard]] virtual internal::StateCore * internal_state() const noexcept { return nullptr; }
    /// What `getMetaType` makes its handle of.
    [[nodiscard]] virtual SeenObject internal_metaType(Deviant deviant) const;

private:
    /// Null if the object is of another class than the handles.
    template <class Handle> static Handle handleOn(SeenObject object) {
        using Body = typename Handle::BodyInterface;
        void * const body = object.body == nullptr ? nullptr : object.body->cast(Body::classInfo());
        return body == nullptr ? Handle() : Handle(static_cast<Body *>(body), object.deviant);
    }
};

} // namespace NSInterface
} // namespace ZEL
