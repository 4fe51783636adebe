#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/GenericFilter.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceHandle.h>
#include <ZEL/sequences/SequenceProxy.h>

namespace ZEL::Generic::filtered_sequence_internal {

/// Shows the elements of another sequence that a filter accepts, perhaps as other elements, and writes through it.
///
/// Elements pass the filter with the deviant of the handle under it. With a pure transform sizes and positions are
/// those of the sequence under it; else they are found by a walk, so loops use iterators. An index that the view does
/// not have, and an element that it does not take, throw "An Internal Error has occurred".
class ZEL_API GenericFilteredSequence final : public SequenceProxy {
public:
    class Iterator;

    /// Owns the filter's data from here on. Throws the NULL text on a null handle.
    GenericFilteredSequence(SequenceHandle const & underlying, GenericFilter filter);
    ~GenericFilteredSequence() override;

    /// With the deviant of the sequence under this one in the element.
    [[nodiscard]] Ref filterGet(Ref stored) const { return fFilter.filterGet(std::move(stored).withDeviant(fDeviant)); }
    [[nodiscard]] Ref filterSet(Ref shown) const { return fFilter.filterSet(std::move(shown).withDeviant(fDeviant)); }

    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override {
        return shownAt(deviant, underlyingIndex(deviant, index));
    }
    [[nodiscard]] Ref generic_front(Deviant deviant) const override { return generic_at(deviant, 0); }
    [[nodiscard]] Ref generic_back(Deviant deviant) const override;
    [[nodiscard]] IteratorPtr generic_begin(Deviant deviant) const override {
        return wrap(deviant, fUnderlying->generic_begin(deviant));
    }
    [[nodiscard]] IteratorPtr generic_end(Deviant deviant) const override {
        return wrap(deviant, fUnderlying->generic_end(deviant));
    }
    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override {
        return shownBefore(deviant, fUnderlying->generic_size(deviant));
    }
    IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override;
    void generic_insert(Deviant deviant, int index, Ref element) override;
    void generic_erase(Deviant deviant, int index) override;
    IteratorPtr generic_erase(Deviant, IteratorIntf const *, IteratorIntf const *) override {
        raiseInternalError("range erase not supported");
    }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) override;
    void generic_pop_back(Deviant deviant) override;
    void generic_pop_front(Deviant deviant) override { generic_erase(deviant, 0); }
    void generic_push_back(Deviant deviant, Ref element) override;
    void generic_push_front(Deviant deviant, Ref element) override;
    void generic_replace(Deviant deviant, int index, Ref element) override;
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const * fallback) const override {
        return fUnderlying->generic_getOrcaName(immutableSequence, immutableElement, fallback);
    }
    [[nodiscard]] bool generic_isRandomAccess() const override {
        return isPure() && fUnderlying->generic_isRandomAccess();
    }
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    bool generic_eraseElement(Deviant deviant, Ref element) override;
    [[nodiscard]] bool generic_isUnique() const override { return fUnderlying->generic_isUnique(); }
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

private:
    [[nodiscard]] bool isPure() const noexcept { return fFilter.filterGetIsAPureTransform(); }
    [[nodiscard]] Ref shownAt(Deviant deviant, int underlyingIndex) const {
        return filterGet(fUnderlying->generic_at(deviant, underlyingIndex));
    }
    /// Where the `index`-th shown element is in the sequence under this one.
    [[nodiscard]] int underlyingIndex(Deviant deviant, int index) const;
    /// How many elements before that place are shown.
    [[nodiscard]] int shownBefore(Deviant deviant, int underlyingIndex) const;
    [[nodiscard]] Ref checkedFilterSet(Ref shown) const;
    [[nodiscard]] IteratorPtr wrap(Deviant deviant, IteratorPtr inner) const;

    // The ends of the sequence under this one move with its writes, those that do not pass through here included. A
    // place that is a plain number is compared with the size; for others the ends are made anew with each iterator and
    // each write here.
    [[nodiscard]] bool isAtBegin(Deviant deviant, IteratorIntf const & inner) const;
    [[nodiscard]] bool isAtEnd(Deviant deviant, IteratorIntf const & inner) const;
    void dropEnds() const noexcept;

    SequencePtr fUnderlying;
    GenericFilter fFilter;
    Deviant fDeviant; ///< of the underlying handle
    mutable IteratorPtr fBegin;
    mutable IteratorPtr fEnd;
};

/// Passes over hidden elements in both directions. Holds its sequence.
class ZEL_API GenericFilteredSequence::Iterator final : public IteratorOf<GenericFilteredSequence::Iterator> {
public:
    /// Moves `inner` on to the first shown element at or after it.
    Iterator(Deviant deviant, GenericFilteredSequence const * sequence, IteratorPtr inner);

    [[nodiscard]] Ref current(Deviant deviant) const override { return fSequence->filterGet(fInner->current(deviant)); }
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;
    [[nodiscard]] int position() const override { return fSequence->isPure() ? fInner->position() : kNoPosition; }

    [[nodiscard]] bool isEnd(Deviant deviant) const { return fSequence->isAtEnd(deviant, *fInner); }
    [[nodiscard]] IteratorIntf const * inner() const noexcept { return fInner.get(); }

private:
    friend IteratorOf;

    Iterator(Iterator const & other) : IteratorOf(other), fSequence(other.fSequence), fInner(other.fInner->clone()) {}

    [[nodiscard]] bool isAt(Iterator const & other) const { return fInner->equal(other.fInner.get()); }

    SmartPtr<GenericFilteredSequence, ReferenceCounted> fSequence;
    IteratorPtr fInner;
};

} // namespace ZEL::Generic::filtered_sequence_internal
