#pragma once

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/PropertyAccess.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/sequences/PersistentSequence.h>

/// What the constant tables of a generated class point at: functions made of its members, one for each entry.
namespace ZEL::internal {

/// What `Member` points at: one of the stored properties, or of those that few objects use.
template <class Fields, class Value> Value const & readMember(Fields const & fields, Value Fields::*member) noexcept {
    return fields.*member;
}
template <class Fields, class Value>
Value const & readMember(Fields const & fields, Value Fields::internal_Seldom::*member) noexcept {
    return (*fields.internal_seldom).*member;
}
template <class Fields, class Value> Value & writeMember(Fields & fields, Value Fields::*member) noexcept {
    return fields.*member;
}
template <class Fields, class Value> Value & writeMember(Fields & fields, Value Fields::internal_Seldom::*member) {
    return fields.internal_seldom.write().*member;
}

/// `Member` points into the struct of the stored properties of `State`, or into that of the seldom ones within.
template <class State, auto Member> PersistentSequence const & sequenceField(StateCore const & state) {
    return readMember(static_cast<State const &>(state).fields, Member);
}

template <class State, auto Member> PersistentSequence & writableSequenceField(StateCore & state) {
    return writeMember(static_cast<State &>(state).fields, Member);
}

template <class State, auto Member> ObjectIntf * pointerField(StateCore const & state) {
    return readMember(static_cast<State const &>(state).fields, Member);
}

template <class State, class I, auto Member> void setPointerField(StateCore & state, ObjectIntf * value) {
    auto & fields = static_cast<State &>(state).fields;
    I * const pointer = value == nullptr ? nullptr : static_cast<I *>(value->cast(I::classInfo()));
    if (readMember(fields, Member) != pointer) {
        writeMember(fields, Member) = pointer;
    }
}

/// All states have this one.
inline PersistentSequence const & stereotypeInstances(StateCore const & state) { return state.stereotypeInstances(); }
inline PersistentSequence & writableStereotypeInstances(StateCore & state) {
    return state.writableStereotypeInstances();
}

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
