#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/MultiValuedPropertyManager.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>
#include <ZEL/values/ValueObject.h>

namespace ZEL {

namespace {

bool isSame(Object const & a, Object const & b) {
    if (a == b) {
        return true;
    }
    ImmutableValueObject const first(a);
    ImmutableValueObject const second(b);
    return first.isValid() && second.isValid() && first == second;
}

void removeAll(Sequence<Object> values, Object const & value) {
    int size = values.size();
    for (int i = 0; i < size;) {
        if (isSame(values.at(i), value)) {
            values.erase(i);
            --size;
        } else {
            ++i;
        }
    }
}

} // namespace

bool MultiValuedPropertyManager::has(ImmutableClassObject const & object) const { return !fGetter(object).empty(); }

Sequence<Object> MultiValuedPropertyManager::get(ClassObject const & object) { return fGetter(object); }

ImmutableSequence<ImmutableObject> MultiValuedPropertyManager::get(ImmutableClassObject const & object) const {
    return fGetter(object);
}

Object MultiValuedPropertyManager::getOne(ClassObject const & object) {
    Sequence<Object> const values = fGetter(object);
    return values.empty() ? Object() : values.at(0);
}

ImmutableObject MultiValuedPropertyManager::getOne(ImmutableClassObject const & object) const {
    Sequence<Object> const values = fGetter(object);
    return values.empty() ? ImmutableObject() : ImmutableObject(values.at(0));
}

void MultiValuedPropertyManager::setOrAdd(ClassObject const & object, Object const & value) {
    fGetter(object).push_back(value);
}

void MultiValuedPropertyManager::setOrAddEndOnly(ClassObject const & object, Object const & value) {
    fGetterWithoutAssociation(object).push_back(value);
}

void MultiValuedPropertyManager::remove(ClassObject const & object, Object const & value) {
    removeAll(fGetter(object), value);
}

void MultiValuedPropertyManager::removeEndOnly(ClassObject const & object, Object const & value) {
    removeAll(fGetterWithoutAssociation(object), value);
}

void MultiValuedPropertyManager::removeOne(ClassObject const & object) { fGetter(object).pop_front(); }

void MultiValuedPropertyManager::removeOneEndOnly(ClassObject const & object) {
    fGetterWithoutAssociation(object).pop_front();
}

} // namespace ZEL
