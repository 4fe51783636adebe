#pragma once

#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceField.h>
#include <ZEL/sequences/SequenceProxy.h>

#include <vector>

namespace ZEL::Generic {

/// The values of a stored property of one object as they are in one deviant.
///
/// Holds no elements: at each call it finds the field in the state of the object, for a write in the state to write,
/// which is what copies the object's state into the deviant. So it stays good across transactions, deviants of the
/// object see their own content, and every write raises outside of a transaction before anything has changed. Within
/// one, a write that would change nothing, as of an element that is there already, does not ask for the state to write.
///
/// The object is not counted. Reading a sequence whose model has gone raises "object accessed after its model has been
/// destroyed" without touching the object. Iterators are plain positions and are told when the sequence goes.
class ZEL_API GenericDeviantSequence final : public SequenceProxy {
public:
    class Iterator;

    /// `field` must outlive the sequence.
    GenericDeviantSequence(NSInterface::ClassObjectIntf const * object, Deviant deviant, SequenceField const & field)
        : fObject(object), fDeviant(deviant), fField(&field) {}
    ~GenericDeviantSequence() override;

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
    struct Bodies;
    struct Texts;

    /// Calls `function(kind, storage)` with `Bodies` or `Texts` and the storage to read.
    template <class Function> auto visit(Function function) const;
    void checkModel() const;
    void checkWritable() const;
    void insertAt(int index, Ref const & element);
    void eraseAt(int index);
    void orphanIterators(int from) const;

    NSInterface::ClassObjectIntf const * fObject;
    Deviant fDeviant; ///< the deviant whose state is used, whatever an operation is given
    SequenceField const * fField;
    mutable std::vector<Iterator *> fIterators;
};

/// A position. Not moved by writes to the sequence. Once its sequence has gone it raises on everything but destruction.
class ZEL_API GenericDeviantSequence::Iterator final : public IteratorProxy {
public:
    /// Raises "null sequence for iterator constructor".
    Iterator(GenericDeviantSequence const * sequence, int position);
    ~Iterator() override;

    [[nodiscard]] Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;
    [[nodiscard]] std::unique_ptr<IteratorIntf> clone() const override;
    [[nodiscard]] bool equal(IteratorIntf const * other) const override;
    [[nodiscard]] int position() const override;

    void orphan() noexcept { fSequence = nullptr; }
    [[nodiscard]] int index() const noexcept { return fPosition; }

private:
    Iterator(Iterator const & other);

    GenericDeviantSequence const * fSequence; ///< null when orphaned
    int fPosition;
};

} // namespace ZEL::Generic
