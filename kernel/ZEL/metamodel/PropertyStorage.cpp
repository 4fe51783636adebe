#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

namespace ZEL {

bool PropertyStorage::has(ImmutableClassObject const & object) const { return getImplementation()->has(object); }

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

void PropertyStorage::setOrAdd(ClassObject const & object, Object const & value) const {
    getImplementation()->setOrAdd(object, value);
}

void PropertyStorage::setOrAddEndOnly(ClassObject const & object, Object const & value) const {
    getImplementation()->setOrAddEndOnly(object, value);
}

void PropertyStorage::remove(ClassObject const & object, Object const & value) const {
    getImplementation()->remove(object, value);
}

void PropertyStorage::removeEndOnly(ClassObject const & object, Object const & value) const {
    getImplementation()->removeEndOnly(object, value);
}

void PropertyStorage::removeOne(ClassObject const & object) const { getImplementation()->removeOne(object); }

void PropertyStorage::removeOneEndOnly(ClassObject const & object) const {
    getImplementation()->removeOneEndOnly(object);
}

} // namespace ZEL
