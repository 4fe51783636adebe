#pragma once

#include <ZEL/sequences/IndexChecks.h>
#include <ZEL/sequences/IteratorProxy.h>
#include <ZEL/sequences/SequenceIntf.h>

#include <cstddef>
#include <memory>
#include <utility>

namespace ZEL::Generic {

/// The operations of a sequence that finds its elements by index, in terms of a few of its own. `Base` is
/// `SequenceIntf`, or `SequenceProxy` for one that is counted.
///
/// `Kind` is the class that derives from this one and makes it a friend. It is called directly, so this costs no
/// virtual call. It has what is missing here of `SequenceIntf`, a class `Iterator` that is made of the sequence and an
/// index, and
/// - `Ref refAt(Deviant, place) const`: the element at the index that `place` returns for the size, after its checks;
/// - `void insertAt(int index, Ref const & element)` and `void eraseAt(int index)`, which check what they are given. It
///   may hide the operations below that are not virtual. Its source instantiates this class, and its header says so, by
///   `extern template`.
template <class Kind, class Base> class ZEL_API IndexedSequence : public Base {
public:
    [[nodiscard]] Ref generic_at(Deviant deviant, int index) const override;
    [[nodiscard]] Ref generic_front(Deviant deviant) const override;
    [[nodiscard]] Ref generic_back(Deviant deviant) const override;
    [[nodiscard]] IteratorPtr generic_begin(Deviant) const override { return iterator(0); }
    [[nodiscard]] IteratorPtr generic_end(Deviant deviant) const override { return iterator(size(deviant)); }
    [[nodiscard]] bool generic_contains(Deviant deviant, Ref element) const override {
        return self().Kind::generic_indexOf(deviant, std::move(element)) >= 0;
    }
    [[nodiscard]] bool generic_isRandomAccess() const override { return true; }
    [[nodiscard]] IteratorPtr generic_iteratorAt(Deviant, int index) const override { return iterator(index); }

    IteratorPtr generic_insert(Deviant, IteratorIntf const * where, Ref element) override {
        int const index = self().positionOf(where);
        self().insertAt(index, element);
        return iterator(index);
    }
    void generic_insert(Deviant, int index, Ref element) override { self().insertAt(index, element); }
    void generic_push_back(Deviant deviant, Ref element) override {
        self().checkWritable();
        self().insertAt(size(deviant), element);
    }
    void generic_push_front(Deviant, Ref element) override { self().insertAt(0, element); }

    void generic_erase(Deviant, int index) override { self().eraseAt(index); }
    IteratorPtr generic_erase(Deviant, IteratorIntf const * where) override {
        int const index = self().positionOf(where);
        self().eraseAt(index);
        return iterator(index);
    }
    IteratorPtr generic_erase(Deviant deviant, IteratorIntf const * first, IteratorIntf const * last) override {
        int const begin = self().positionOf(first);
        int const end = self().positionOf(last);
        self().checkWritable();
        if (begin < end) {
            auto const total = static_cast<std::size_t>(size(deviant));
            static_cast<void>(internal::checkedIndex(begin, total));
            static_cast<void>(internal::checkedIndex(end - 1, total));
            self().eraseRange(begin, end);
        }
        return iterator(begin);
    }
    void generic_pop_back(Deviant deviant) override {
        self().checkWritable();
        self().eraseAt(static_cast<int>(internal::lastIndex(static_cast<std::size_t>(size(deviant)))));
    }
    void generic_pop_front(Deviant deviant) override {
        self().checkWritable();
        self().eraseAt(static_cast<int>(internal::firstIndex(static_cast<std::size_t>(size(deviant)))));
    }

protected:
    /// Throws if the sequence cannot be written now. Asked before its size is.
    void checkWritable() const noexcept {}
    /// Of an iterator of this kind; throws "An Internal Error has occurred" for another.
    [[nodiscard]] int positionOf(IteratorIntf const * iterator) const {
        return ownIterator<typename Kind::Iterator>(iterator).position();
    }
    /// Erases a range that is there, and not empty.
    void eraseRange(int begin, int end) {
        for (int i = begin; i < end; ++i) {
            self().eraseAt(begin);
        }
    }

private:
    [[nodiscard]] Kind & self() noexcept { return static_cast<Kind &>(*this); }
    [[nodiscard]] Kind const & self() const noexcept { return static_cast<Kind const &>(*this); }
    [[nodiscard]] int size(Deviant deviant) const { return self().Kind::generic_size(deviant); }
    [[nodiscard]] IteratorPtr iterator(int index) const {
        return std::make_unique<typename Kind::Iterator>(&self(), index);
    }
};

// Not inline: `refAt` of a kind is a template that only its own source knows.

template <class Kind, class Base> Ref IndexedSequence<Kind, Base>::generic_at(Deviant deviant, int index) const {
    return self().refAt(deviant, [index](std::size_t size) { return internal::checkedIndex(index, size); });
}

template <class Kind, class Base> Ref IndexedSequence<Kind, Base>::generic_front(Deviant deviant) const {
    return self().refAt(deviant, &internal::firstIndex);
}

template <class Kind, class Base> Ref IndexedSequence<Kind, Base>::generic_back(Deviant deviant) const {
    return self().refAt(deviant, &internal::lastIndex);
}

} // namespace ZEL::Generic
