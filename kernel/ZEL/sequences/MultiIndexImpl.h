#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/sequences/MultiIndexImplForRefsHelper.h>
#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceNames.h>

#include <boost/multi_index/identity_fwd.hpp>

#include <concepts>
#include <functional>

namespace ZEL {
struct FALSE_TYPE;
} // namespace ZEL

namespace ZEL::Generic {

namespace MultiIndexImplInternal {

/// The part that knows `T` and how `Key` finds the key of an element.
template <class T, int aIsUnique, class Key>
class ZEL_API MultiIndexImplForPrimitives : public MultiIndexImplForRefsHelper {
public:
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const *) const override {
        return sequenceNames<T>().get(immutableSequence, immutableElement);
    }
    [[nodiscard]] bool generic_accepts(Deviant, Ref const & element) const override {
        return RefTraits<T>::fits(element);
    }

protected:
    MultiIndexImplForPrimitives() : MultiIndexImplForRefsHelper(aIsUnique != 0, &toElement, &isLess) {}

private:
    static Ref toElement(Ref const & element) {
        if (element.isNull()) {
            raiseAnInternalError();
        }
        return RefTraits<T>::toRef(RefTraits<T>::fromRef(element));
    }
    static bool isLess(Ref const & left, Ref const & right) {
        if constexpr (!std::same_as<Key, boost::multi_index::identity<T>>) {
            return std::less<>()(Key()(RefTraits<T>::fromRef(left)), Key()(RefTraits<T>::fromRef(right)));
        } else if constexpr (BodyElement<T>) {
            return std::less<>()(left.body(), right.body());
        } else {
            return *left.valueAs<T>() < *right.valueAs<T>();
        }
    }
};

} // namespace MultiIndexImplInternal

/// The part that knows whether handles on the sequence only read. `Immutable` is `FALSE_TYPE`.
template <class T, int aIsUnique, class Key, class Immutable>
class ZEL_API MultiIndexImplBase : public MultiIndexImplInternal::MultiIndexImplForPrimitives<T, aIsUnique, Key> {};

/// Storage of elements `T`, handles or values, with quick positions and quick search; see
/// `MultiIndexImplForRefsHelper`.
///
/// With an `aIsUnique` of 1 it refuses a second element with an equal key. The key is the element itself, handles in
/// the order of their bodies, or what a `Key` made without arguments returns for an element; it must not change while
/// the element is stored.
template <class T, int aIsUnique, class Key = boost::multi_index::identity<T>>
class ZEL_API MultiIndexImpl final : public MultiIndexImplBase<T, aIsUnique, Key, FALSE_TYPE> {};

} // namespace ZEL::Generic
