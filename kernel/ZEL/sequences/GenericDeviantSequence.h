#pragma once

#include <ZEL/sequences/IndexedSequence.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceField.h>
#include <ZEL/sequences/SequenceProxy.h>

#include <vector>

namespace ZEL::Generic {

/// The values of a stored property of one object as they are in one deviant.
///
/// Holds no elements: at each call it finds the field in the state of the object, for a write in the state to write,
/// which is what copies the object's state into the deviant. So it stays valid across transactions, deviants of the
/// object see their own content, and every write throws outside of a transaction before anything has changed. Within
/// one, a write that would change nothing, such as pushing an element that is there, does not ask for the state to
/// write.
///
/// The object is not counted. Reading a sequence whose model has gone throws "object accessed after its model has been
/// destroyed" without touching the object. Iterators are plain positions and are told when the sequence goes.
class ZEL_API GenericDeviantSequence final : public IndexedSequence<GenericDeviantSequence, SequenceProxy> {
public:
    class Iterator;

    /// `field` must outlive the sequence.
    GenericDeviantSequence(NSInterface::ClassObjectIntf const * object, Deviant deviant, SequenceField const & field)
        : fObject(object), fDeviant(deviant), fField(&field) {}
    ~GenericDeviantSequence() override;

    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override;
    void generic_replace(Deviant deviant, int index, Ref element) override;
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const * fallback) const override;
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    [[nodiscard]] bool generic_isUnique() const override { return fField->isUnique; }
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

private:
    friend IndexedSequence;
    struct Bodies;
    struct Texts;

    template <class Place> [[nodiscard]] Ref refAt(Deviant deviant, Place place) const;
    void checkWritable() const;
    void insertAt(int index, Ref const & element);
    void eraseAt(int index);

    /// Calls `function(kind, storage)` with `Bodies` or `Texts` and the storage to read.
    template <class Function> auto visit(Function function) const;
    void checkModel() const;
    void orphanIterators(int from) const;

    NSInterface::ClassObjectIntf const * fObject;
    Deviant fDeviant; ///< the deviant whose state is used, whichever one an operation is called with
    SequenceField const * fField;
    mutable std::vector<Iterator *> fIterators;
};

extern template class IndexedSequence<GenericDeviantSequence, SequenceProxy>;

/// A position. Not moved by writes to the sequence. Once its sequence has gone it throws on everything but destruction.
class ZEL_API GenericDeviantSequence::Iterator final : public IteratorProxy {
public:
    /// Throws "null sequence for iterator constructor".
    Iterator(GenericDeviantSequence const * sequence, int position);
    ~Iterator() override;

    [[nodiscard]] Ref current(Deviant deviant) const override {
        requireSequence("dereferencing an invalid iterator");
        return fSequence->generic_at(deviant, fPosition);
    }
    void next(Deviant) override {
        requireSequence("++ on an invalid iterator");
        ++fPosition;
    }
    void previous(Deviant) override {
        requireSequence("-- on an invalid iterator");
        --fPosition;
    }
    [[nodiscard]] IteratorPtr clone() const override;
    [[nodiscard]] bool equal(IteratorIntf const * other) const override;
    [[nodiscard]] int position() const override { return fPosition; }

    void orphan() noexcept { fSequence = nullptr; }
    [[nodiscard]] int index() const noexcept { return fPosition; }

private:
    Iterator(Iterator const & other) : Iterator(other.fSequence, other.fPosition) {}

    /// Throws the text when orphaned.
    void requireSequence(char const * text) const;

    GenericDeviantSequence const * fSequence; ///< null when orphaned
    int fPosition;
};

} // namespace ZEL::Generic
