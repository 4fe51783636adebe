#pragma once

#include <ZEL/Deviant.h>
#include <ZEL/Exception.h>
#include <ZEL/sequences/GenericReferenceCountingSequenceProxy.h>
#include <ZEL/sequences/ListQImpl.h>
#include <ZEL/sequences/MultiIndexStorage.h>
#include <ZEL/sequences/Sequence.h>

namespace ZEL::Generic {

/// Makes an empty sequence for results. Results of queries use the defaults with the caller's deviant.
///
/// Elements are `ImmutableProperty`, `ClassObject`, `ImmutableObject` or `ImmutableClassObject`; for those of any other
/// handle class, the caller instantiates `MultiIndexStorage`.
struct SequenceBuilder {
    static constexpr int kGlist = 0;
    static constexpr int kMultiIndex = 1;

    Deviant deviant;
    int implementation = kGlist;
    bool aIsUnique = false;
    bool referenceCounted = true; ///< else nobody owns the new storage: it is the caller's

    /// Raises "cannot use GLIST and aIsUnique together" and "unknown sequence implementation requested".
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
    return Sequence<T>(
        std::make_unique<GenericReferenceCountingSequenceProxy>(SequenceHandle(std::move(storage), deviant)), deviant);
}

template <class T> std::unique_ptr<SequenceIntf> SequenceBuilder::createStorage() const {
    switch (implementation) {
    case kMultiIndex:
        return MultiIndexStorage<T>::create(aIsUnique);
    case kGlist:
        if (aIsUnique) {
            raiseInternalError("cannot use GLIST and aIsUnique together");
        }
        return std::make_unique<ListQImpl<T>>();
    default:
        raiseInternalError("unknown sequence implementation requested");
    }
}

} // namespace ZEL::Generic
