// Reflective access: every form finds the property's storage and calls the operation of the same name there. Reads of
// single values take the operations out of the storage, which does no more than call them.

#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/MetaClassView.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/metamodel/PropertyImpl.h>
#include <ZEL/metamodel/PropertyStorage.h>
#include <ZEL/metamodel/ReflectionErrors.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

#include <exception>
#include <memory>
#include <string_view>
#include <typeinfo>

namespace ZEL::NSInterface {

namespace {

constexpr char const * kToGet = "Trying to get invalid property!";
constexpr char const * kToSet = "Trying to set invalid property!";

/// Null for a class that is being changed, and for one that cannot be read as a whole: `getProperty` may still find a
/// property in it, or says what is wrong.
std::shared_ptr<internal::MetaClassView const> viewOf(ImmutableClass const & metaClass) {
    Deviant const deviant = metaClass.getDeviant();
    if (!deviant.isRootDeviant() || deviant.isWithinTransaction()) {
        return nullptr;
    }
    try {
        return internal::MetaClassView::of(metaClass);
    } catch (std::exception const &) {
        return nullptr;
    }
}

/// What `access` makes of the first property with this name, which is invalid if there is none.
template <class Access>
auto byName(ClassObjectIntf const & object, Deviant deviant, String const & name, Access access) {
    ImmutableClass const metaClass = object.getMetaClass(deviant);
    if (auto const view = viewOf(metaClass)) {
        internal::PropertyView const * const found = view->find(std::string_view(name.str()));
        return found != nullptr ? access(found->property) : access(ImmutableProperty());
    }
    return access(metaClass.getProperty(name));
}

/// The operations of a property with a single value, for reading: the short way, on which nothing is counted. Null for
/// a property that takes the long one: its storage is another, or it cannot be read, and that way says why.
Generic::PropertyToSequenceMethods const * singleMethods(ImmutableProperty const & property) {
    PropertyIntf const * const intf = property.getImplementationWithoutAssert();
    internal::BodyCore const * const body = intf == nullptr ? nullptr : intf->internal_body();
    if (body == nullptr || typeid(*body) != typeid(NSImplementation::PropertyImpl)) {
        return nullptr;
    }
    try {
        using State = NSImplementation::PropertyDeviantImpl;
        PropertyStorageIntf const * const storage = static_cast<State const &>(*body->readState(property.getDeviant()))
                                                        .fields.storage.getImplementationWithoutAssert();
        // Of just this class, since one derived from it may read in another way.
        return storage != nullptr && typeid(*storage) == typeid(SingleValuedPropertyManager)
                   ? static_cast<SingleValuedPropertyManager const &>(*storage).methods()
                   : nullptr;
    } catch (std::exception const &) {
        return nullptr;
    }
}

/// What `access` returns. A failure of it says what does not fit what.
template <class Access>
auto explained(ClassObjectIntf const & object, Deviant deviant, ImmutableProperty const & property,
               Object const * value, Access access) {
    try {
        return access();
    } catch (std::exception const &) {
        internal::raiseReflectionError(object, deviant, property, value);
    }
}

/// What `access` makes of the property's storage, explained. An invalid property fails with the text.
template <class Access>
auto withStorage(ImmutableClassObject const & object, ImmutableProperty const & property, char const * text,
                 Object const * value, Access access) {
    if (!property.isValid()) {
        raiseInternalError(text);
    }
    PropertyStorage const storage = property.getStorage();
    return explained(*object.getImplementation(), object.getDeviant(), property, value,
                     [&] { return access(storage); });
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
    return byName(*this, deviant, name, [&](auto const & property) { return get(deviant, property); });
}

ImmutableSequence<ImmutableObject> ClassObjectOperations::get(Deviant deviant,
                                                              ImmutableProperty const & property) const {
    return getAll(ImmutableClassObject(this, deviant), property);
}

ImmutableSequence<ImmutableObject> ClassObjectOperations::get(Deviant deviant, String const & name) const {
    return byName(*this, deviant, name, [&](auto const & property) { return get(deviant, property); });
}

Object ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) {
    if (auto const * const methods = singleMethods(property)) {
        return explained(*this, deviant, property, nullptr, [&] { return methods->getOne(this, deviant); });
    }
    return getFirst(ClassObject(this, deviant), property);
}

Object ClassObjectOperations::getOne(Deviant deviant, String const & name) {
    return byName(*this, deviant, name, [&](auto const & property) { return getOne(deviant, property); });
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) const {
    if (auto const * const methods = singleMethods(property)) {
        auto * const self = const_cast<ClassObjectOperations *>(this);
        return explained(*this, deviant, property, nullptr, [&] { return methods->getOne(self, deviant); });
    }
    return getFirst(ImmutableClassObject(this, deviant), property);
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, String const & name) const {
    return byName(*this, deviant, name, [&](auto const & property) { return getOne(deviant, property); });
}

Boolean ClassObjectOperations::has(Deviant deviant, ImmutableProperty const & property) const {
    if (auto const * const methods = singleMethods(property)) {
        auto * const self = const_cast<ClassObjectOperations *>(this);
        return Boolean(explained(*this, deviant, property, nullptr, [&] { return methods->has(self, deviant); }));
    }
    ImmutableClassObject const self(this, deviant);
    return Boolean(withStorage(self, property, kToGet, nullptr, [&](auto & storage) { return storage.has(self); }));
}

Boolean ClassObjectOperations::has(Deviant deviant, String const & name) const {
    return byName(*this, deviant, name, [&](auto const & property) { return has(deviant, property); });
}

void ClassObjectOperations::setOrAdd(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::setOrAdd, value);
}

void ClassObjectOperations::setOrAdd(Deviant deviant, String const & name, Object const & value) {
    byName(*this, deviant, name, [&](auto const & property) { setOrAdd(deviant, property, value); });
}

void ClassObjectOperations::setOrAddOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::setOrAddEndOnly, value);
}

void ClassObjectOperations::setOrAddOnly(Deviant deviant, String const & name, Object const & value) {
    byName(*this, deviant, name, [&](auto const & property) { setOrAddOnly(deviant, property, value); });
}

void ClassObjectOperations::remove(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::remove, value);
}

void ClassObjectOperations::remove(Deviant deviant, String const & name, Object const & value) {
    byName(*this, deviant, name, [&](auto const & property) { remove(deviant, property, value); });
}

void ClassObjectOperations::removeOnly(Deviant deviant, ImmutableProperty const & property, Object const & value) {
    write(ClassObject(this, deviant), property, &PropertyStorage::removeEndOnly, value);
}

void ClassObjectOperations::removeOnly(Deviant deviant, String const & name, Object const & value) {
    byName(*this, deviant, name, [&](auto const & property) { removeOnly(deviant, property, value); });
}

void ClassObjectOperations::removeOne(Deviant deviant, ImmutableProperty const & property) {
    write(ClassObject(this, deviant), property, &PropertyStorage::removeOne);
}

void ClassObjectOperations::removeOne(Deviant deviant, String const & name) {
    byName(*this, deviant, name, [&](auto const & property) { removeOne(deviant, property); });
}

void ClassObjectOperations::removeOneOnly(Deviant deviant, ImmutableProperty const & property) {
    write(ClassObject(this, deviant), property, &PropertyStorage::removeOneEndOnly);
}

void ClassObjectOperations::removeOneOnly(Deviant deviant, String const & name) {
    byName(*this, deviant, name, [&](auto const & property) { removeOneOnly(deviant, property); });
}

} // namespace ZEL::NSInterface
