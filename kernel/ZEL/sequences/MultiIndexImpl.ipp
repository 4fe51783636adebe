#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/IndexChecks.h>
#include <ZEL/sequences/MultiIndexImpl.h>
#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceNames.h>

#include <boost/multi_index/identity.hpp>
#include <boost/multi_index/ordered_index.hpp>
#include <boost/multi_index/random_access_index.hpp>
#include <boost/multi_index_container.hpp>

#include <algorithm>
#include <type_traits>

namespace ZEL::Generic::MultiIndexImplInternal {

template <class T, int aIsUnique, class Key> struct MultiIndexImplForPrimitives<T, aIsUnique, Key>::Storage {
    using ByKey = std::conditional_t<aIsUnique != 0, boost::multi_index::ordered_unique<Key>,
                                     boost::multi_index::ordered_non_unique<Key>>;
    using Container =
        boost::multi_index_container<T, boost::multi_index::indexed_by<boost::multi_index::random_access<>, ByKey>>;

    Container container; ///< its own operations are those of the first index, by position
};

template <class T, int aIsUnique, class Key> struct MultiIndexImplForPrimitives<T, aIsUnique, Key>::Place {
    typename Storage::Container::iterator node;
};

/// Stays at its element when others come and go. The end is a place of its own, which cannot be read.
template <class T, int aIsUnique, class Key>
class MultiIndexImplForPrimitives<T, aIsUnique, Key>::Iterator final : public IteratorProxy {
public:
    Iterator(MultiIndexImplForPrimitives const * sequence, Place where) : fSequence(sequence), fPlace(where) {}

    [[nodiscard]] Ref current(Deviant deviant) const override {
        if (fPlace.node == container().end()) {
            internal::raiseSequenceIndexIsTooLarge();
        }
        return fSequence->refOf(*fPlace.node, deviant);
    }
    void next(Deviant) override {
        if (fPlace.node != container().end()) {
            ++fPlace.node;
        }
    }
    void previous(Deviant) override {
        if (fPlace.node != container().begin()) {
            --fPlace.node;
        }
    }
    [[nodiscard]] std::unique_ptr<IteratorIntf> clone() const override { return std::make_unique<Iterator>(*this); }
    [[nodiscard]] bool equal(IteratorIntf const * other) const override {
        auto const * const that = dynamic_cast<Iterator const *>(other);
        return that != nullptr && that->fPlace.node == fPlace.node;
    }
    [[nodiscard]] int position() const override { return static_cast<int>(fPlace.node - container().begin()); }

private:
    friend class MultiIndexImplForPrimitives;

    auto const & container() const { return fSequence->fStorage->container; }

    MultiIndexImplForPrimitives const * fSequence;
    Place fPlace;
};

// --- steps -----------------------------------------------------------------------------------------------------------

template <class T, int aIsUnique, class Key>
MultiIndexImplForPrimitives<T, aIsUnique, Key>::MultiIndexImplForPrimitives() : fStorage(std::make_unique<Storage>()) {}

template <class T, int aIsUnique, class Key>
MultiIndexImplForPrimitives<T, aIsUnique, Key>::~MultiIndexImplForPrimitives() = default;

template <class T, int aIsUnique, class Key>
std::size_t MultiIndexImplForPrimitives<T, aIsUnique, Key>::checkedIndex(int index) const {
    return internal::checkedIndex(index, fStorage->container.size());
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::checkNotEmpty() const {
    if (fStorage->container.empty()) {
        internal::raiseSequenceIsEmpty();
    }
}

template <class T, int aIsUnique, class Key>
Ref MultiIndexImplForPrimitives<T, aIsUnique, Key>::refOf(T const & element, Deviant deviant) const {
    return RefTraits<T>::toRef(element).withDeviant(deviant);
}

template <class T, int aIsUnique, class Key>
auto MultiIndexImplForPrimitives<T, aIsUnique, Key>::placeAt(std::size_t index) const -> Place {
    return Place{fStorage->container.begin() + static_cast<std::ptrdiff_t>(index)};
}

template <class T, int aIsUnique, class Key>
auto MultiIndexImplForPrimitives<T, aIsUnique, Key>::placeOf(IteratorIntf const * iterator) const -> Place {
    auto const * const own = dynamic_cast<Iterator const *>(iterator);
    if (own == nullptr || own->fSequence != this) {
        raiseAnInternalError();
    }
    return own->fPlace;
}

template <class T, int aIsUnique, class Key>
auto MultiIndexImplForPrimitives<T, aIsUnique, Key>::insertBefore(Place const & where, Ref const & element) -> Place {
    if (element.isNull()) {
        raiseAnInternalError();
    }
    return Place{fStorage->container.insert(where.node, RefTraits<T>::fromRef(element)).first};
}

// --- reads -----------------------------------------------------------------------------------------------------------

template <class T, int aIsUnique, class Key>
Ref MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_at(Deviant deviant, int index) const {
    return refOf(fStorage->container[checkedIndex(index)], deviant);
}

template <class T, int aIsUnique, class Key>
Ref MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_front(Deviant deviant) const {
    checkNotEmpty();
    return refOf(fStorage->container.front(), deviant);
}

template <class T, int aIsUnique, class Key>
Ref MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_back(Deviant deviant) const {
    checkNotEmpty();
    return refOf(fStorage->container.back(), deviant);
}

template <class T, int aIsUnique, class Key>
std::unique_ptr<IteratorIntf> MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_begin(Deviant) const {
    return std::make_unique<Iterator>(this, placeAt(0));
}

template <class T, int aIsUnique, class Key>
std::unique_ptr<IteratorIntf> MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_end(Deviant) const {
    return std::make_unique<Iterator>(this, placeAt(fStorage->container.size()));
}

template <class T, int aIsUnique, class Key>
int MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_size(Deviant) const {
    return static_cast<int>(fStorage->container.size());
}

template <class T, int aIsUnique, class Key>
bool MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_contains(Deviant, Ref element) const {
    if (!RefTraits<T>::fits(element)) {
        return false;
    }
    auto const & byKey = fStorage->container.template get<1>();
    return byKey.find(Key()(RefTraits<T>::fromRef(element))) != byKey.end();
}

template <class T, int aIsUnique, class Key>
char const * MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_getOrcaName(bool immutableSequence,
                                                                                 bool immutableElement,
                                                                                 char const *) const {
    return sequenceNames<T>().get(immutableSequence, immutableElement);
}

template <class T, int aIsUnique, class Key>
bool MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_isRandomAccess() const {
    return true;
}

template <class T, int aIsUnique, class Key>
std::unique_ptr<IteratorIntf> MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_iteratorAt(Deviant,
                                                                                                 int index) const {
    return std::make_unique<Iterator>(this, placeAt(internal::checkedInsertIndex(index, fStorage->container.size())));
}

template <class T, int aIsUnique, class Key>
int MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_fetch(Deviant, int index, NSInterface::ObjectIntf ** bodies,
                                                                  int count) const {
    if constexpr (BodyElement<T>) {
        int const fetched = std::clamp(static_cast<int>(fStorage->container.size()) - index, 0, count);
        for (int i = 0; i < fetched; ++i) {
            bodies[i] = fStorage->container[static_cast<std::size_t>(index + i)].getImplementationWithoutAssert();
        }
        return fetched;
    } else {
        return -1;
    }
}

template <class T, int aIsUnique, class Key>
int MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_indexOf(Deviant, Ref element) const {
    if (!RefTraits<T>::fits(element)) {
        return -1;
    }
    // Among elements with equal keys the one that stands first.
    auto const & container = fStorage->container;
    auto const [first, last] = container.template get<1>().equal_range(Key()(RefTraits<T>::fromRef(element)));
    std::ptrdiff_t least = -1;
    for (auto found = first; found != last; ++found) {
        std::ptrdiff_t const index = container.template project<0>(found) - container.begin();
        if (refOf(*found, Deviant()).isSameElement(element) && (least < 0 || index < least)) {
            least = index;
        }
    }
    return static_cast<int>(least);
}

template <class T, int aIsUnique, class Key>
bool MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_isUnique() const {
    return aIsUnique != 0;
}

template <class T, int aIsUnique, class Key>
bool MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_accepts(Deviant, Ref const & element) const {
    return RefTraits<T>::fits(element);
}

// --- writes ----------------------------------------------------------------------------------------------------------

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_clear(Deviant) {
    fStorage->container.clear();
}

template <class T, int aIsUnique, class Key>
std::unique_ptr<IteratorIntf>
MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_insert(Deviant, IteratorIntf const * where, Ref element) {
    return std::make_unique<Iterator>(this, insertBefore(placeOf(where), element));
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_insert(Deviant, int index, Ref element) {
    insertBefore(placeAt(internal::checkedInsertIndex(index, fStorage->container.size())), element);
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_erase(Deviant, int index) {
    fStorage->container.erase(placeAt(checkedIndex(index)).node);
}

template <class T, int aIsUnique, class Key>
std::unique_ptr<IteratorIntf> MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_erase(Deviant,
                                                                                            IteratorIntf const * first,
                                                                                            IteratorIntf const * last) {
    Place const begin = placeOf(first);
    Place const end = placeOf(last);
    if (begin.node < end.node) {
        fStorage->container.erase(begin.node, end.node);
    }
    return std::make_unique<Iterator>(this, end);
}

template <class T, int aIsUnique, class Key>
std::unique_ptr<IteratorIntf>
MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_erase(Deviant, IteratorIntf const * where) {
    Place const place = placeOf(where);
    if (place.node == fStorage->container.end()) {
        internal::raiseSequenceIndexIsTooLarge();
    }
    return std::make_unique<Iterator>(this, Place{fStorage->container.erase(place.node)});
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_pop_back(Deviant) {
    checkNotEmpty();
    fStorage->container.pop_back();
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_pop_front(Deviant) {
    checkNotEmpty();
    fStorage->container.pop_front();
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_push_back(Deviant, Ref element) {
    insertBefore(placeAt(fStorage->container.size()), element);
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_push_front(Deviant, Ref element) {
    insertBefore(placeAt(0), element);
}

template <class T, int aIsUnique, class Key>
void MultiIndexImplForPrimitives<T, aIsUnique, Key>::generic_replace(Deviant, int index, Ref element) {
    auto const where = placeAt(checkedIndex(index)).node;
    if (element.isNull()) {
        raiseAnInternalError();
    }
    fStorage->container.replace(where, RefTraits<T>::fromRef(element));
}

} // namespace ZEL::Generic::MultiIndexImplInternal
