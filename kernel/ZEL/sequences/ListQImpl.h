#pragma once

#include <ZEL/sequences/ListQImplForRefs.h>
#include <ZEL/sequences/RefTraits.h>
#include <ZEL/sequences/SequenceNames.h>

namespace ZEL {
struct FALSE_TYPE;
} // namespace ZEL

namespace ZEL::Generic {

/// The part of a list of `T` that knows `T`. `Immutable` is `FALSE_TYPE`.
template <class T, class Immutable> class ListQImplBase : public ListQImplInternal::ListQImplForRefs {
public:
    [[nodiscard]] char const * generic_getOrcaName(bool immutableSequence, bool immutableElement,
                                                   char const *) const override {
        return sequenceNames<T>().get(immutableSequence, immutableElement);
    }

protected:
    ListQImplBase() : ListQImplForRefs(&accepts) {}

private:
    static bool accepts(NSInterface::ObjectIntf * body) {
        return RefTraits<T>::fits(Ref::ofStoredBody(body, Deviant()));
    }
};

/// List of handles `T`, duplicates allowed. See `ListQImplForRefs` for its counting.
template <class T> class ListQImpl final : public ListQImplBase<T, FALSE_TYPE> {
public:
    explicit ListQImpl(bool = false) {}
};

} // namespace ZEL::Generic
