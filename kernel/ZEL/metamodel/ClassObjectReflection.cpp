// Reflective access: every form finds the property's storage and calls the operation of the same name there.

#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/ReflectionErrors.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

#include <exception>

namespace ZEL::NSInterface {

namespace {

constexpr char const * kToGet = "Trying to get invalid property!";
constexpr char const * kToSet = "Trying to set invalid property!";

ImmutableProperty propertyByName(ClassObjectIntf const & object, Deviant deviant, String const & name) {
    return object.getMetaClass(deviant).getProperty(name);
}

/// What `access` makes of the property's storage. An invalid property fails with the text; a failure of the access says
/// what does not fit what.
template <class Access>
auto withStorage(ImmutableClassObject const & object, ImmutableProperty const & property, char const * text,
                 Object const * value, Access access) {
    if (!property.isValid()) {
        raiseInternalError(text);
    }
    PropertyStorage const storage = property.getStorage();
    try {
        return access(storage);
    } catch (std::exception const &) {
        internal::raiseReflectionError(*object.getImplementation(), object.getDeviant(), property, value);
    }
}

template <class Handle> auto getAll(Handle const & object, ImmutableProperty const & property) {
    return withStorage(object, property, kToGet, nullptr, [&](auto & storage) { return storage.get(object); });
}

template <class Handle> auto getFirst(Handle const & object, ImmutableProperty const & property) {
    return withStorage(object, property, kToGet, nullptr, [&](auto & storage) { return storage.getOne(object); });
}

void write(ClassObject const & object, ImmutableProperty const & property,
           void (PropertyStorage::*operation)(ClassObject const &, Object const &) const, Object const & value) {
    withStorage(object, property, kToSet, &value, [&](auto & storage) { (storage.*operation)(object, value); });
}

void write(ClassObject const & object, ImmutableProperty const & property,
           void (PropertyStorage::*operation)(ClassObject const &) const) {
    withStorage(object, property, kToSet, nullptr, [&](auto & storage) { (storage.*operation)(object); });
}

} // namespace

Sequence<Object> ClassObjectOperations::get(Deviant deviant, ImmutableProperty const & property) {
    return getAll(ClassObject(this, deviant), property);
}

Sequence<Object> ClassObjectOperations::get(Deviant deviant, String const & name) {
    return get(deviant, propertyByName(*this, deviant, name));
}

ImmutableSequence<ImmutableObject> ClassObjectOperations::get(Deviant deviant,
                                                              ImmutableProperty const & property) const {
    return getAll(ImmutableClassObject(this, deviant), property);
}

ImmutableSequence<ImmutableObject> ClassObjectOperations::get(Deviant deviant, String const & name) const {
    return get(deviant, propertyByName(*this, deviant, name));
}

Object ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) {
    return getFirst(ClassObject(this, deviant), property);
}

Object ClassObjectOperations::getOne(Deviant deviant, String const & name) {
    return getOne(deviant, propertyByName(*this, deviant, name));
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) const {
    return getFirst(ImmutableClassObject(this, deviant), property);
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, String const & name) const {
    return getOne(deviant, propertyByName(*this, deviant, name));
}

Boolean ClassObjectOperations::has(Deviant deviant, ImmutableProperty const & property) const {
    ImmutableClassObject const self(this, deviant);
    return Boolean(withStorage(self, property, kToGet, nullptr, [&](auto & storage) { return storage.has(self); }));
}

Boolean ClassObjectOperations::has(Deviant deviant, String const & name) const {
    return has(deviant, propertyByName(*this, deviant, name));
}

void ClassObjectOperations::setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::setOrAdd, value);
}

void ClassObjectOperations::setOrAdd(Deviant deviant, String const & name, Object const & value) {
    setOrAdd(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::setOrAddEndOnly, value);
}

void ClassObjectOperations::setOrAddOnly(Deviant deviant, String const & name, Object const & value) {
    setOrAddOnly(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::remove(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::remove, value);
}

void ClassObjectOperations::remove(Deviant deviant, String const & name, Object const & value) {
    remove(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::removeEndOnly, value);
}

void ClassObjectOperations::removeOnly(Deviant deviant, String const & name, Object const & value) {
    removeOnly(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::removeOne(Deviant deviant, ImmutableProperty const & property) {
    write(ClassObject(this, deviant), property, &PropertyStorage::removeOne);
}

void ClassObjectOperations::removeOne(Deviant deviant, String const & name) {
    removeOne(deviant, propertyByName(*this, deviant, name));
}

void ClassObjectOperations::removeOneOnly(Deviant deviant, ImmutableProperty const & property) {
    write(ClassObject(this, deviant), property, &PropertyStorage::removeOneEndOnly);
}

void ClassObjectOperations::removeOneOnly(Deviant deviant, String const & name) {
    removeOneOnly(deviant, propertyByName(*this, deviant, name));
}

} // namespace ZEL::NSInterface
