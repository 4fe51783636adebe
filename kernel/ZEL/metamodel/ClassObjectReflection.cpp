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

PropertyStorage storageOf(ImmutableProperty const & property, char const * failure) {
    if (!property.isValid()) {
        raiseInternalError(failure);
    }
    return property.getStorage();
}

PropertyStorage storageToGet(ImmutableProperty const & property) {
    return storageOf(property, "Trying to get invalid property!");
}

PropertyStorage storageToSet(ImmutableProperty const & property) {
    return storageOf(property, "Trying to set invalid property!");
}

ImmutableProperty propertyByName(ClassObjectIntf const & object, Deviant deviant, String const & name) {
    return object.getMetaClass(deviant).getProperty(name);
}

/// The result of `access`; a failure says what does not fit what.
template <class Access>
auto checked(ClassObjectIntf const & object, Deviant deviant, ImmutableProperty const & property, Object const * value,
             Access access) {
    try {
        return access();
    } catch (std::exception const &) {
        internal::raiseReflectionError(object, deviant, property, value);
    }
}

} // namespace

Sequence<Object> ClassObjectOperations::get(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr, [&] { return storage.get(ClassObject(this, deviant)); });
}

Sequence<Object> ClassObjectOperations::get(Deviant deviant, String const & name) {
    return get(deviant, propertyByName(*this, deviant, name));
}

ImmutableSequence<ImmutableObject> ClassObjectOperations::get(Deviant deviant,
                                                              ImmutableProperty const & property) const {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr, [&] { return storage.get(ImmutableClassObject(this, deviant)); });
}

ImmutableSequence<ImmutableObject> ClassObjectOperations::get(Deviant deviant, String const & name) const {
    return get(deviant, propertyByName(*this, deviant, name));
}

Object ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr, [&] { return storage.getOne(ClassObject(this, deviant)); });
}

Object ClassObjectOperations::getOne(Deviant deviant, String const & name) {
    return getOne(deviant, propertyByName(*this, deviant, name));
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) const {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr,
                   [&] { return storage.getOne(ImmutableClassObject(this, deviant)); });
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, String const & name) const {
    return getOne(deviant, propertyByName(*this, deviant, name));
}

Boolean ClassObjectOperations::has(Deviant deviant, ImmutableProperty const & property) const {
    PropertyStorage const storage = storageToGet(property);
    return Boolean(
        checked(*this, deviant, property, nullptr, [&] { return storage.has(ImmutableClassObject(this, deviant)); }));
}

Boolean ClassObjectOperations::has(Deviant deviant, String const & name) const {
    return has(deviant, propertyByName(*this, deviant, name));
}

void ClassObjectOperations::setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value, [&] { return storage.setOrAdd(ClassObject(this, deviant), value); });
}

void ClassObjectOperations::setOrAdd(Deviant deviant, String const & name, Object const & value) {
    setOrAdd(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value,
            [&] { return storage.setOrAddEndOnly(ClassObject(this, deviant), value); });
}

void ClassObjectOperations::setOrAddOnly(Deviant deviant, String const & name, Object const & value) {
    setOrAddOnly(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::remove(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value, [&] { return storage.remove(ClassObject(this, deviant), value); });
}

void ClassObjectOperations::remove(Deviant deviant, String const & name, Object const & value) {
    remove(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value, [&] { return storage.removeEndOnly(ClassObject(this, deviant), value); });
}

void ClassObjectOperations::removeOnly(Deviant deviant, String const & name, Object const & value) {
    removeOnly(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectOperations::removeOne(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, nullptr, [&] { return storage.removeOne(ClassObject(this, deviant)); });
}

void ClassObjectOperations::removeOne(Deviant deviant, String const & name) {
    removeOne(deviant, propertyByName(*this, deviant, name));
}

void ClassObjectOperations::removeOneOnly(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, nullptr, [&] { return storage.removeOneEndOnly(ClassObject(this, deviant)); });
}

void ClassObjectOperations::removeOneOnly(Deviant deviant, String const & name) {
    removeOneOnly(deviant, propertyByName(*this, deviant, name));
}

} // namespace ZEL::NSInterface
