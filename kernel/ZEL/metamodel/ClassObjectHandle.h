#pragma once

#include <ZEL/Boolean.h>
#include <ZEL/Integer.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/ObjectHandle.h>

namespace ZEL {

/// What every `ImmutableX` on a class object offers beside the operations of its class: reflective reads.
///
/// An invalid property and a name that the class does not have throw "Trying to get invalid property!".
template <class I> class ImmutableClassObjectHandle : public ObjectHandle<I> {
public:
    using ObjectHandle<I>::ObjectHandle;

    [[nodiscard]] ImmutableSequence<ImmutableObject> get(ImmutableProperty const & property) const {
        return constBody()->get(this->getDeviant(), property);
    }
    [[nodiscard]] ImmutableSequence<ImmutableObject> get(String const & name) const {
        return constBody()->get(this->getDeviant(), name);
    }
    [[nodiscard]] ImmutableObject getOne(ImmutableProperty const & property) const {
        return constBody()->getOne(this->getDeviant(), property);
    }
    [[nodiscard]] ImmutableObject getOne(String const & name) const {
        return constBody()->getOne(this->getDeviant(), name);
    }
    [[nodiscard]] Boolean has(ImmutableProperty const & property) const {
        return constBody()->has(this->getDeviant(), property);
    }
    [[nodiscard]] Boolean has(String const & name) const { return constBody()->has(this->getDeviant(), name); }

    [[nodiscard]] String toString() const { return constBody()->toString(this->getDeviant()); }
    /// The size in bytes of the object's body, without its states.
    [[nodiscard]] Integer getByteSize() const { return Integer(static_cast<std::int32_t>(constBody()->getByteSize())); }
    /// The name of the object's class if the handle is valid, else of the handle's: "ZEL.ImmutableX".
    [[nodiscard]] String getFullyQualifiedOrcaTypeName() const {
        return String(this->isValid() ? constBody()->getOrcaName(true)
                                      : internal::orcaNameOf(internal::descriptorOf<I>(), true));
    }

private:
    [[nodiscard]] NSInterface::ClassObjectIntf const * constBody() const { return this->getImplementation(); }
};

/// What every `X` on a class object adds: reflective writes, deletion, copies.
///
/// An invalid property and an unknown name throw "Trying to set invalid property!".
template <class Immutable> class ClassObjectHandle : public MutableHandle<Immutable> {
public:
    using BodyInterface = typename Immutable::BodyInterface;
    using MutableHandle<Immutable>::MutableHandle;

    [[nodiscard]] Sequence<Object> get(ImmutableProperty const & property) const {
        return body()->get(this->getDeviant(), property);
    }
    [[nodiscard]] Sequence<Object> get(String const & name) const { return body()->get(this->getDeviant(), name); }
    [[nodiscard]] Object getOne(ImmutableProperty const & property) const {
        return body()->getOne(this->getDeviant(), property);
    }
    [[nodiscard]] Object getOne(String const & name) const { return body()->getOne(this->getDeviant(), name); }

    /// Sets a single-valued property, appends to a multi-valued one, keeping the opposite end in step.
    void setOrAdd(ImmutableProperty const & property, Object const & value) const {
        body()->setOrAdd(this->getDeviant(), property, value);
    }
    void setOrAdd(String const & name, Object const & value) const {
        body()->setOrAdd(this->getDeviant(), name, value);
    }
    void setOrAddOnly(ImmutableProperty const & property, Object const & value) const {
        body()->setOrAddOnly(this->getDeviant(), property, value);
    }
    void setOrAddOnly(String const & name, Object const & value) const {
        body()->setOrAddOnly(this->getDeviant(), name, value);
    }
    /// Removes every occurrence of this value.
    void remove(ImmutableProperty const & property, Object const & value) const {
        body()->remove(this->getDeviant(), property, value);
    }
    void remove(String const & name, Object const & value) const { body()->remove(this->getDeviant(), name, value); }
    void removeOnly(ImmutableProperty const & property, Object const & value) const {
        body()->removeOnly(this->getDeviant(), property, value);
    }
    void removeOnly(String const & name, Object const & value) const {
        body()->removeOnly(this->getDeviant(), name, value);
    }
    /// Removes the value of a single-valued property, the first of a multi-valued one.
    void removeOne(ImmutableProperty const & property) const { body()->removeOne(this->getDeviant(), property); }
    void removeOne(String const & name) const { body()->removeOne(this->getDeviant(), name); }
    void removeOneOnly(ImmutableProperty const & property) const {
        body()->removeOneOnly(this->getDeviant(), property);
    }
    void removeOneOnly(String const & name) const { body()->removeOneOnly(this->getDeviant(), name); }

    Object fromString(String const & text) const { return body()->fromString(this->getDeviant(), text); }
    /// The name of the object's class if the handle is valid, else of the handle's: "ZEL.X".
    [[nodiscard]] String getFullyQualifiedOrcaTypeName() const {
        return String(this->isValid() ? body()->getOrcaName(false)
                                      : internal::orcaNameOf(internal::descriptorOf<BodyInterface>(), false));
    }

    /// Ends the object and all it contains in the handle's deviant. Nothing if it is not valid there.
    void destroy() const { body()->destroy(this->getDeviant()); }
    /// A copy of the object and all it contains in the model of `target`, unparented, seen in `target`'s deviant.
    template <class Target> auto clone(Target const & target) const {
        return body()->clone(this->getDeviant(), target);
    }

private:
    [[nodiscard]] NSInterface::ClassObjectIntf * body() const { return this->getImplementation(); }
};

} // namespace ZEL
