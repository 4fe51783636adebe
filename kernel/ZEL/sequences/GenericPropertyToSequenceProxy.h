#pragma once

#include <ZEL/deviants/ClassObjectIntf.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/SequenceProxy.h>
#include <ZEL/values/RefBase.h>

namespace ZEL::Generic {

/// Shows a single-valued property of an object as a sequence of its one value, or of none.
///
/// Adding sets the value, so an existing one is replaced, and every form of erasing removes it. Two operations are laxer
/// than one expects, on purpose: `generic_contains` compares presence only, not the elements, and `generic_replace`
/// takes any index. An index that does not fit throws "for at i cannot be anything but 0" or "Cannot add elements.".
class ZEL_API GenericPropertyToSequenceProxy : public SequenceProxy {
public:
    using ObjectHandle = RefBase<NSInterface::ClassObjectIntf *>;

    /// `methods` must outlive the sequence. With a `fixed` other than 0, clearing does nothing.
    GenericPropertyToSequenceProxy(ObjectHandle object, PropertyToSequenceMethods const * methods, int fixed)
        : fObject(std::move(object)), fMethods(methods), fFixed(fixed) {}

    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override;
    [[nodiscard]] Ref generic_front(Deviant deviant) const override;
    [[nodiscard]] Ref generic_back(Deviant deviant) const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_begin(Deviant deviant) const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_end(Deviant deviant) const override;
    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override;
    std::unique_ptr<IteratorIntf> generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override;
    void generic_insert(Deviant deviant, int index, Ref element) override;
    void generic_erase(Deviant deviant, int index) override;
    std::unique_ptr<IteratorIntf> generic_erase(Deviant deviant, IteratorIntf const * first,
                                                IteratorIntf const * last) override;
    std::unique_ptr<IteratorIntf> generic_erase(Deviant deviant, IteratorIntf const * where) override;
    void generic_pop_back(Deviant deviant) override;
    void generic_pop_front(Deviant deviant) override;
    void generic_push_back(Deviant deviant, Ref element) override;
    void generic_push_front(Deviant deviant, Ref element) override;
    void generic_replace(Deviant deviant, int index, Ref element) override;
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const * fallback) const override;

    /// The value is compared, unlike in `generic_contains`.
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;

protected:
    /// Sets the value: what every form of adding and of replacing comes to.
    virtual void assign(Deviant deviant, Ref const & element);
    [[nodiscard]] NSInterface::ClassObjectIntf * object() const noexcept {
        return fObject.getImplementationWithoutAssert();
    }

private:
    [[nodiscard]] std::unique_ptr<IteratorIntf> iterator(bool isEnd) const;

    ObjectHandle fObject;
    PropertyToSequenceMethods const * fMethods;
    int fFixed;
};

/// At the value, whether there is one or not, or at the end.
class ZEL_API GenericPropertyToSequenceIterator final : public IteratorProxy {
public:
    using ObjectHandle = GenericPropertyToSequenceProxy::ObjectHandle;

    GenericPropertyToSequenceIterator(ObjectHandle object, PropertyToSequenceMethods const * methods, bool isEnd)
        : fObject(std::move(object)), fMethods(methods), fIsEnd(isEnd) {}

    [[nodiscard]] Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> clone() const override;
    [[nodiscard]] bool equal(IteratorIntf const * other) const override;
    [[nodiscard]] int position() const override;

    [[nodiscard]] bool isEnd() const noexcept { return fIsEnd; }

private:
    ObjectHandle fObject;
    PropertyToSequenceMethods const * fMethods;
    bool fIsEnd;
};

} // namespace ZEL::Generic
