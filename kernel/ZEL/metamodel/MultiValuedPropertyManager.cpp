#include <ZEL/metamodel/MultiValuedPropertyManager.h>

namespace ZEL {

void MultiValuedPropertyManager::removeAll(Sequence<Object> const & values, Object const & value) {
    auto const toRef = &Generic::RefTraits<Object>::toRef;
    Generic::Ref const removed = toRef(value);
    int size = values.size();
    for (int i = 0; i < size;) {
        if (toRef(values.at(i)).isSameElement(removed)) {
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
