#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/StaticExtensionStorage.h>
#include <ZEL/metamodel/StereotypeObject.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

#include <memory>

namespace ZEL {

namespace {

using Generic::Ref;

/// The instances as applied, without and with the other end.
Sequence<StereotypeObject> appliedTo(ImmutableClassObject const & object) {
    return object.getImplementation()->getAppliedStereotypeInstances(object.getDeviant());
}

Sequence<StereotypeObject> storedAt(ImmutableClassObject const & object) {
    return object.getImplementation()->getAppliedStereotypeInstancesWithoutAssociation(object.getDeviant());
}

bool isInstanceOf(Stereotype const & stereotype, NSInterface::ObjectIntf const & object, Deviant deviant) {
    return object.getMetaClass(deviant) == stereotype;
}

Sequence<Object> instancesOf(Stereotype const & stereotype, ImmutableClassObject const & object) {
    auto const shown = [stereotype, deviant = object.getDeviant()](Ref const & element) {
        NSInterface::ObjectIntf const * const body = element.body();
        return body != nullptr && isInstanceOf(stereotype, *body, deviant) ? element : Ref();
    };
    Generic::filtered_sequence_internal::GenericFilter const filter =
        Generic::filtered_sequence_internal::makeFilter(false, shown, shown);
    return Sequence<Object>(
        std::make_unique<Generic::filtered_sequence_internal::GenericFilteredSequence>(appliedTo(object), filter),
        object.getDeviant());
}

Object firstOf(Sequence<Object> const & instances) { return instances.empty() ? Object() : instances.front(); }

StereotypeObject instance(Object const & value) {
    StereotypeObject const result(value);
    if (!result.isValid()) {
        raiseInternalError("Only Stereotypes can be added to this property!");
    }
    return result;
}

void removeFirst(Sequence<StereotypeObject> const & instances, Stereotype const & stereotype, Deviant deviant) {
    int const size = instances.size();
    for (int i = 0; i < size; ++i) {
        if (isInstanceOf(stereotype, *instances.at(i).getImplementation(), deviant)) {
            instances.erase(i);
            return;
        }
    }
}

} // namespace

bool StaticExtensionStorage::has(ImmutableClassObject const & object) const {
    return !instancesOf(fStereotype, object).empty();
}

Sequence<Object> StaticExtensionStorage::get(ClassObject const & object) { return instancesOf(fStereotype, object); }

ImmutableSequence<ImmutableObject> StaticExtensionStorage::get(ImmutableClassObject const & object) const {
    return instancesOf(fStereotype, object);
}

Object StaticExtensionStorage::getOne(ClassObject const & object) { return firstOf(instancesOf(fStereotype, object)); }

ImmutableObject StaticExtensionStorage::getOne(ImmutableClassObject const & object) const {
    return firstOf(instancesOf(fStereotype, object));
}

void StaticExtensionStorage::setOrAdd(ClassObject const & object, Object const & value) {
    remove(object, value);
    appliedTo(object).push_back(instance(value));
}

void StaticExtensionStorage::setOrAddEndOnly(ClassObject const & object, Object const & value) {
    removeEndOnly(object, value);
    storedAt(object).push_back(instance(value));
}

void StaticExtensionStorage::remove(ClassObject const & object, Object const & value) {
    appliedTo(object).remove(instance(value));
}

void StaticExtensionStorage::removeEndOnly(ClassObject const & object, Object const & value) {
    storedAt(object).remove(instance(value));
}

void StaticExtensionStorage::removeOne(ClassObject const & object) {
    removeFirst(appliedTo(object), fStereotype, object.getDeviant());
}

void StaticExtensionStorage::removeOneEndOnly(ClassObject const & object) {
    removeFirst(storedAt(object), fStereotype, object.getDeviant());
}

} // namespace ZEL
