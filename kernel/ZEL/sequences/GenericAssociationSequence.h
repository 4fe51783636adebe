#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/sequences/ForwardingSequence.h>
#include <ZEL/values/RefBase.h>

namespace ZEL::internal {
struct PropertyDescriptor;
} // namespace ZEL::internal

namespace ZEL::Generic {

/// Keeps the opposite end of an association in step with every change of a sequence.
///
/// All work is done by the sequence under it; before each change the hook is called for every element that enters or
/// leaves, and sets or clears the element's own end. If the change itself then fails, for instance for a bad index, the
/// other end has been changed already: the caller's transaction is the recovery. An element that the sequence cannot
/// hold is refused before the hook is called.
class ZEL_API GenericAssociationSequence final : public ForwardingSequence {
public:
    using Owner = RefBase<NSInterface::ClassObjectIntf *>;
    /// `add` is true for an element that enters. `end` is the opposite end, the property of the element.
    using Hook = void (*)(Ref element, Owner const & owner, internal::PropertyDescriptor const * end, bool add);

    /// Does all that a push of the element at the back comes to, the hook and the change of the sequence. False, and
    /// nothing done, if it knows no short way for the element.
    using Push = bool (*)(Ref const & element, Owner const & owner, internal::PropertyDescriptor const * end);

    /// Throws the NULL text on a null handle. `end` must outlive the sequence.
    GenericAssociationSequence(SequenceHandle const & wrapped, internal::PropertyDescriptor const * end, Owner owner,
                               Hook hook, Push push = nullptr);

    void generic_clear(Deviant deviant) override;
    IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override {
        entersIfAccepted(deviant, element);
        return fWrapped->generic_insert(deviant, where, std::move(element));
    }
    void generic_insert(Deviant deviant, int index, Ref element) override {
        entersIfAccepted(deviant, element);
        fWrapped->generic_insert(deviant, index, std::move(element));
    }
    void generic_erase(Deviant deviant, int index) override {
        leaves(fWrapped->generic_at(deviant, index));
        fWrapped->generic_erase(deviant, index);
    }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * first, IteratorIntf const * last) override;
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) override {
        leaves(where->current(deviant));
        return fWrapped->generic_erase(deviant, where);
    }
    void generic_pop_back(Deviant deviant) override {
        leaves(fWrapped->generic_back(deviant));
        fWrapped->generic_pop_back(deviant);
    }
    void generic_pop_front(Deviant deviant) override {
        leaves(fWrapped->generic_front(deviant));
        fWrapped->generic_pop_front(deviant);
    }
    void generic_push_back(Deviant deviant, Ref element) override {
        if (fPush == nullptr || !fPush(element, fOwner, fEnd)) {
            entersIfAccepted(deviant, element);
            fWrapped->generic_push_back(deviant, std::move(element));
        }
    }
    void generic_push_front(Deviant deviant, Ref element) override {
        entersIfAccepted(deviant, element);
        fWrapped->generic_push_front(deviant, std::move(element));
    }
    void generic_replace(Deviant deviant, int index, Ref element) override;
    bool generic_eraseElement(Deviant deviant, Ref element) override;

private:
    void enters(Ref const & element) const { fHook(element, fOwner, fEnd, true); }
    /// An element that the sequence refuses is left to it: it throws its own text.
    void entersIfAccepted(Deviant deviant, Ref const & element) const {
        if (fWrapped->generic_accepts(deviant, element)) {
            enters(element);
        }
    }
    void leaves(Ref element) const { fHook(std::move(element), fOwner, fEnd, false); }

    internal::PropertyDescriptor const * fEnd;
    Owner fOwner;
    Hook fHook;
    Push fPush;
};

} // namespace ZEL::Generic
