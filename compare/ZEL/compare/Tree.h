#pragma once

#include <ZEL/compare/ComparedClass.h>
#include <ZEL/metamodel/PointerMap.h>

#include <cstdint>
#include <string_view>
#include <vector>

namespace ZEL::Compare {

/// The objects of one side of a comparison in one array: each before what it contains, by the order of properties and
/// of lists. Objects are named by their place there.
///
/// It holds the objects. What it says of containment is how that was when it was made.
class Tree {
public:
    using Index = std::uint32_t;
    static constexpr Index kNone = ~Index{0};

    struct Node {
        ImmutableObject handle;
        internal::BodyCore const * body;
        ComparedClass const * metaClass;
        PropertyView const * property; ///< that contains it; null for the root of a tree
        Index container;               ///< that of a root is its own
        Index end;                     ///< one past the last of what it contains

        [[nodiscard]] ObjectIntf * object() const noexcept { return handle.getImplementationWithoutAssert(); }
        [[nodiscard]] Deviant deviant() const noexcept { return handle.getDeviant(); }
    };

    explicit Tree(ComparedClasses & classes) : fClasses(classes) {}

    /// Adds the object and all it contains, but for what is there already, and returns the object's place.
    Index add(ImmutableClassObject const & root);

    [[nodiscard]] Index size() const noexcept { return static_cast<Index>(fNodes.size()); }
    [[nodiscard]] Node const & operator[](Index index) const noexcept { return fNodes[index]; }
    /// `kNone` for an object that is not in the tree, or null.
    [[nodiscard]] Index indexOf(ObjectIntf const * object) const noexcept {
        Index const * const found = object == nullptr ? nullptr : fIndexes.find(object);
        return found == nullptr ? kNone : *found;
    }
    [[nodiscard]] ImmutableClassObject handleOf(Index index) const {
        return ImmutableClassObject(fNodes[index].body, fNodes[index].deviant());
    }
    [[nodiscard]] internal::StateCore const & stateOf(Index index) const {
        return *fNodes[index].body->readState(fNodes[index].deviant());
    }
    /// Empty if there is none. Valid until the next write to the object.
    [[nodiscard]] std::string_view nameOf(Index index) const {
        PropertyView const * const name = fNodes[index].metaClass->name;
        return name == nullptr ? std::string_view() : name->value->get(stateOf(index)).text();
    }

    /// Calls `visit(Index)` for what the object contains directly, in order.
    template <class Visit> void forEachChild(Index index, Visit visit) const {
        Index const end = fNodes[index].end;
        for (Index child = index + 1; child < end; child = fNodes[child].end) {
            visit(child);
        }
    }

private:
    ComparedClasses & fClasses;
    std::vector<Node> fNodes;
    internal::PointerMap<Index> fIndexes;
};

} // namespace ZEL::Compare
