// Reflective access: every form finds the property's storage and calls the operation of the same name there. Reads of
// single values go to where the value lies, or take the operations out of the storage, which does no more than call
// them.

#include <ZEL/Boolean.h>
#include <ZEL/String.h>
#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/Class.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/ClassObjectOperations.h>
#include <ZEL/metamodel/ClassRuntime.h>
#include <ZEL/metamodel/Descriptors.h>
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
#include <string_view>
#include <typeinfo>

namespace ZEL::NSInterface {

namespace {

using internal::BodyCore;
using internal::MetaClassView;
using internal::PropertyView;

constexpr char const * kToGet = "Trying to get invalid property!";
constexpr char const * kToSet = "Trying to set invalid property!";

/// Null for a class that is being changed, and for one that cannot be read as a whole: `getProperty` may still find a
/// property in it, or says what is wrong.
MetaClassView const * viewOf(BodyCore const * body) {
    if (body == nullptr) {
        return nullptr;
    }
    internal::ClassDescriptor const & descriptor = body->internal_descriptor();
    MetaClassView const * const view = descriptor.runtime->view();
    return view != nullptr ? view : MetaClassView::kept(descriptor);
}

/// What `access` makes of the first property with this name, which is invalid if there is none.
template <class Access>
auto byName(ClassObjectIntf const & object, Deviant deviant, String const & name, Access access) {
    if (MetaClassView const * const view = viewOf(object.internal_body())) {
        PropertyView const * const found = view->find(std::string_view(name.str()));
        return found != nullptr ? access(found->property) : access(ImmutableProperty());
    }
    return access(object.getMetaClass(deviant).getProperty(name));
}

/// The generated operations of a property with a single value. Null if its storage is another, or if it cannot be read.
Generic::PropertyToSequenceMethods const * singleMethods(ImmutableProperty const & property) {
    PropertyIntf const * const intf = property.getImplementationWithoutAssert();
    internal::BodyCore const * const body = intf == nullptr ? nullptr : intf->internal_body();
    if (body == nullptr || typeid(*body) != typeid(NSImplementation::PropertyImpl)) {
        return nullptr;
    }
    try {
        using State = NSImplementation::PropertyDeviantImpl;
        PropertyStorageIntf const * const storage =
            static_cast<State const &>(*body->readState(property.getDeviant()))
                .fields.internal_seldom->storage.getImplementationWithoutAssert();
        // Of just this class, since one derived from it may read in another way.
        return storage != nullptr && typeid(*storage) == typeid(SingleValuedPropertyManager)
                   ? static_cast<SingleValuedPropertyManager const &>(*storage).methods()
                   : nullptr;
    } catch (std::exception const &) {
        return nullptr;
    }
}

/// How a property with a single value is read from an object without counting anything: where it lies, or else by the
/// operations of the property. One with neither takes the long way through the storage, which says what is wrong.
class ShortWay {
public:
    ShortWay(ClassObjectIntf & object, String const & name) : fObject(object), fBody(object.internal_body()) {
        if (MetaClassView const * const view = viewOf(fBody)) {
            take(view->find(std::string_view(name.str())));
        }
    }
    ShortWay(ClassObjectIntf & object, ImmutableProperty const & property)
        : fObject(object), fBody(object.internal_body()) {
        MetaClassView const * const view = viewOf(fBody);
        if (view != nullptr) {
            take(view->find(property));
        }
        if (fPlace == nullptr) {
            // One of a superclass, or one whose values only the property's own operations know.
            fMethods = singleMethods(property);
            if (view != nullptr && fMethods != nullptr) {
                take(view->find(fMethods));
            }
        }
    }

    explicit operator bool() const noexcept { return fPlace != nullptr || fMethods != nullptr; }
    /// Of a way by name.
    [[nodiscard]] ImmutableProperty const & property() const noexcept { return fPlace->property; }

    [[nodiscard]] Object getOne(Deviant deviant) const {
        if (fPlace == nullptr) {
            return fMethods->getOne(&fObject, deviant);
        }
        internal::StateCore const & state = *fBody->readState(deviant);
        if (fPlace->box != nullptr) {
            internal::FieldValue const value = fPlace->value->get(state);
            return value.isSet() ? Object(fPlace->box(value), deviant) : Object();
        }
        ObjectIntf * const link = fPlace->links->get(state);
        return Object(link, link == nullptr ? Deviant() : deviant);
    }
    [[nodiscard]] bool has(Deviant deviant) const {
        if (fPlace == nullptr) {
            return fMethods->has(&fObject, deviant);
        }
        internal::StateCore const & state = *fBody->readState(deviant);
        return fPlace->box != nullptr ? fPlace->value->get(state).isSet() : fPlace->links->get(state) != nullptr;
    }

private:
    /// Goes to the place of values that can be boxed, and of links.
    void take(PropertyView const * property) noexcept {
        bool const isPlace =
            property != nullptr && (property->box != nullptr || (property->links != nullptr && !property->isMany));
        fPlace = isPlace ? property : nullptr;
    }

    ClassObjectIntf & fObject;
    BodyCore const * fBody;
    PropertyView const * fPlace = nullptr;
    Generic::PropertyToSequenceMethods const * fMethods = nullptr;
};

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
    if (ShortWay const way(*this, property); way) {
        return explained(*this, deviant, property, nullptr, [&] { return way.getOne(deviant); });
    }
    return getFirst(ClassObject(this, deviant), property);
}

Object ClassObjectOperations::getOne(Deviant deviant, String const & name) {
    if (ShortWay const way(*this, name); way) {
        return explained(*this, deviant, way.property(), nullptr, [&] { return way.getOne(deviant); });
    }
    return byName(*this, deviant, name, [&](auto const & property) { return getOne(deviant, property); });
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, ImmutableProperty const & property) const {
    if (ShortWay const way(const_cast<ClassObjectOperations &>(*this), property); way) {
        return explained(*this, deviant, property, nullptr, [&] { return way.getOne(deviant); });
    }
    return getFirst(ImmutableClassObject(this, deviant), property);
}

ImmutableObject ClassObjectOperations::getOne(Deviant deviant, String const & name) const {
    if (ShortWay const way(const_cast<ClassObjectOperations &>(*this), name); way) {
        return explained(*this, deviant, way.property(), nullptr, [&] { return way.getOne(deviant); });
    }
    return byName(*this, deviant, name, [&](auto const & property) { return getOne(deviant, property); });
}

Boolean ClassObjectOperations::has(Deviant deviant, ImmutableProperty const & property) const {
    if (ShortWay const way(const_cast<ClassObjectOperations &>(*this), property); way) {
        return Boolean(explained(*this, deviant, property, nullptr, [&] { return way.has(deviant); }));
    }
    ImmutableClassObject const self(this, deviant);
    return Boolean(withStorage(self, property, kToGet, nullptr, [&](auto & storage) { return storage.has(self); }));
}

Boolean ClassObjectOperations::has(Deviant deviant, String const & name) const {
    if (ShortWay const way(const_cast<ClassObjectOperations &>(*this), name); way) {
        return Boolean(explained(*this, deviant, way.property(), nullptr, [&] { return way.has(deviant); }));
    }
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
