#pragma once

#include <ZEL/base/ReferenceCountingIntf.h>

namespace ZEL {

class ClassObject;
class ImmutableClassObject;
class ImmutableObject;
class Object;
template <class T> class ImmutableSequence;
template <class T> class Sequence;

/// How the value of one property is reached on any object that has it: the strategy behind reflective access.
///
/// Shared by the defining property and all its clones; counted. The objects given must be of the class that declares
/// the property.
class ZEL_API PropertyStorageIntf : public virtual ReferenceCountingIntf {
public:
    [[nodiscard]] virtual bool has(ImmutableClassObject const & object) const = 0;
    [[nodiscard]] virtual Sequence<Object> get(ClassObject const & object) = 0;
    [[nodiscard]] virtual ImmutableSequence<ImmutableObject> get(ImmutableClassObject const & object) const = 0;
    /// An invalid handle if there is no value.
    [[nodiscard]] virtual Object getOne(ClassObject const & object) = 0;
    [[nodiscard]] virtual ImmutableObject getOne(ImmutableClassObject const & object) const = 0;
    virtual void setOrAdd(ClassObject const & object, Object const & value) = 0;
    virtual void setOrAddEndOnly(ClassObject const & object, Object const & value) = 0;
    virtual void remove(ClassObject const & object, Object const & value) = 0;
    virtual void removeEndOnly(ClassObject const & object, Object const & value) = 0;
    virtual void removeOne(ClassObject const & object) = 0;
    virtual void removeOneEndOnly(ClassObject const & object) = 0;
};

} // namespace ZEL
