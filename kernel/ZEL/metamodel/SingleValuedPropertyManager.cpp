#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

#include <memory>

namespace ZEL {

namespace {

template <class Handle> Generic::Ref toRef(Handle const & value) { return Generic::RefTraits<Handle>::toRef(value); }

Generic::SequenceHandle viewOf(ImmutableClassObject const & object, Generic::PropertyToSequenceMethods const * methods,
                               int kind) {
    return Generic::SequenceHandle(
        std::make_unique<Generic::GenericPropertyToSequenceProxy>(
            RefBase<NSInterface::ClassObjectIntf *>(object.getImplementation(), object.getDeviant()), methods, kind),
        object.getDeviant());
}

} // namespace

bool SingleValuedPropertyManager::has(ImmutableClassObject const & object) const {
    return fMethods->has(object.getImplementation(), object.getDeviant());
}

Sequence<Object> SingleValuedPropertyManager::get(ClassObject const & object) {
    return Sequence<Object>(viewOf(object, fMethods, fKind).getImplementation(), object.getDeviant());
}

ImmutableSequence<ImmutableObject> SingleValuedPropertyManager::get(ImmutableClassObject const & object) const {
    return ImmutableSequence<ImmutableObject>(viewOf(object, fMethods, fKind).getImplementation(), object.getDeviant());
}

Object SingleValuedPropertyManager::getOne(ClassObject const & object) {
    return has(object)
               ? Generic::RefTraits<Object>::fromRef(fMethods->get(object.getImplementation(), object.getDeviant()))
               : Object();
}

ImmutableObject SingleValuedPropertyManager::getOne(ImmutableClassObject const & object) const {
    return has(object) ? Generic::RefTraits<ImmutableObject>::fromRef(
                             fMethods->get(object.getImplementation(), object.getDeviant()))
                       : ImmutableObject();
}

void SingleValuedPropertyManager::setOrAdd(ClassObject const & object, Object const & value) {
    fMethods->set(object.getImplementation(), object.getDeviant(), toRef(value));
}

void SingleValuedPropertyManager::setOrAddEndOnly(ClassObject const & object, Object const & value) {
    fMethods->setEndOnly(object.getImplementation(), object.getDeviant(), toRef(value));
}

void SingleValuedPropertyManager::remove(ClassObject const & object, Object const &) { removeOne(object); }

void SingleValuedPropertyManager::removeEndOnly(ClassObject const & object, Object const &) {
    removeOneEndOnly(object);
}

void SingleValuedPropertyManager::removeOne(ClassObject const & object) {
    fMethods->remove(object.getImplementation(), object.getDeviant());
}

void SingleValuedPropertyManager::removeOneEndOnly(ClassObject const & object) {
    fMethods->removeEndOnly(object.getImplementation(), object.getDeviant());
}

} // namespace ZEL
