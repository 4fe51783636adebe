#pragma once

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/PropertyAccess.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/sequences/PersistentSequence.h>

/// What the constant tables of a generated class point at: functions made of its members, one for each entry.
namespace ZEL::internal {

/// `Member` points into the struct of the stored properties of `State`.
template <class State, auto Member> PersistentSequence & sequenceField(StateCore & state) {
    return static_cast<State &>(state).fields.*Member;
}

template <class State, auto Member> ObjectIntf * pointerField(StateCore const & state) {
    return static_cast<State const &>(state).fields.*Member;
}

template <class State, class I, auto Member> void setPointerField(StateCore & state, ObjectIntf * value) {
    static_cast<State &>(state).fields.*Member =
        value == nullptr ? nullptr : static_cast<I *>(value->cast(I::classInfo()));
}

/// All states have this one; asking for it makes the entry in the table of stereotype instances.
inline PersistentSequence & stereotypeInstances(StateCore & state) { return state.writableStereotypeInstances(); }

/// The stored properties of a state that is a `State`.
template <class State> auto const & fieldsOf(StateCore const & state) {
    return static_cast<State const &>(state).fields;
}

/// Whether an object that has the interface satisfies a constraint of it.
template <class I, bool (I::*Satisfies)(Deviant) const>
bool satisfies(NSInterface::ClassObjectIntf const & object, Deviant deviant) {
    return (static_cast<I const *>(object.cast(I::classInfo()))->*Satisfies)(deviant);
}

template <class Body> BodyCore * createBody() { return new Body; }

template <class State> StateCore * createState() { return new State; }

template <class State> void assignState(StateCore & target, StateCore const & source) {
    static_cast<State &>(target).assign(static_cast<State const &>(source));
}

} // namespace ZEL::internal
