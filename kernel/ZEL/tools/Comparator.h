#pragma once

#include <ZEL/base/SoleOwner.h>
#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/values/Object.h>

namespace ZEL {

/// Decides whether two object trees, of one model or of two, of one deviant or of two, have the same structure.
///
/// The first pass walks the composition of both sides in step, by position, and records which object corresponds to
/// which. The second checks that all other links lead to corresponding objects, or to the very same object where it is
/// outside of the trees. Derived properties, the numbers of objects, their models and what contains the trees are not
/// compared, so a copy is equal.
/// Works for any metamodel; linear, without recursion. For one call at a time.
class ZEL_API Comparator {
public:
    Comparator(ImmutableObject first, ImmutableObject second);
    virtual ~Comparator();
    Comparator(Comparator const & other);
    Comparator & operator=(Comparator const & other);

    /// Starts anew at each call.
    [[nodiscard]] bool compare();

    [[nodiscard]] ImmutableObject getFirst() const { return fFirst; }
    [[nodiscard]] ImmutableObject getSecond() const { return fSecond; }
    /// The objects in which the last `compare` found a difference; null handles if it found none.
    [[nodiscard]] ImmutableClassObject getFailedFirst() const { return fFailedFirst; }
    [[nodiscard]] ImmutableClassObject getFailedSecond() const { return fFailedSecond; }

protected:
    /// First pass, from a pair downwards.
    [[nodiscard]] bool compareCompositionR(ImmutableObject const & first, ImmutableObject const & second);
    /// Second pass.
    [[nodiscard]] bool compareAssociationR(ImmutableObject const & first, ImmutableObject const & second);

private:
    struct Counterparts;
    class Walk;
    enum class Pass { Composition, Association };

    [[nodiscard]] bool walk(Pass pass, ImmutableObject const & first, ImmutableObject const & second);
    void fail(ImmutableClassObject const & a, ImmutableClassObject const & b);

    ImmutableObject fFirst;
    ImmutableObject fSecond;
    ImmutableClassObject fFailedFirst;
    ImmutableClassObject fFailedSecond;
    internal::SoleOwner<Counterparts> fCounterparts; ///< of objects of the first side: those of the second
};

/// Whether two trees are equal; see `Comparator`.
[[nodiscard]] ZEL_API bool compare(ImmutableObject const & a, ImmutableObject const & b);

} // namespace ZEL
