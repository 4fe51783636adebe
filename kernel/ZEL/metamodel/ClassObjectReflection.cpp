// Reflective access: every form finds the property's storage and calls the operation of the same name there.

#include <ZEL/Boolean.h>
#include <ZEL/Exception.h>
#include <ZEL/String.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectIntf.h>
#include <ZEL/metamodel/Object.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/ReflectionErrors.h>
#include <ZEL/sequences/Sequence.h>

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

Sequence<Object> ClassObjectIntf::get(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr, [&] { return storage.get(ClassObject(this, deviant)); });
}

Sequence<Object> ClassObjectIntf::get(Deviant deviant, String const & name) {
    return get(deviant, propertyByName(*this, deviant, name));
}

ImmutableSequence<ImmutableObject> ClassObjectIntf::get(Deviant deviant, ImmutableProperty const & property) const {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr, [&] { return storage.get(ImmutableClassObject(this, deviant)); });
}

ImmutableSequence<ImmutableObject> ClassObjectIntf::get(Deviant deviant, String const & name) const {
    return get(deviant, propertyByName(*this, deviant, name));
}

Object ClassObjectIntf::getOne(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr, [&] { return storage.getOne(ClassObject(this, deviant)); });
}

Object ClassObjectIntf::getOne(Deviant deviant, String const & name) {
    return getOne(deviant, propertyByName(*this, deviant, name));
}

ImmutableObject ClassObjectIntf::getOne(Deviant deviant, ImmutableProperty const & property) const {
    PropertyStorage const storage = storageToGet(property);
    return checked(*this, deviant, property, nullptr,
                   [&] { return storage.getOne(ImmutableClassObject(this, deviant)); });
}

ImmutableObject ClassObjectIntf::getOne(Deviant deviant, String const & name) const {
    return getOne(deviant, propertyByName(*this, deviant, name));
}

Boolean ClassObjectIntf::has(Deviant deviant, ImmutableProperty const & property) const {
    PropertyStorage const storage = storageToGet(property);
    return Boolean(
        checked(*this, deviant, property, nullptr, [&] { return storage.has(ImmutableClassObject(this, deviant)); }));
}

Boolean ClassObjectIntf::has(Deviant deviant, String const & name) const {
    return has(deviant, propertyByName(*this, deviant, name));
}

void ClassObjectIntf::setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value, [&] { return storage.setOrAdd(ClassObject(this, deviant), value); });
}

void ClassObjectIntf::setOrAdd(Deviant deviant, String const & name, Object const & value) {
    setOrAdd(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectIntf::setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value,
            [&] { return storage.setOrAddEndOnly(ClassObject(this, deviant), value); });
}

void ClassObjectIntf::setOrAddOnly(Deviant deviant, String const & name, Object const & value) {
    setOrAddOnly(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectIntf::remove(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value, [&] { return storage.remove(ClassObject(this, deviant), value); });
}

void ClassObjectIntf::remove(Deviant deviant, String const & name, Object const & value) {
    remove(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectIntf::removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, &value, [&] { return storage.removeEndOnly(ClassObject(this, deviant), value); });
}

void ClassObjectIntf::removeOnly(Deviant deviant, String const & name, Object const & value) {
    removeOnly(deviant, propertyByName(*this, deviant, name), value);
}

void ClassObjectIntf::removeOne(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, nullptr, [&] { return storage.removeOne(ClassObject(this, deviant)); });
}

void ClassObjectIntf::removeOne(Deviant deviant, String const & name) {
    removeOne(deviant, propertyByName(*this, deviant, name));
}

void ClassObjectIntf::removeOneOnly(Deviant deviant, ImmutableProperty const & property) {
    PropertyStorage const storage = storageToSet(property);
    checked(*this, deviant, property, nullptr, [&] { return storage.removeOneEndOnly(ClassObject(this, deviant)); });
}

void ClassObjectIntf::removeOneOnly(Deviant deviant, String const & name) {
    removeOneOnly(deviant, propertyByName(*this, deviant, name));
}

} // namespace ZEL::NSInterface
