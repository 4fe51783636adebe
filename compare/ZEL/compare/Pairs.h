#pragma once

#include <ZEL/compare/Tree.h>

#include <memory>
#include <vector>

namespace ZEL::Compare {

/// One side of a match: its objects, and their places on the other side.
struct Side {
    explicit Side(ComparedClasses & classes) : tree(classes) {}

    /// Calls `visit(Tree::Index)` for the object and what it contains, as far as that has no counterpart.
    template <class Visit> void forEachUnmatched(Tree::Index index, Visit visit) const {
        for (Tree::Index const end = tree[index].end; index < end;) {
            bool const isUnmatched = counterparts[index] == Tree::kNone;
            if (isUnmatched) {
                visit(index);
            }
            index = isUnmatched ? index + 1 : tree[index].end;
        }
    }

    Tree tree;
    std::vector<Tree::Index> counterparts; ///< `Tree::kNone` for those that have none
    Tree::Index end = 0;                   ///< of what is compared; companions follow
};

/// The result of a match.
class Pairs {
public:
    using Index = Tree::Index;

    Pairs() : fClasses(std::make_shared<ComparedClasses>()) {
        fSides[0] = std::make_shared<Side>(*fClasses);
        fSides[1] = std::make_shared<Side>(*fClasses);
    }
    /// With left and right exchanged; shares the rest.
    [[nodiscard]] Pairs turnedRound() const {
        Pairs turned(*this);
        turned.fSides[0].swap(turned.fSides[1]);
        return turned;
    }

    [[nodiscard]] Side & left() noexcept { return *fSides[0]; }
    [[nodiscard]] Side & right() noexcept { return *fSides[1]; }
    [[nodiscard]] Side const & left() const noexcept { return *fSides[0]; }
    [[nodiscard]] Side const & right() const noexcept { return *fSides[1]; }

    /// Both must be without a counterpart.
    void add(Index left, Index right) {
        fSides[0]->counterparts[left] = right;
        fSides[1]->counterparts[right] = left;
        ++fCount;
    }
    [[nodiscard]] std::size_t size() const noexcept { return fCount; }

    /// Whether links to the two say the same: they correspond, or are one object outside of the trees.
    [[nodiscard]] bool correspond(ObjectIntf const * left, ObjectIntf const * right) const noexcept {
        Index const index = fSides[0]->tree.indexOf(left);
        if (index == Tree::kNone) {
            return left == right && fSides[1]->tree.indexOf(right) == Tree::kNone;
        }
        Index const counterpart = fSides[0]->counterparts[index];
        return counterpart != Tree::kNone && fSides[1]->tree[counterpart].object() == right;
    }
    /// What a link to an object of the right side leads to on the left: its counterpart, or itself if it is outside of
    /// the trees. Null if it is in them and has no counterpart.
    [[nodiscard]] ObjectIntf * leftOf(ObjectIntf * right) const noexcept {
        return counterpartOf(*fSides[1], *fSides[0], right);
    }
    [[nodiscard]] ObjectIntf * rightOf(ObjectIntf * left) const noexcept {
        return counterpartOf(*fSides[0], *fSides[1], left);
    }

private:
    static ObjectIntf * counterpartOf(Side const & from, Side const & to, ObjectIntf * object) noexcept {
        Index const index = from.tree.indexOf(object);
        if (index == Tree::kNone) {
            return object;
        }
        Index const counterpart = from.counterparts[index];
        return counterpart == Tree::kNone ? nullptr : to.tree[counterpart].object();
    }

    std::shared_ptr<ComparedClasses> fClasses; ///< the trees refer to it
    std::shared_ptr<Side> fSides[2];
    std::size_t fCount = 0;
};

/// Finds the pairs of two trees. `settings` are those of a `Match`.
struct MatchSettings;
[[nodiscard]] Pairs pairsOf(ImmutableClassObject const & left, ImmutableClassObject const & right,
                            MatchSettings const & settings);

} // namespace ZEL::Compare
