#pragma once

#include <ZEL/metamodel/BodyCore.h>
#include <ZEL/metamodel/Descriptors.h>

#include <vector>

/// The composite properties of an object taken together: what containment, deletion and copies walk.
///
/// Working part of the metamodel framework. Objects are named by their interface; every routine reads and writes
/// through the object's state in the given deviant, so the usual failures apply.
namespace ZEL::internal {

class PersistentSequence;

/// The object as one of a class, which it must be: fields of class type hold nothing else.
[[nodiscard]] inline ClassObjectIntf & classObject(ObjectIntf & object) {
    return *static_cast<ClassObjectIntf *>(object.cast(ClassObjectIntf::classInfo()));
}

/// The stored field of `property` in the object's class; null if the class has none.
[[nodiscard]] ZEL_API FieldDescriptor const * fieldOf(ClassDescriptor const & descriptor,
                                                      PropertyDescriptor const & property) noexcept;

/// Whether the values of the property are contained: composite, stored, of class type, and no factory.
[[nodiscard]] ZEL_API bool isContainment(PropertyDescriptor const & property) noexcept;

/// Takes the object's class to be that of `field`; whether an element may stand there.
[[nodiscard]] ZEL_API bool accepts(FieldDescriptor const & field, ObjectIntf const & element);

/// The first containment field of `container` that accepts `element`; null if none does.
[[nodiscard]] ZEL_API FieldDescriptor const * acceptingField(ClassObjectIntf const & container,
                                                             ClassObjectIntf const & element);

/// Puts `element` into the field, at the back of a multi-valued one. What stood in a single-valued one becomes
/// unparented. Does not touch the element's container.
ZEL_API void addContainee(ClassObjectIntf & container, Deviant deviant, FieldDescriptor const & field,
                          ClassObjectIntf & element);

/// What a push on the owner's list, or a set of its single part, comes to for an object that has just been created in the
/// same model, without asking for what such an object cannot have. False, and nothing done, for any other object and
/// where another part would have to make room.
[[nodiscard]] ZEL_API bool addNewContainee(ClassObjectIntf & owner, Deviant deviant, FieldDescriptor const & field,
                                           ClassObjectIntf & element);

/// Makes `displaced` unparented, which another object is about to replace in a single-valued containment field of
/// `container`. Nothing if it has another container by now.
ZEL_API void unparentDisplaced(ClassObjectIntf const & container, Deviant deviant, ClassObjectIntf & displaced);

/// Takes `element` out of the containment field that holds it, if any does.
ZEL_API void eraseContainee(ClassObjectIntf & container, Deviant deviant, ClassObjectIntf const & element);

/// Appends the objects in all containment fields of `object`, in the order of the properties.
ZEL_API void collectContainees(ClassObjectIntf const & object, Deviant deviant,
                               std::vector<ClassObjectIntf *> & result);
[[nodiscard]] ZEL_API bool hasContainees(ClassObjectIntf const & object, Deviant deviant);

/// The object and all it contains that exist in the deviant, parents before children. No recursion.
[[nodiscard]] ZEL_API std::vector<ClassObjectIntf *> collectSubtree(ClassObjectIntf & object, Deviant deviant);

/// Of a model: what it holds beside its containees, that is the objects without container and its factory. Empty
/// otherwise.
[[nodiscard]] ZEL_API std::vector<ClassObjectIntf *> modelRoots(ClassObjectIntf & object, Deviant deviant);

/// Puts the object among the `unparented` of its model, or takes it out. A model is never put there.
ZEL_API void addUnparented(ClassObjectIntf & object, Deviant deviant);
/// The same for an object that stands nowhere yet and is no model.
ZEL_API void addNewUnparented(ClassObjectIntf & object, Deviant deviant);
ZEL_API void eraseUnparented(ClassObjectIntf & object, Deviant deviant);

/// Makes `owner` the container of `element` on behalf of a push on the owner's field of `property`, which the caller
/// does afterwards: takes it out of whatever holds it now, another field of the same owner included.
ZEL_API void attachToOwner(ClassObjectIntf & owner, Deviant deviant, PropertyDescriptor const & property,
                           ClassObjectIntf & element);

} // namespace ZEL::internal
