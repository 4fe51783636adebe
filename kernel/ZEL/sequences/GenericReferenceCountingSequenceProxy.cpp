#include <ZEL/sequences/GenericReferenceCountingSequenceProxy.h>

#include <utility>

namespace ZEL::Generic {

GenericReferenceCountingSequenceProxy::GenericReferenceCountingSequenceProxy(SequenceHandle const & wrapped)
    : fWrapped(wrapped.getImplementation()) {
    fWrapped->incRef(); // which is nothing to a storage
}

void GenericReferenceCountingSequenceProxy::Release::operator()(SequenceIntf * body) const {
    if (dynamic_cast<SequenceProxy *>(body) != nullptr) {
        body->decRef();
    } else {
        delete body;
    }
}

Ref GenericReferenceCountingSequenceProxy::generic_at(Deviant deviant, int index) const {
    return fWrapped->generic_at(deviant, index);
}

Ref GenericReferenceCountingSequenceProxy::generic_front(Deviant deviant) const {
    return fWrapped->generic_front(deviant);
}

Ref GenericReferenceCountingSequenceProxy::generic_back(Deviant deviant) const {
    return fWrapped->generic_back(deviant);
}

std::unique_ptr<IteratorIntf> GenericReferenceCountingSequenceProxy::generic_begin(Deviant deviant) const {
    return fWrapped->generic_begin(deviant);
}

std::unique_ptr<IteratorIntf> GenericReferenceCountingSequenceProxy::generic_end(Deviant deviant) const {
    return fWrapped->generic_end(deviant);
}

int GenericReferenceCountingSequenceProxy::generic_size(Deviant deviant) const {
    return fWrapped->generic_size(deviant);
}

bool GenericReferenceCountingSequenceProxy::generic_contains(Deviant deviant, Ref element) const {
    return fWrapped->generic_contains(deviant, std::move(element));
}

char const * GenericReferenceCountingSequenceProxy::generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                                        char const * fallback) const {
    return fWrapped->generic_getOrcaName(immutableSequence, immutableElement, fallback);
}

bool GenericReferenceCountingSequenceProxy::generic_isRandomAccess() const {
    return fWrapped->generic_isRandomAccess();
}

std::unique_ptr<IteratorIntf> GenericReferenceCountingSequenceProxy::generic_iteratorAt(Deviant deviant,
                                                                                        int index) const {
    return fWrapped->generic_iteratorAt(deviant, index);
}

int GenericReferenceCountingSequenceProxy::generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                                         int count) const {
    return fWrapped->generic_fetch(deviant, index, bodies, count);
}

int GenericReferenceCountingSequenceProxy::generic_indexOf(Deviant deviant, Ref element) const {
    return fWrapped->generic_indexOf(deviant, std::move(element));
}

bool GenericReferenceCountingSequenceProxy::generic_isUnique() const { return fWrapped->generic_isUnique(); }

bool GenericReferenceCountingSequenceProxy::generic_accepts(Deviant deviant, Ref const & element) const {
    return fWrapped->generic_accepts(deviant, element);
}

void GenericReferenceCountingSequenceProxy::generic_clear(Deviant deviant) { fWrapped->generic_clear(deviant); }

std::unique_ptr<IteratorIntf>
GenericReferenceCountingSequenceProxy::generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) {
    return fWrapped->generic_insert(deviant, where, std::move(element));
}

void GenericReferenceCountingSequenceProxy::generic_insert(Deviant deviant, int index, Ref element) {
    fWrapped->generic_insert(deviant, index, std::move(element));
}

void GenericReferenceCountingSequenceProxy::generic_erase(Deviant deviant, int index) {
    fWrapped->generic_erase(deviant, index);
}

std::unique_ptr<IteratorIntf> GenericReferenceCountingSequenceProxy::generic_erase(Deviant deviant,
                                                                                   IteratorIntf const * first,
                                                                                   IteratorIntf const * last) {
    return fWrapped->generic_erase(deviant, first, last);
}

std::unique_ptr<IteratorIntf> GenericReferenceCountingSequenceProxy::generic_erase(Deviant deviant,
                                                                                   IteratorIntf const * where) {
    return fWrapped->generic_erase(deviant, where);
}

void GenericReferenceCountingSequenceProxy::generic_pop_back(Deviant deviant) { fWrapped->generic_pop_back(deviant); }

void GenericReferenceCountingSequenceProxy::generic_pop_front(Deviant deviant) { fWrapped->generic_pop_front(deviant); }

void GenericReferenceCountingSequenceProxy::generic_push_back(Deviant deviant, Ref element) {
    fWrapped->generic_push_back(deviant, std::move(element));
}

void GenericReferenceCountingSequenceProxy::generic_push_front(Deviant deviant, Ref element) {
    fWrapped->generic_push_front(deviant, std::move(element));
}

void GenericReferenceCountingSequenceProxy::generic_replace(Deviant deviant, int index, Ref element) {
    fWrapped->generic_replace(deviant, index, std::move(element));
}

bool GenericReferenceCountingSequenceProxy::generic_eraseElement(Deviant deviant, Ref element) {
    return fWrapped->generic_eraseElement(deviant, std::move(element));
}

} // namespace ZEL::Generic
