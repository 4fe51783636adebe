#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

namespace ZEL {

Sequence<Object> PropertyStorage::get(ClassObject const & object) const { return getImplementation()->get(object); }

ImmutableSequence<ImmutableObject> PropertyStorage::get(ImmutableClassObject const & object) const {
    PropertyStorageIntf const & storage = *getImplementation();
    return storage.get(object);
}

Object PropertyStorage::getOne(ClassObject const & object) const { return getImplementation()->getOne(object); }

ImmutableObject PropertyStorage::getOne(ImmutableClassObject const & object) const {
    PropertyStorageIntf const & storage = *getImplementation();
    return storage.getOne(object);
}

} // namespace ZEL
