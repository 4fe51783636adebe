#pragma once

#include <ZEL/deviants/Deviant.h>
#include <ZEL/sequences/Sequence.h>

#include <utility>

namespace ZEL {

/// Second argument of `ReportOfChanges`: the report is for reading only.
struct TRUE_TYPE {};
/// Second argument of `ReportOfChanges`: the objects of the report may be written to.
struct FALSE_TYPE {};

/// What differs between two deviants, a target and a source.
///
/// A listener reads what has happened: the target is the deviant that has changed, the source shows the state before. A
/// `DeviantManagerHelper` reads what to do: make the target equal to the source. Handles in the sequences are bound to
/// the target; a deleted object can be read through the source. A source that is a view ends with the call that got
/// the report.
template <class T, class C> class ReportOfChanges {
public:
    ReportOfChanges(Sequence<T> createdObjects, Sequence<T> deletedObjects, Sequence<T> modifiedObjects, Deviant source)
        : created(std::move(createdObjects)),
          deleted(std::move(deletedObjects)),
          modified(std::move(modifiedObjects)),
          sourceDeviant(source) {}

    [[nodiscard]] Deviant getTargetDeviant() const noexcept { return created.getDeviant(); }

    Sequence<T> created;
    Sequence<T> deleted;
    Sequence<T> modified; ///< present on both sides
    Deviant sourceDeviant;
};

} // namespace ZEL
