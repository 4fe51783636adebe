#include <ZEL/base/Exception.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>

#include <memory>

namespace ZEL::Generic {

IteratorPtr GenericPropertyToSequenceProxy::iterator(bool isEnd) const {
    return std::make_unique<GenericPropertyToSequenceIterator>(fObject, fMethods, isEnd);
}

Ref GenericPropertyToSequenceProxy::generic_at(Deviant deviant, int index) const {
    if (index != 0) {
        raiseInternalError("for at i cannot be anything but 0");
    }
    return get(deviant);
}

Ref GenericPropertyToSequenceProxy::generic_front(Deviant deviant) const {
    if (!has(deviant)) {
        raiseAnInternalError();
    }
    return get(deviant);
}

void GenericPropertyToSequenceProxy::assign(Deviant deviant, Ref const & element) {
    fMethods->set(object(), deviant, element);
}

void GenericPropertyToSequenceProxy::generic_clear(Deviant deviant) {
    if (fFixed == 0) {
        remove(deviant);
    }
}

IteratorPtr GenericPropertyToSequenceProxy::generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) {
    if (!generic_begin(deviant)->equal(where)) {
        raiseAnInternalError();
    }
    assign(deviant, element);
    return iterator(false);
}

void GenericPropertyToSequenceProxy::generic_insert(Deviant deviant, int index, Ref element) {
    if (index != 0) {
        raiseInternalError("Cannot add elements.");
    }
    assign(deviant, element);
}

IteratorPtr GenericPropertyToSequenceProxy::generic_erase(Deviant deviant, IteratorIntf const * where) {
    if (ownIterator<GenericPropertyToSequenceIterator>(where).isEnd()) {
        raiseAnInternalError();
    }
    remove(deviant);
    return iterator(true);
}

} // namespace ZEL::Generic
