#pragma once

#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceIntf.h>

namespace ZEL::Generic {

/// The value of a property that has no source of values: always empty, takes nothing, and never raises. One object,
/// not counted.
class ZEL_API GenericNullSequence final : public SequenceIntf {
public:
    class Iterator;

    [[nodiscard]] static GenericNullSequence * getSingleton();

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

private:
    GenericNullSequence();
};

/// All of them are equal, so that a loop over the null sequence runs zero times.
class ZEL_API GenericNullSequence::Iterator final : public IteratorProxy {
public:
    [[nodiscard]] Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> clone() const override;
    [[nodiscard]] bool equal(IteratorIntf const * other) const override;
};

} // namespace ZEL::Generic
