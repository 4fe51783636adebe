#include <ZEL/metamodel/SingleValuedPropertyManager.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>

#include <memory>

namespace ZEL {

Generic::SequenceHandle SingleValuedPropertyManager::viewOf(ImmutableClassObject const & object) const {
    using Generic::GenericPropertyToSequenceProxy;
    GenericPropertyToSequenceProxy::ObjectHandle handle(object.getImplementation(), object.getDeviant());
    return Generic::SequenceHandle(std::make_unique<GenericPropertyToSequenceProxy>(std::move(handle), fMethods, fKind),
                                   object.getDeviant());
}

Sequence<Object> SingleValuedPropertyManager::get(ClassObject const & object) {
    return Sequence<Object>(viewOf(object).getImplementation(), object.getDeviant());
}

ImmutableSequence<ImmutableObject> SingleValuedPropertyManager::get(ImmutableClassObject const & object) const {
    return ImmutableSequence<ImmutableObject>(viewOf(object).getImplementation(), object.getDeviant());
}

} // namespace ZEL
