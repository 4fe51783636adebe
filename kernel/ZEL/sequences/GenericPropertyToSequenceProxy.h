#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/SequenceProxy.h>
#include <ZEL/values/RefBase.h>

namespace ZEL::Generic {

/// Shows a single-valued property of an object as a sequence of its one value, or of none.
///
/// Adding sets the value, so an existing one is replaced, and every form of erasing removes it. Two operations are
/// laxer than one expects, on purpose: `generic_contains` compares presence only, not the elements, and
/// `generic_replace` takes any index. An index that does not fit throws "for at i cannot be anything but 0" or "Cannot
/// add elements.".
class ZEL_API GenericPropertyToSequenceProxy : public SequenceProxy {
public:
    using ObjectHandle = RefBase<NSInterface::ClassObjectIntf *>;

    /// `methods` must outlive the sequence. With a `fixed` other than 0, clearing does nothing.
    GenericPropertyToSequenceProxy(ObjectHandle object, PropertyToSequenceMethods const * methods, int fixed)
        : fObject(std::move(object)), fMethods(methods), fFixed(fixed) {}

    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override;
    [[nodiscard]] Ref generic_front(Deviant deviant) const override;
    [[nodiscard]] Ref generic_back(Deviant deviant) const override { return generic_front(deviant); }
    [[nodiscard]] IteratorPtr generic_begin(Deviant deviant) const override { return iterator(!has(deviant)); }
    [[nodiscard]] IteratorPtr generic_end(Deviant) const override { return iterator(true); }
    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override { return has(deviant) ? 1 : 0; }
    IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override;
    void generic_insert(Deviant deviant, int index, Ref element) override;
    void generic_erase(Deviant deviant, int) override { remove(deviant); }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * first, IteratorIntf const *) override {
        return generic_erase(deviant, first);
    }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) override;
    void generic_pop_back(Deviant deviant) override { remove(deviant); }
    void generic_pop_front(Deviant deviant) override { remove(deviant); }
    void generic_push_back(Deviant deviant, Ref element) override { generic_insert(deviant, 0, std::move(element)); }
    void generic_push_front(Deviant deviant, Ref element) override { generic_insert(deviant, 0, std::move(element)); }
    void generic_replace(Deviant deviant, int, Ref element) override { assign(deviant, element); }
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override {
        return generic_at(deviant, 0).isNull() == element.isNull(); // presence alone decides: on purpose, see the class
    }
    [[nodiscard]] char const * generic_getOrcaName(bool, bool, char const * fallback) const override {
        return fallback;
    }
    /// The value is compared, unlike in `generic_contains`.
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override {
        return has(deviant) && get(deviant).isSameElement(element) ? 0 : -1;
    }

protected:
    /// Sets the value: what every form of adding and of replacing comes to.
    virtual void assign(Deviant deviant, Ref const & element);
    [[nodiscard]] NSInterface::ClassObjectIntf * object() const noexcept {
        return fObject.getImplementationWithoutAssert();
    }

private:
    [[nodiscard]] bool has(Deviant deviant) const { return fMethods->has(object(), deviant); }
    [[nodiscard]] Ref get(Deviant deviant) const { return fMethods->get(object(), deviant); }
    void remove(Deviant deviant) { fMethods->remove(object(), deviant); }
    [[nodiscard]] IteratorPtr iterator(bool isEnd) const;

    ObjectHandle fObject;
    PropertyToSequenceMethods const * fMethods;
    int fFixed;
};

/// At the value, whether there is one or not, or at the end.
class ZEL_API GenericPropertyToSequenceIterator final : public IteratorOf<GenericPropertyToSequenceIterator> {
public:
    using ObjectHandle = GenericPropertyToSequenceProxy::ObjectHandle;

    GenericPropertyToSequenceIterator(ObjectHandle object, PropertyToSequenceMethods const * methods, bool isEnd)
        : fObject(std::move(object)), fMethods(methods), fIsEnd(isEnd) {}

    [[nodiscard]] Ref current(Deviant deviant) const override {
        return fMethods->get(fObject.getImplementationWithoutAssert(), deviant);
    }
    void next(Deviant) override { fIsEnd = true; }
    void previous(Deviant) override { fIsEnd = false; }
    [[nodiscard]] int position() const override { return fIsEnd ? 1 : 0; }

    [[nodiscard]] bool isEnd() const noexcept { return fIsEnd; }

private:
    friend IteratorOf;

    [[nodiscard]] bool isAt(GenericPropertyToSequenceIterator const & other) const noexcept {
        return other.fMethods == fMethods && other.fIsEnd == fIsEnd;
    }

    ObjectHandle fObject;
    PropertyToSequenceMethods const * fMethods;
    bool fIsEnd;
};

} // namespace ZEL::Generic
