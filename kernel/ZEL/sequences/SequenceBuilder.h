#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/deviants/Deviant.h>
#include <ZEL/sequences/ListQImpl.h>
#include <ZEL/sequences/MultiIndexImpl.h>
#include <ZEL/sequences/Sequence.h>

#include <memory>
#include <type_traits>
#include <utility>

namespace ZEL {
class ClassObject;
class ImmutableClassObject;
class ImmutableObject;
class ImmutableProperty;
} // namespace ZEL

namespace ZEL::Generic {

/// Whether a builder makes two-index storages for elements of this class, which is one of the general ones.
template <class T>
inline constexpr bool kHasMultiIndex = std::is_same_v<T, ImmutableProperty> || std::is_same_v<T, ClassObject> ||
                                       std::is_same_v<T, ImmutableObject> || std::is_same_v<T, ImmutableClassObject>;

/// Makes an empty sequence for results, of elements of any handle class or value class. Results of queries use the
/// defaults with the caller's deviant: `SequenceBuilder{deviant}.create<Book>()`. Storages with two indices are made
/// for elements of the general classes alone, those of `kHasMultiIndex`.
struct SequenceBuilder {
    static constexpr int kGlist = 0;
    static constexpr int kMultiIndex = 1;

    Deviant deviant;
    int implementation = kGlist;
    bool aIsUnique = false;
    bool referenceCounted = true; ///< else nobody owns the new storage: it is the caller's

    /// Throws "cannot use GLIST and aIsUnique together" and "unknown sequence implementation requested".
    template <class T> [[nodiscard]] Sequence<T> create() const;

private:
    template <class T> [[nodiscard]] std::unique_ptr<SequenceIntf> createStorage() const;
};

template <class T> Sequence<T> SequenceBuilder::create() const {
    auto storage = createStorage<T>();
    if (storage == nullptr) {
        raiseInternalError("sequence not created");
    }
    if (!referenceCounted) {
        return Sequence<T>(storage.release(), deviant);
    }
    return Sequence<T>(std::move(storage), deviant);
}

template <class T> std::unique_ptr<SequenceIntf> SequenceBuilder::createStorage() const {
    if constexpr (kHasMultiIndex<T>) {
        if (implementation == kMultiIndex && aIsUnique) {
            return std::make_unique<MultiIndexImpl<T, 1>>();
        }
        if (implementation == kMultiIndex) {
            return std::make_unique<MultiIndexImpl<T, 0>>();
        }
    }
    if (implementation != kGlist) {
        raiseInternalError("unknown sequence implementation requested");
    }
    if (aIsUnique) {
        raiseInternalError("cannot use GLIST and aIsUnique together");
    }
    return std::make_unique<ListQImpl<T>>();
}

} // namespace ZEL::Generic
