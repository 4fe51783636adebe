#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/SequenceHandle.h>
#include <ZEL/sequences/SequenceProxy.h>

#include <utility>

namespace ZEL::Generic {

/// A counted sequence that passes every operation on to another one, on which it holds a count. A derived class says
/// what it does besides, and may leave the making of the other one to the first operation that is passed on.
class ZEL_API ForwardingSequence : public SequenceProxy {
public:
    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override {
        return wrapped().generic_at(deviant, index);
    }
    [[nodiscard]] Ref generic_front(Deviant deviant) const override { return wrapped().generic_front(deviant); }
    [[nodiscard]] Ref generic_back(Deviant deviant) const override { return wrapped().generic_back(deviant); }
    [[nodiscard]] IteratorPtr generic_begin(Deviant deviant) const override { return wrapped().generic_begin(deviant); }
    [[nodiscard]] IteratorPtr generic_end(Deviant deviant) const override { return wrapped().generic_end(deviant); }
    void generic_clear(Deviant deviant) override { wrapped().generic_clear(deviant); }
    [[nodiscard]] int generic_size(Deviant deviant) const override { return wrapped().generic_size(deviant); }
    IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override {
        return wrapped().generic_insert(deviant, where, std::move(element));
    }
    void generic_insert(Deviant deviant, int index, Ref element) override {
        wrapped().generic_insert(deviant, index, std::move(element));
    }
    void generic_erase(Deviant deviant, int index) override { wrapped().generic_erase(deviant, index); }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * first, IteratorIntf const * last) override {
        return wrapped().generic_erase(deviant, first, last);
    }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) override {
        return wrapped().generic_erase(deviant, where);
    }
    void generic_pop_back(Deviant deviant) override { wrapped().generic_pop_back(deviant); }
    void generic_pop_front(Deviant deviant) override { wrapped().generic_pop_front(deviant); }
    void generic_push_back(Deviant deviant, Ref element) override {
        wrapped().generic_push_back(deviant, std::move(element));
    }
    void generic_push_front(Deviant deviant, Ref element) override {
        wrapped().generic_push_front(deviant, std::move(element));
    }
    void generic_replace(Deviant deviant, int index, Ref element) override {
        wrapped().generic_replace(deviant, index, std::move(element));
    }
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override {
        return wrapped().generic_contains(deviant, std::move(element));
    }
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const * fallback) const override {
        return wrapped().generic_getOrcaName(immutableSequence, immutableElement, fallback);
    }
    [[nodiscard]] bool generic_isRandomAccess() const override { return wrapped().generic_isRandomAccess(); }
    [[nodiscard]] IteratorPtr generic_iteratorAt(Deviant deviant, int index) const override {
        return wrapped().generic_iteratorAt(deviant, index);
    }
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override {
        return wrapped().generic_fetch(deviant, index, bodies, count);
    }
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override {
        return wrapped().generic_indexOf(deviant, std::move(element));
    }
    bool generic_eraseElement(Deviant deviant, Ref element) override {
        return wrapped().generic_eraseElement(deviant, std::move(element));
    }
    [[nodiscard]] bool generic_isUnique() const override { return wrapped().generic_isUnique(); }
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override {
        return wrapped().generic_accepts(deviant, element);
    }

protected:
    /// Throws the NULL text on a null handle.
    explicit ForwardingSequence(SequenceHandle const & wrapped) : fWrapped(wrapped.getImplementation()) {}

    ForwardingSequence() = default;

    [[nodiscard]] SequenceIntf & wrapped() const {
        if (!fWrapped) [[unlikely]] {
            fWrapped = makeWrapped();
        }
        return *fWrapped;
    }
    /// For a sequence that was made without the one under it.
    [[nodiscard]] virtual SequencePtr makeWrapped() const { raiseNullReference(); }

    mutable SequencePtr fWrapped;
};

} // namespace ZEL::Generic
