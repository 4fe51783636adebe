#pragma once

#include <ZEL/base/Exception.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/sequences/PropertyToSequenceMethods.h>
#include <ZEL/sequences/Sequence.h>
#include <ZEL/values/Object.h>

/// From the generated operations of a property to the entries of its table.
namespace ZEL::internal {

/// Operations of a single-valued property of type `V` that interface `I` declares. Where there is no `Only` form the
/// plain one stands in both places. Each library keeps its own to itself: the tables of properties lead to it, and its
/// name is long.
template <class I, class V, auto Has, auto Get, auto Set, auto SetOnly, auto Remove, auto RemoveOnly>
[[gnu::visibility("hidden")]] inline constexpr Generic::PropertyToSequenceMethods
    singleAccess = Generic::PropertyToSequenceMethods::of<I, V, Has, Get, Set, SetOnly, Remove, RemoveOnly>();

/// One getter of a multi-valued property with elements of class `V`. Throws "An Internal Error has occurred" for an
/// object that is not an `I`.
template <class I, class V, auto Getter> Sequence<Object> manyAccess(ImmutableClassObject const & object) {
    auto * const part = static_cast<I *>(object.getImplementation()->cast(I::classInfo()));
    if (part == nullptr) {
        raiseAnInternalError();
    }
    return Sequence<Object>(Sequence<V>((part->*Getter)(object.getDeviant())));
}

} // namespace ZEL::internal
