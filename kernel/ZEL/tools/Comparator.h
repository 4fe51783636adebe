#pragma once

#include <ZEL/metamodel/ClassObject.h>
#include <ZEL/metamodel/Property.h>
#include <ZEL/values/Object.h>

#include <unordered_map>
#include <vector>

namespace ZEL {

/// Decides whether two object trees, of one model or of two, of one deviant or of two, have the same structure.
///
/// The first pass walks the composition of both sides in step, by position, and records which object corresponds to
/// which. The second checks that all other links lead to corresponding objects, or to the very same object where it is
/// outside of the trees. Derived properties, the numbers of objects, their models and what contains the trees are not
/// compared, so a copy is equal.
/// Works by reflection alone, for any metamodel; linear, without recursion. For one call at a time.
class ZEL_API Comparator {
public:
    Comparator(ImmutableObject first, ImmutableObject second);
    virtual ~Comparator();
    Comparator(Comparator const &) = default;
    Comparator & operator=(Comparator const &);

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
    struct Frame;
    struct ComparedProperty {
        ImmutableProperty property;
        bool isComposite;
    };
    enum class Pass { Composition, Association };
    enum class Verdict { Equal, Different, Descend };

    void add(ImmutableObject const & a, ImmutableObject const & b);
    [[nodiscard]] ImmutableObject get(ImmutableObject const & a) const;

    [[nodiscard]] std::vector<ComparedProperty> const & propertiesOf(ImmutableClass const & metaClass);
    [[nodiscard]] bool walk(Pass pass, ImmutableObject const & first, ImmutableObject const & second);
    [[nodiscard]] Verdict compareOne(Pass pass, ImmutableObject const & a, ImmutableObject const & b);
    [[nodiscard]] bool compareLink(ImmutableObject const & a, ImmutableObject const & b) const;
    [[nodiscard]] bool nextProperty(Pass pass, Frame & frame);
    void fail(ImmutableClassObject const & a, ImmutableClassObject const & b);

    ImmutableObject fFirst;
    ImmutableObject fSecond;
    ImmutableClassObject fFailedFirst;
    ImmutableClassObject fFailedSecond;
    std::unordered_map<NSInterface::ObjectIntf *, NSInterface::ObjectIntf *> fCounterparts;
    /// What is compared of the instances of each metaclass, found once in a call.
    std::unordered_map<NSInterface::ClassIntf const *, std::vector<ComparedProperty>> fProperties;
};

/// Whether two trees are equal; see `Comparator`.
[[nodiscard]] ZEL_API bool compare(ImmutableObject const & a, ImmutableObject const & b);

} // namespace ZEL
