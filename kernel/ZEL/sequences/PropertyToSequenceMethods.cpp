#include <ZEL/base/Exception.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>

namespace ZEL::Generic {

using NSInterface::ObjectIntf;

void * PropertyToSequenceMethods::part(ObjectIntf * object, bool hasMethod) const {
    void * const declaring = hasMethod && object != nullptr ? object->cast(declaringClass()) : nullptr;
    if (declaring == nullptr) {
        raiseAnInternalError();
    }
    return declaring;
}

Object PropertyToSequenceMethods::getOne(ObjectIntf * object, Deviant deviant) const {
    void * const declaring = part(object, hasMember != nullptr);
    if (!hasMember(declaring, deviant)) {
        return Object();
    }
    if (getObjectMember == nullptr) {
        raiseAnInternalError();
    }
    return getObjectMember(declaring, deviant);
}

} // namespace ZEL::Generic
