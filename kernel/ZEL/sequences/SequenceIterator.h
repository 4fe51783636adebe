#pragma once

#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceCursor.h>

#include <cstddef>
#include <string> // has the tags of iterators too, without the streams of <iterator>
#include <utility>

namespace ZEL::Generic {

/// Iterator of `ImmutableSequence<T>` and `Sequence<T>`: bidirectional, and returns its elements by value.
///
/// It survives writes to its sequence, but does not move with them: after an erase before it, it stands at the next
/// element. Comparing iterators of two sequences says nothing.
template <class T> class SequenceIterator {
    class Arrow {
    public:
        explicit Arrow(T element) : fElement(std::move(element)) {}
        T * operator->() noexcept { return &fElement; }

    private:
        T fElement;
    };

public:
    using iterator_category = std::bidirectional_iterator_tag;
    using value_type = T;
    using difference_type = std::ptrdiff_t;
    using pointer = Arrow;
    using reference = T;

    SequenceIterator() noexcept = default;
    explicit SequenceIterator(SequenceCursor cursor) noexcept : fCursor(std::move(cursor)) {}

    [[nodiscard]] T operator*() const { return RefTraits<T>::fromRef(fCursor.current()); }
    [[nodiscard]] Arrow operator->() const { return Arrow(**this); }
    SequenceIterator & operator++() {
        fCursor.next();
        return *this;
    }
    SequenceIterator operator++(int) {
        SequenceIterator old(*this);
        fCursor.next();
        return old;
    }
    SequenceIterator & operator--() {
        fCursor.previous();
        return *this;
    }
    SequenceIterator operator--(int) {
        SequenceIterator old(*this);
        fCursor.previous();
        return old;
    }
    friend bool operator==(SequenceIterator const & a, SequenceIterator const & b) { return a.fCursor == b.fCursor; }

    [[nodiscard]] SequenceCursor const & cursor() const noexcept { return fCursor; }

private:
    SequenceCursor fCursor;
};

} // namespace ZEL::Generic
