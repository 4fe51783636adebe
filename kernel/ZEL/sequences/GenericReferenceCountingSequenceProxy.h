#pragma once

#include <ZEL/sequences/SequenceHandle.h>
#include <ZEL/sequences/SequenceProxy.h>

namespace ZEL::Generic {

/// Gives a storage that stands alone, such as the list of a query's results, the life of a handle: it owns the storage
/// and passes everything on to it.
class ZEL_API GenericReferenceCountingSequenceProxy final : public SequenceProxy {
public:
    /// Takes a storage into ownership; of a body that counts itself it holds a count. Raises the NULL text on a null handle.
    explicit GenericReferenceCountingSequenceProxy(SequenceHandle const & wrapped);

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
    [[nodiscard]] bool generic_isRandomAccess() const override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> generic_iteratorAt(Deviant deviant, int index) const override;
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    bool generic_eraseElement(Deviant deviant, Ref element) override;
    [[nodiscard]] bool generic_isUnique() const override;
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

private:
    struct Release {
        void operator()(SequenceIntf * body) const;
    };

    std::unique_ptr<SequenceIntf, Release> fWrapped;
};

} // namespace ZEL::Generic
