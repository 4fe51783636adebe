#include <ZEL/base/Exception.h>
#include <ZEL/sequences/GenericPropertyToSequenceProxy.h>
#include <ZEL/sequences/OwnIterator.h>

namespace ZEL::Generic {

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceProxy::iterator(bool isEnd) const {
    return std::make_unique<GenericPropertyToSequenceIterator>(fObject, fMethods, isEnd);
}

// --- reads -----------------------------------------------------------------------------------------------------------

Ref GenericPropertyToSequenceProxy::generic_at(Deviant deviant, int index) const {
    if (index != 0) {
        raiseInternalError("for at i cannot be anything but 0");
    }
    return fMethods->get(object(), deviant);
}

Ref GenericPropertyToSequenceProxy::generic_front(Deviant deviant) const {
    if (!fMethods->has(object(), deviant)) {
        raiseAnInternalError();
    }
    return fMethods->get(object(), deviant);
}

Ref GenericPropertyToSequenceProxy::generic_back(Deviant deviant) const { return generic_front(deviant); }

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceProxy::generic_begin(Deviant deviant) const {
    return iterator(!fMethods->has(object(), deviant));
}

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceProxy::generic_end(Deviant) const { return iterator(true); }

int GenericPropertyToSequenceProxy::generic_size(Deviant deviant) const {
    return fMethods->has(object(), deviant) ? 1 : 0;
}

bool GenericPropertyToSequenceProxy::generic_contains(Deviant deviant, Ref element) const {
    // Presence alone decides: on purpose, see the class.
    return generic_at(deviant, 0).isNull() == element.isNull();
}

char const * GenericPropertyToSequenceProxy::generic_getOrcaName(bool, bool, char const * fallback) const {
    return fallback;
}

int GenericPropertyToSequenceProxy::generic_indexOf(Deviant deviant, Ref element) const {
    return fMethods->has(object(), deviant) && fMethods->get(object(), deviant).isSameElement(element) ? 0 : -1;
}

// --- writes ----------------------------------------------------------------------------------------------------------

void GenericPropertyToSequenceProxy::assign(Deviant deviant, Ref const & element) {
    fMethods->set(object(), deviant, element);
}

void GenericPropertyToSequenceProxy::generic_clear(Deviant deviant) {
    if (fFixed == 0) {
        fMethods->remove(object(), deviant);
    }
}

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceProxy::generic_insert(Deviant deviant,
                                                                             IteratorIntf const * where, Ref element) {
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

void GenericPropertyToSequenceProxy::generic_erase(Deviant deviant, int) { fMethods->remove(object(), deviant); }

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceProxy::generic_erase(Deviant deviant, IteratorIntf const * first,
                                                                            IteratorIntf const *) {
    return generic_erase(deviant, first);
}

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceProxy::generic_erase(Deviant deviant,
                                                                            IteratorIntf const * where) {
    if (ownIterator<GenericPropertyToSequenceIterator>(where).isEnd()) {
        raiseAnInternalError();
    }
    fMethods->remove(object(), deviant);
    return iterator(true);
}

void GenericPropertyToSequenceProxy::generic_pop_back(Deviant deviant) { fMethods->remove(object(), deviant); }

void GenericPropertyToSequenceProxy::generic_pop_front(Deviant deviant) { generic_pop_back(deviant); }

void GenericPropertyToSequenceProxy::generic_push_back(Deviant deviant, Ref element) {
    generic_insert(deviant, 0, std::move(element));
}

void GenericPropertyToSequenceProxy::generic_push_front(Deviant deviant, Ref element) {
    generic_insert(deviant, 0, std::move(element));
}

void GenericPropertyToSequenceProxy::generic_replace(Deviant deviant, int, Ref element) { assign(deviant, element); }

// --- iterator --------------------------------------------------------------------------------------------------------

Ref GenericPropertyToSequenceIterator::current(Deviant deviant) const {
    return fMethods->get(fObject.getImplementationWithoutAssert(), deviant);
}

void GenericPropertyToSequenceIterator::next(Deviant) { fIsEnd = true; }

void GenericPropertyToSequenceIterator::previous(Deviant) { fIsEnd = false; }

std::unique_ptr<IteratorIntf> GenericPropertyToSequenceIterator::clone() const {
    return std::make_unique<GenericPropertyToSequenceIterator>(*this);
}

bool GenericPropertyToSequenceIterator::equal(IteratorIntf const * other) const {
    auto const * const that = dynamic_cast<GenericPropertyToSequenceIterator const *>(other);
    return that != nullptr && that->fMethods == fMethods && that->fIsEnd == fIsEnd;
}

int GenericPropertyToSequenceIterator::position() const { return fIsEnd ? 1 : 0; }

} // namespace ZEL::Generic
