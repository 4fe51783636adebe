#pragma once

#include <ZEL/sequences/IndexedSequence.h>

#include <cstddef>
#include <set>
#include <vector>

namespace ZEL::Generic::MultiIndexImplInternal {

/// A stand-alone storage with two indices: by position, and ordered by keys for quick search and, if it is unique, for
/// the refusal of a second element with an equal key, which is silent. Holds its elements as handles do, with a count;
/// `MultiIndexImpl` adds their type. Changing it is linear in the elements that move.
class ZEL_API MultiIndexImplForRefsHelper : public IndexedSequence<MultiIndexImplForRefsHelper, SequenceIntf> {
public:
    class Iterator;

    MultiIndexImplForRefsHelper(MultiIndexImplForRefsHelper const &) = delete;
    MultiIndexImplForRefsHelper & operator=(MultiIndexImplForRefsHelper const &) = delete;

    void generic_clear(Deviant deviant) override;
    [[nodiscard]] int generic_size(Deviant) const override { return static_cast<int>(fByPosition.size()); }
    using IndexedSequence::generic_insert;
    /// The result is at the element or, if it was refused, at the one with an equal key.
    IteratorPtr generic_insert(Deviant deviant, IteratorIntf const * where, Ref element) override;
    /// Nothing, if the sequence is unique and has the key at another place.
    void generic_replace(Deviant deviant, int index, Ref element) override;
    /// Whether there is an element with an equal key.
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override;
    [[nodiscard]] int generic_indexOf(Deviant deviant, Ref element) const override;
    [[nodiscard]] bool generic_isUnique() const override { return fIsUnique; }

protected:
    /// The element as one of the class that is stored; throws for another.
    using ToElement = Ref (*)(Ref const & element);
    /// Compares keys of stored elements.
    using IsLess = bool (*)(Ref const & left, Ref const & right);

    MultiIndexImplForRefsHelper(bool isUnique, ToElement toElement, IsLess isLess)
        : fIsUnique(isUnique), fToElement(toElement), fByKey(ByKey{isLess}) {}

private:
    friend IndexedSequence;

    struct Node {
        Ref element;
        mutable std::size_t index;
    };
    struct ByKey {
        using is_transparent = void;

        bool operator()(Node const & left, Node const & right) const { return isLess(left.element, right.element); }
        bool operator()(Node const & left, Ref const & right) const { return isLess(left.element, right); }
        bool operator()(Ref const & left, Node const & right) const { return isLess(left, right.element); }

        IsLess isLess;
    };
    using Nodes = std::multiset<Node, ByKey>;

    template <class Place> [[nodiscard]] Ref refAt(Deviant deviant, Place place) const {
        return fByPosition[place(fByPosition.size())]->element.withDeviant(deviant);
    }
    void insertAt(int index, Ref const & element) { static_cast<void>(insertNode(index, element)); }
    void eraseAt(int index);
    void eraseRange(int begin, int end);
    /// Of an iterator of this storage; throws "An Internal Error has occurred" for another.
    [[nodiscard]] int positionOf(IteratorIntf const * iterator) const;

    Node const & insertNode(int index, Ref const & element);
    /// Null at the end.
    [[nodiscard]] Node const * nodeAt(std::size_t index) const;
    void renumberFrom(std::size_t index) const;

    bool fIsUnique;
    ToElement fToElement;
    Nodes fByKey;
    std::vector<Nodes::const_iterator> fByPosition;
};

/// Stays at its element when others come and go. The end is a place of its own, which cannot be read.
class ZEL_API MultiIndexImplForRefsHelper::Iterator final : public IteratorOf<MultiIndexImplForRefsHelper::Iterator> {
public:
    /// Throws the texts for a bad index; the size is that of the end.
    Iterator(MultiIndexImplForRefsHelper const * storage, int index);
    Iterator(MultiIndexImplForRefsHelper const * storage, Node const & node) : fStorage(storage), fNode(&node) {}

    [[nodiscard]] Ref current(Deviant deviant) const override;
    void next(Deviant deviant) override;
    void previous(Deviant deviant) override;
    [[nodiscard]] int position() const override;

private:
    friend class MultiIndexImplForRefsHelper;
    friend IteratorOf;

    [[nodiscard]] bool isAt(Iterator const & other) const noexcept {
        return other.fStorage == fStorage && other.fNode == fNode;
    }

    MultiIndexImplForRefsHelper const * fStorage;
    Node const * fNode;
};

} // namespace ZEL::Generic::MultiIndexImplInternal

extern template class ZEL::Generic::IndexedSequence<ZEL::Generic::MultiIndexImplInternal::MultiIndexImplForRefsHelper,
                                                    ZEL::Generic::SequenceIntf>;
