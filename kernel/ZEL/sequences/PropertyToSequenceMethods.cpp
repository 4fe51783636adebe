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

void PropertyToSequenceMethods::set(ObjectIntf * object, Deviant deviant, Ref const & value) const {
    void * const declaring = part(object, setMember != nullptr);
    setMember(declaring, deviant, value);
}

void PropertyToSequenceMethods::setEndOnly(ObjectIntf * object, Deviant deviant, Ref const & value) const {
    void * const declaring = part(object, setEndOnlyMember != nullptr);
    setEndOnlyMember(declaring, deviant, value);
}

bool PropertyToSequenceMethods::has(ObjectIntf * object, Deviant deviant) const {
    void * const declaring = part(object, hasMember != nullptr);
    return hasMember(declaring, deviant);
}

void PropertyToSequenceMethods::remove(ObjectIntf * object, Deviant deviant) const {
    void * const declaring = part(object, removeMember != nullptr);
    removeMember(declaring, deviant);
}

void PropertyToSequenceMethods::removeEndOnly(ObjectIntf * object, Deviant deviant) const {
    void * const declaring = part(object, removeEndOnlyMember != nullptr);
    removeEndOnlyMember(declaring, deviant);
}

Ref PropertyToSequenceMethods::get(ObjectIntf * object, Deviant deviant) const {
    void * const declaring = part(object, getMember != nullptr);
    return getMember(declaring, deviant);
}

} // namespace ZEL::Generic
