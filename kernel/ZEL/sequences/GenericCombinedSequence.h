#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/GenericFilteredSequence.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceProxy.h>

#include <utility>
#include <vector>

namespace ZEL::Generic::combined_sequence_internal {

/// The elements of several filtered sequences one after the other: a derived union.
///
/// A pushed element goes to the first of them that takes it. Elements cannot be inserted or replaced, since a place
/// between two sequences belongs to neither. An index beyond the end throws "An Internal Error has occurred".
class ZEL_API GenericCombinedSequence final : public SequenceProxy {
public:
    using SubSequence = filtered_sequence_internal::GenericFilteredSequence;
    class Iterator;

    GenericCombinedSequence() = default;
    void reserve(unsigned int count) { fSubSequences.reserve(count); }
    void append(std::unique_ptr<SubSequence> subSequence) { fSubSequences.emplace_back(subSequence.release()); }

    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override;
    [[nodiscard]] Ref generic_front(Deviant deviant) const override { return generic_at(deviant, 0); }
    [[nodiscard]] Ref generic_back(Deviant deviant) const override {
        return generic_at(deviant, generic_size(deviant) - 1);
    }
    [[nodiscard]] IteratorPtr generic_begin(Deviant deviant) const override;
    [[nodiscard]] IteratorPtr generic_end(Deviant deviant) const override;
    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant deviant) const override;
    IteratorPtr generic_insert(Deviant, IteratorIntf const *, Ref) override { raiseCannotInsert(); }
    void generic_insert(Deviant, int, Ref) override { raiseCannotInsert(); }
    void generic_erase(Deviant deviant, int index) override;
    IteratorPtr generic_erase(Deviant, IteratorIntf const *, IteratorIntf const *) override { raiseCannotModify(); }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * where) override;
    void generic_pop_back(Deviant deviant) override;
    void generic_pop_front(Deviant deviant) override;
    void generic_push_back(Deviant deviant, Ref element) override {
        SubSequence & target = subSequenceFor(element);
        target.generic_push_back(deviant, std::move(element));
    }
    void generic_push_front(Deviant deviant, Ref element) override {
        SubSequence & target = subSequenceFor(element);
        target.generic_push_front(deviant, std::move(element));
    }
    void generic_replace(Deviant, int, Ref) override { raiseCannotModify(); }
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] char const * generic_getOrcaName(bool, bool, char const * fallback) const override {
        return fallback;
    }
    [[nodiscard]] int generic_fetch(Deviant deviant, int index, NSInterface::ObjectIntf ** bodies,
                                    int count) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    bool generic_eraseElement(Deviant deviant, Ref element) override;
    [[nodiscard]] bool generic_accepts(Deviant deviant, Ref const & element) const override;

private:
    struct Place {
        int sub;
        int position;
    };

    [[noreturn]] static void raiseCannotInsert() { raiseInternalError("cannot insert into this data structure"); }
    [[noreturn]] static void raiseCannotModify() { raiseInternalError("cannot modify this data structure"); }

    [[nodiscard]] int count() const noexcept { return static_cast<int>(fSubSequences.size()); }
    [[nodiscard]] SubSequence & sub(int index) const { return *fSubSequences[static_cast<std::size_t>(index)]; }
    [[nodiscard]] bool isEmptyAt(Deviant deviant, int index) const;
    /// Finds positions without a walk; the others are stepped through with their own iterators.
    [[nodiscard]] bool isCounted(int index) const { return sub(index).generic_isRandomAccess(); }
    /// The first sub-sequence that takes the element, or -1.
    [[nodiscard]] int get_sub_sequence(Ref const & element) const;
    [[nodiscard]] SubSequence & subSequenceFor(Ref const & element) const;
    /// The place of an index; one beyond the last sub-sequence, with what is left over, for an index at or past the
    /// end.
    [[nodiscard]] Place placeOf(Deviant deviant, int index) const;
    [[nodiscard]] Iterator const & ownIterator(IteratorIntf const * iterator) const;

    std::vector<SmartPtr<SubSequence, ReferenceCounted>> fSubSequences;
};

/// Number of a sub-sequence, and a position inside it. Keeps an iterator of a sub-sequence that hides elements, so that
/// a loop is linear.
class ZEL_API GenericCombinedSequence::Iterator final : public IteratorOf<GenericCombinedSequence::Iterator> {
public:
    using SubIterator = SubSequence::Iterator;

    Iterator(GenericCombinedSequence const * sequence, int sub, int position)
        : fSequence(sequence), fSub(sub), fPosition(position) {}

    [[nodiscard]] Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;

private:
    friend class GenericCombinedSequence;
    friend IteratorOf;

    Iterator(Iterator const & other);

    [[nodiscard]] bool isAt(Iterator const & other) const noexcept {
        return other.fSequence == fSequence && other.fSub == fSub && other.fPosition == fPosition;
    }
    [[nodiscard]] bool isEndOfSub(Deviant deviant) const;
    /// To the first element of the sub-sequence `sub` or, if it has none, of those after it.
    void enter(Deviant deviant, int sub);
    /// The iterator of the present sub-sequence, at the present position.
    SubIterator & inner(Deviant deviant) const;

    GenericCombinedSequence const * fSequence;
    int fSub;
    int fPosition;
    mutable std::unique_ptr<SubIterator> fInner; ///< made when needed
};

} // namespace ZEL::Generic::combined_sequence_internal
