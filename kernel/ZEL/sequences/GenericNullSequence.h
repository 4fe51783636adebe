#pragma once

#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceIntf.h>

#include <memory>

namespace ZEL::Generic {

/// The value of a property that has no source of values: always empty, takes nothing, and never throws. One object,
/// not counted.
class ZEL_API GenericNullSequence final : public SequenceIntf {
public:
    /// All of them are equal, so that a loop over the null sequence runs zero times.
    class Iterator final : public IteratorProxy {
    public:
        [[nodiscard]] Ref current(Deviant) const override { return Ref(); }
        void next(Deviant) override {}
        void previous(Deviant) override {}
        [[nodiscard]] IteratorPtr clone() const override { return iterator(); }
        [[nodiscard]] bool equal(IteratorIntf const *) const override { return true; }
    };

    [[nodiscard]] static GenericNullSequence * getSingleton();

    [[nodiscard]] Ref generic_at(Deviant, int) const override { return Ref(); }
    [[nodiscard]] Ref generic_front(Deviant) const override { return Ref(); }
    [[nodiscard]] Ref generic_back(Deviant) const override { return Ref(); }
    [[nodiscard]] IteratorPtr generic_begin(Deviant) const override { return iterator(); }
    [[nodiscard]] IteratorPtr generic_end(Deviant) const override { return iterator(); }
    void generic_clear(Deviant) override {}
    [[nodiscard]] int generic_size(Deviant) const override { return 0; }
    IteratorPtr generic_insert(Deviant, IteratorIntf const *, Ref) override { return iterator(); }
    void generic_insert(Deviant, int, Ref) override {}
    void generic_erase(Deviant, int) override {}
    IteratorPtr generic_erase(Deviant, IteratorIntf const *, IteratorIntf const *) override { return iterator(); }
    IteratorPtr generic_erase(Deviant, IteratorIntf const *) override { return iterator(); }
    void generic_pop_back(Deviant) override {}
    void generic_pop_front(Deviant) override {}
    void generic_push_back(Deviant, Ref) override {}
    void generic_push_front(Deviant, Ref) override {}
    void generic_replace(Deviant, int, Ref) override {}
    [[nodiscard]] bool generic_contains(Deviant, Ref) const override { return false; }
    [[nodiscard]] char const * generic_getOrcaName(bool, bool, char const * fallback) const override {
        return fallback;
    }

private:
    GenericNullSequence();

    [[nodiscard]] static IteratorPtr iterator() { return std::make_unique<Iterator>(); }
};

} // namespace ZEL::Generic
