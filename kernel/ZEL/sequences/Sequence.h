#pragma once

#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceHandle.h>
#include <ZEL/sequences/SequenceIterator.h>
#include <ZEL/sequences/SequenceNames.h>

#include <array>
#include <concepts>
#include <type_traits>
#include <utility>
#include <vector>

namespace ZEL {

/// Handle on the values of a multi-valued property, a derived list or a query result, for reading.
///
/// `T` is a handle or value class. The body under it holds elements without their type, so one body may be seen as a
/// sequence of any class that its elements have: handles on sequences of derived and writing handles convert
/// implicitly, others by an explicit constructor, and reading an element of another class throws "An Internal Error has
/// occurred". Elements come with the deviant of this handle.
template <class T> class ImmutableSequence : public Generic::SequenceHandle {
public:
    using value_type = T;
    using const_iterator = Generic::SequenceIterator<T>;
    using iterator = const_iterator;
    using const_reference = T;
    using reference = T;
    using difference_type = std::ptrdiff_t;

    ImmutableSequence() noexcept = default;
    using Generic::SequenceHandle::SequenceHandle;

    template <class U>
    requires(!std::same_as<T, U>) explicit(!std::is_convertible_v<U, T>)
        ImmutableSequence(ImmutableSequence<U> const & other)
        : SequenceHandle(other) {}
    template <class U>
    requires(!std::same_as<T, U>) explicit(!std::is_convertible_v<U, T>)
        ImmutableSequence(ImmutableSequence<U> && other) noexcept
        : SequenceHandle(std::move(other)) {}

    /// Throws "sequence index must be positive" or "sequence index out of bounds".
    [[nodiscard]] T at(int index) const { return fromRef(body().generic_at(getDeviant(), index)); }
    [[nodiscard]] T operator[](int index) const { return at(index); }
    /// Throws "sequence is empty".
    [[nodiscard]] T front() const { return fromRef(body().generic_front(getDeviant())); }
    /// Throws "sequence is empty".
    [[nodiscard]] T back() const { return fromRef(body().generic_back(getDeviant())); }

    [[nodiscard]] const_iterator begin() const {
        static_cast<void>(body());
        return const_iterator(Generic::SequenceCursor::atBegin(pointer(), getDeviant()));
    }
    [[nodiscard]] const_iterator end() const {
        static_cast<void>(body());
        return const_iterator(Generic::SequenceCursor::atEnd(pointer(), getDeviant()));
    }
    [[nodiscard]] const_iterator cbegin() const { return begin(); }
    [[nodiscard]] const_iterator cend() const { return end(); }

    /// Calls `function(T)` for each element. Cheaper than a loop over the iterators, and not for a function that
    /// changes this sequence: it may still be called with elements that have gone.
    template <class Function> void forEach(Function function) const;
    [[nodiscard]] std::vector<T> toVector() const;

    /// By identity for handles, by value for values. Logarithmic in the storage of a property.
    [[nodiscard]] bool contains(T const & element) const {
        return body().generic_contains(getDeviant(), toRef(element));
    }
    /// The index of the first place of `element`, or -1.
    [[nodiscard]] int indexOf(T const & element) const { return body().generic_indexOf(getDeviant(), toRef(element)); }

    /// The registered name of the type of this handle, such as "ZEL.ImmutableSequenceOfImmutableComment".
    [[nodiscard]] char const * getOrcaName() const { return orcaName(true); }

protected:
    [[nodiscard]] static Generic::Ref toRef(T const & element) { return Generic::RefTraits<T>::toRef(element); }
    [[nodiscard]] static T fromRef(Generic::Ref const & ref) { return Generic::RefTraits<T>::fromRef(ref); }
    [[nodiscard]] char const * orcaName(bool immutableSequence) const {
        constexpr bool immutableElement = !requires { typename T::ImmutableForm; };
        return body().generic_getOrcaName(immutableSequence, immutableElement,
                                          Generic::sequenceNames<T>().get(immutableSequence, immutableElement));
    }
};

/// Handle on a sequence that also writes. Its constness says nothing of the sequence, as with all handles.
///
/// Every write to the property of a model object needs an open transaction, throws if there is none, and is seen by all
/// handles on the same object and deviant. An element that the sequence cannot hold throws "An Internal Error has
/// occurred" before anything is written.
template <class T> class Sequence : public ImmutableSequence<T> {
public:
    using iterator = typename ImmutableSequence<T>::const_iterator;

    Sequence() noexcept = default;
    Sequence(Generic::SequenceIntf * body, Deviant deviant) : ImmutableSequence<T>(body, deviant) {}
    /// Takes the body into ownership: it goes with the last handle.
    template <Generic::BodyOwner Owner>
    Sequence(Owner body, Deviant deviant) : ImmutableSequence<T>(std::move(body), deviant) {}

    // Not from `ImmutableSequence`: what was handed out for reading is not for writing.
    template <class U>
    requires(!std::same_as<T, U>) explicit(!std::is_convertible_v<U, T>) Sequence(Sequence<U> const & other)
        : ImmutableSequence<T>(static_cast<ImmutableSequence<U> const &>(other)) {}

    void push_back(T const & element) const { body().generic_push_back(deviant(), toRef(element)); }
    void push_front(T const & element) const { body().generic_push_front(deviant(), toRef(element)); }
    /// `index` may equal the size.
    void insert(int index, T const & element) const { body().generic_insert(deviant(), index, toRef(element)); }
    iterator insert(iterator const & where, T const & element) const {
        return adopt(body().generic_insert(deviant(), where.cursor().toIterator().get(), toRef(element)));
    }
    void erase(int index) const { body().generic_erase(deviant(), index); }
    iterator erase(iterator const & where) const {
        return adopt(body().generic_erase(deviant(), where.cursor().toIterator().get()));
    }
    iterator erase(iterator const & first, iterator const & last) const {
        return adopt(
            body().generic_erase(deviant(), first.cursor().toIterator().get(), last.cursor().toIterator().get()));
    }
    /// Erases the first place of `element`; false if there is none.
    bool remove(T const & element) const { return body().generic_eraseElement(deviant(), toRef(element)); }
    /// Nothing, if the sequence is unique and holds `element` at another place.
    void replace(int index, T const & element) const { body().generic_replace(deviant(), index, toRef(element)); }
    /// Throws "sequence is empty".
    void pop_back() const { body().generic_pop_back(deviant()); }
    /// Throws "sequence is empty".
    void pop_front() const { body().generic_pop_front(deviant()); }
    void clear() const { body().generic_clear(deviant()); }

    /// False if `element` could not be pushed because of what it is.
    [[nodiscard]] bool accepts(T const & element) const { return body().generic_accepts(deviant(), toRef(element)); }

    /// The registered name of the type of this handle, such as "ZEL.SequenceOfComment".
    [[nodiscard]] char const * getOrcaName() const { return this->orcaName(false); }

private:
    using ImmutableSequence<T>::toRef;

    [[nodiscard]] Generic::SequenceIntf & body() const { return Generic::SequenceHandle::body(); }
    [[nodiscard]] Deviant deviant() const noexcept { return this->getDeviant(); }
    [[nodiscard]] iterator adopt(Generic::IteratorPtr inner) const {
        return iterator(Generic::SequenceCursor::at(this->pointer(), deviant(), std::move(inner)));
    }
};

template <class T> template <class Function> void ImmutableSequence<T>::forEach(Function function) const {
    if constexpr (Generic::BodyElement<T>) {
        std::array<NSInterface::ObjectIntf *, 32> bodies;
        int index = 0;
        int count = 0;
        while ((count = body().generic_fetch(getDeviant(), index, bodies.data(), static_cast<int>(bodies.size()))) >
               0) {
            for (int i = 0; i < count; ++i) {
                function(fromRef(Generic::Ref::ofStoredBody(bodies[static_cast<std::size_t>(i)], getDeviant())));
            }
            index += count;
        }
        if (count == 0) {
            return;
        }
    }
    for (const_iterator place = begin(), last = end(); place != last; ++place) {
        function(*place);
    }
}

template <class T> std::vector<T> ImmutableSequence<T>::toVector() const {
    std::vector<T> elements;
    forEach([&elements](T element) { elements.push_back(std::move(element)); });
    return elements;
}

} // namespace ZEL
