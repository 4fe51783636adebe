#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Descriptors.h>
#include <ZEL/metamodel/StateCore.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

#include <initializer_list>

namespace ZEL::Generic {
struct SequenceField;
} // namespace ZEL::Generic

/// What the generated operations are made of. Each operation is a call of one of these with its property's table.
namespace ZEL::internal {

using Generic::SequenceHandle;

/// The state that `object` is. Throws "An Internal Error has occurred" if it is none.
[[nodiscard]] ZEL_API ObjectIntf & stateItself(ClassObjectIntf const & object);

// --- states ----------------------------------------------------------------------------------------------------------

/// The part of an object's state that declares `I`'s operations; `object` may be a state itself, which is its own.
template <class I> I & readStateOf(ClassObjectIntf const & object, Deviant deviant) {
    ObjectIntf * const state = object.getReadDeviant(deviant);
    return *static_cast<I *>((state != nullptr ? *state : stateItself(object)).cast(I::classInfo()));
}
template <class I> I & writeStateOf(ClassObjectIntf const & object, Deviant deviant) {
    ObjectIntf * const state = object.getWriteDeviant(deviant);
    return *static_cast<I *>((state != nullptr ? *state : stateItself(object)).cast(I::classInfo()));
}

/// The part that all states have; `object` may be a state itself.
ZEL_API StateCore const & coreToRead(ClassObjectIntf const & object, Deviant deviant);
ZEL_API StateCore & coreToWrite(ClassObjectIntf & object, Deviant deviant);

// --- single-valued ends ----------------------------------------------------------------------------------------------

/// `setP` of an end: an invalid value removes, an equal one does nothing; otherwise both ends are brought in step, the
/// partners that lose a link included.
ZEL_API void setEnd(ClassObjectIntf & object, Deviant deviant, PropertyDescriptor const & property,
                    Object const & value);
/// `removeP` of an end.
ZEL_API void removeEnd(ClassObjectIntf & object, Deviant deviant, PropertyDescriptor const & property);

/// Keeps `value` alive for `object` if it belongs to another model.
template <class H> void noteForeignElement(ClassObjectIntf const & object, H const & value) {
    object.internal_noteElement(value.getImplementationWithoutAssert());
}

/// A handle of a narrower class, for operations that a subclass has redefined. A valid value of another class throws
/// "An Internal Error has occurred".
template <class H, class V> H narrowed(V const & value) {
    H result(value);
    if (value.isValid() && !result.isValid()) {
        raiseAnInternalError();
    }
    return result;
}

// --- sequences -------------------------------------------------------------------------------------------------------

[[nodiscard]] ZEL_API SequenceHandle storedSequenceHandle(ClassObjectIntf const & object, Deviant deviant,
                                                          Generic::SequenceField const & field);
[[nodiscard]] ZEL_API SequenceHandle associationViewHandle(ClassObjectIntf const & object, Deviant deviant,
                                                           PropertyDescriptor const & property,
                                                           SequenceHandle const & raw);
[[nodiscard]] ZEL_API SequenceHandle filteredViewHandle(Deviant deviant, SequenceHandle const & underlying,
                                                        CooperativeVisitor::internal::ClassInfo const & shown);
[[nodiscard]] ZEL_API SequenceHandle combinedContaineesHandle(ClassObjectIntf const & object, Deviant deviant,
                                                              ClassDescriptor const & shown);
[[nodiscard]] ZEL_API SequenceHandle unionHandle(Deviant deviant, std::initializer_list<SequenceHandle> parts,
                                                 CooperativeVisitor::internal::ClassInfo const & shown);
[[nodiscard]] ZEL_API SequenceHandle singleAsSequenceHandle(ClassObjectIntf const & object, Deviant deviant,
                                                            PropertyDescriptor const & property,
                                                            bool withoutAssociation);

template <class T> [[nodiscard]] Sequence<T> asSequence(SequenceHandle const & handle, Deviant deviant) {
    return Sequence<T>(handle.getImplementationWithoutAssert(), deviant);
}

/// The stored values of a multi-valued property: found anew, in the right state, at each use. Of a state, its own.
template <class T>
Sequence<T> storedSequence(ClassObjectIntf const & object, Deviant deviant, Generic::SequenceField const & field) {
    return asSequence<T>(storedSequenceHandle(object, deviant, field), deviant);
}
/// The raw sequence with its other end kept in step; the raw sequence itself where there is no other end to keep.
template <class T>
Sequence<T> associationView(ClassObjectIntf const & object, Deviant deviant, PropertyDescriptor const & property,
                            Sequence<T> const & raw) {
    return asSequence<T>(associationViewHandle(object, deviant, property, raw), deviant);
}
/// The containees with their container kept in step.
[[nodiscard]] Sequence<ClassObject> containeeView(ClassObjectIntf const & object, Deviant deviant,
                                                  Sequence<ClassObject> const & raw);
/// The elements of `underlying` that are a `T`.
template <class T, class U> Sequence<T> filteredView(Deviant deviant, Sequence<U> const & underlying) {
    return asSequence<T>(filteredViewHandle(deviant, underlying, T::BodyInterface::classInfo()), deviant);
}
/// The objects in all composite properties that can hold a `T`.
template <class T> Sequence<T> combinedContainees(ClassObjectIntf const & object, Deviant deviant) {
    return asSequence<T>(combinedContaineesHandle(object, deviant, descriptorOf<typename T::BodyInterface>()), deviant);
}
/// One sequence after the other, without storage of its own.
template <class T> Sequence<T> unionOf(Deviant deviant, std::initializer_list<SequenceHandle> parts) {
    return asSequence<T>(unionHandle(deviant, parts, T::BodyInterface::classInfo()), deviant);
}
/// A single-valued property as a sequence of none or one.
template <class T>
Sequence<T> singleAsSequence(ClassObjectIntf const & object, Deviant deviant, PropertyDescriptor const & property,
                             bool withoutAssociation) {
    return asSequence<T>(singleAsSequenceHandle(object, deviant, property, withoutAssociation), deviant);
}

/// The field of stereotype instances, which every object has.
ZEL_API Generic::SequenceField const & stereotypeInstanceField() noexcept;

/// The first element of the name; an invalid handle if there is none.
template <class T, class Elements> T firstNamed(Elements const & elements, String const & name) {
    for (auto const & element : elements) {
        if (element.isValid() && element.getName() == name) {
            return T(element);
        }
    }
    return T();
}

} // namespace ZEL::internal
