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

} // namespace

void MultiValuedPropertyManager::removeAll(Sequence<Object> const & values, Object const & value) {
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

Object MultiValuedPropertyManager::first(ImmutableClassObject const & object) const {
    Sequence<Object> const values = fGetter(object);
    return values.empty() ? Object() : values.at(0);
}

} // namespace ZEL
