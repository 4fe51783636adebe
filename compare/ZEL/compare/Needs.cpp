#include <ZEL/compare/Needs.h>

#include <algorithm>

namespace ZEL::Compare {

Needs::Needs(Pairs const & pairs, std::vector<Difference> const & all)
    : fPairs(pairs),
      fAll(all),
      fAdditions(pairs.right().tree.size(), kNone),
      fMoves(pairs.left().tree.size(), kNone),
      fIsTaken(all.size(), 0) {
    Side const & left = pairs.left();
    Side const & right = pairs.right();
    for (std::size_t i = 0; i < all.size(); ++i) {
        Difference const & difference = all[i];
        Index const ofLeft = left.tree.indexOf(ImmutableObject(difference.left).getImplementationWithoutAssert());
        Index const ofRight = right.tree.indexOf(ImmutableObject(difference.right).getImplementationWithoutAssert());
        if (difference.kind == Difference::Kind::Added) {
            fAdditions[ofRight] = i;
        } else if (difference.kind == Difference::Kind::Removed || difference.kind == Difference::Kind::Moved) {
            fMoves[ofLeft] = i;
        } else {
            for (ImmutableObject const & target : difference.before) {
                Index const index = left.tree.indexOf(target.getImplementationWithoutAssert());
                if (index != Tree::kNone && left.counterparts[index] == Tree::kNone) {
                    fLinksTo.emplace(index, i);
                }
            }
        }
    }
    for (Index index = 0; index < right.end; ++index) { // what is new in something new
        if (right.counterparts[index] == Tree::kNone && fAdditions[index] == kNone) {
            fAdditions[index] = fAdditions[right.tree[index].container];
        }
    }
}

void Needs::take(std::size_t difference) {
    if (difference != kNone && fIsTaken[difference] == 0) {
        fIsTaken[difference] = 1;
        fOpen.push_back(difference);
        fTaken.push_back(difference);
    }
}

void Needs::takeAdditionOf(ImmutableObject const & right) {
    Index const index = fPairs.right().tree.indexOf(right.getImplementationWithoutAssert());
    if (index < fPairs.right().end) {
        take(fAdditions[index]);
    }
}

void Needs::takeRoomFor(Tree::Node const & part) {
    Index const container = fPairs.right().counterparts[part.container];
    if (part.property->isMany || container == Tree::kNone) {
        return;
    }
    Tree const & left = fPairs.left().tree;
    left.forEachChild(container, [&](Index child) {
        if (left[child].property == part.property) {
            take(fMoves[child]);
        }
    });
}

void Needs::takeTargetsOf(Index added) {
    Tree::Node const & node = fPairs.right().tree[added];
    for (PropertyView const * const property : node.metaClass->links) {
        forEachTarget(*property, *node.body, node.deviant(),
                      [&](ObjectIntf * target) { takeAdditionOf(ImmutableObject(target, node.deviant())); });
    }
}

void Needs::takeAllInside(Index removed) {
    Side const & left = fPairs.left();
    for (Index index = removed; index < left.tree[removed].end; ++index) {
        if (left.counterparts[index] != Tree::kNone) { // it moves out, with what it contains
            take(fMoves[index]);
            index = left.tree[index].end - 1;
            continue;
        }
        auto const [first, last] = fLinksTo.equal_range(index);
        std::for_each(first, last, [this](auto const & link) { take(link.second); });
    }
}

void Needs::takeNeedsOf(Difference const & difference) {
    using Kind = Difference::Kind;
    Tree const & right = fPairs.right().tree;
    if (difference.kind == Kind::Removed) {
        takeAllInside(fPairs.left().tree.indexOf(ImmutableObject(difference.left).getImplementation()));
        return;
    }
    Index const index = right.indexOf(ImmutableObject(difference.right).getImplementation());
    if (difference.kind == Kind::Added || difference.kind == Kind::Moved) {
        take(fAdditions[right[index].container]);
        takeRoomFor(right[index]);
    }
    if (difference.kind == Kind::Added) {
        for (Index inside = index; inside < right[index].end; ++inside) {
            if (fAdditions[inside] == fAdditions[index]) {
                takeTargetsOf(inside);
            }
        }
    } else if (difference.kind != Kind::Moved && difference.kind != Kind::OrderChanged) {
        for (ImmutableObject const & target : difference.after) {
            takeAdditionOf(target);
        }
    }
}

std::vector<std::size_t> Needs::with(std::vector<std::size_t> const & chosen) {
    std::for_each(chosen.begin(), chosen.end(), [this](std::size_t difference) { take(difference); });
    while (!fOpen.empty()) {
        std::size_t const next = fOpen.back();
        fOpen.pop_back();
        takeNeedsOf(fAll[next]);
    }
    std::vector<std::size_t> all;
    all.swap(fTaken);
    std::sort(all.begin(), all.end());
    for (std::size_t const each : all) {
        fIsTaken[each] = 0; // for the next call
    }
    return all;
}

} // namespace ZEL::Compare
