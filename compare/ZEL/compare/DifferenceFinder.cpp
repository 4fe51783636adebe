#include <ZEL/compare/DifferenceFinder.h>
#include <ZEL/compare/SameRemainder.h>
#include <ZEL/metamodel/FieldValue.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

namespace ZEL::Compare {
namespace {

using Index = Tree::Index;
using Targets = std::vector<ObjectIntf *>;

bool areEqual(ImmutableObject const & left, ImmutableObject const & right) {
    ImmutableValueObject const a(left);
    ImmutableValueObject const b(right);
    return a.isValid() && b.isValid() ? a == b : left == right;
}

/// Those that are set: a default is not among them.
std::vector<ImmutableObject> valuesOf(Tree const & tree, Index index, PropertyView const & property) {
    bool const isUnset = property.value != nullptr && !property.value->get(tree.stateOf(index)).isSet();
    return isUnset ? std::vector<ImmutableObject>() : tree.handleOf(index).get(property.property).toVector();
}

class DifferenceFinder {
public:
    explicit DifferenceFinder(Pairs const & pairs) : fPairs(pairs), fLeft(pairs.left()), fRight(pairs.right()) {}

    [[nodiscard]] std::vector<Difference> run();

private:
    using Kind = Difference::Kind;

    void comparePlaces(Index left, Index right);
    void compareRemainders(Index left, Index right);
    void compareValues(Index left, Index right);
    void compareLinks(Index left, Index right);
    void compareList(Index left, Index right, PropertyView const & property, Targets const & before,
                     Targets const & after);
    void compareLink(Index left, Index right, PropertyView const & property, Targets before, Targets after);
    void compareOrder(Index left, Index right, PropertyView const & property, Targets before, Targets after);
    void compareParts(Index left, Index right);
    [[nodiscard]] bool haveEqualParts(Index left, Index right) const;
    void tellUnmatchedParts(Kind kind, Side const & side, Index container);
    [[nodiscard]] Targets partsIn(Side const & side, Index index, PropertyView const & property) const;

    /// Whether a link is told at the end at hand. The other end can tell it only if its object is compared.
    [[nodiscard]] static bool isTold(PropertyView const & property, Side const & side, ObjectIntf const * target) {
        return isTellingEnd(property) || side.tree.indexOf(target) >= side.end;
    }
    [[nodiscard]] bool areEqualLists(Targets const & before, Targets const & after) const {
        return std::equal(before.begin(), before.end(), after.begin(), after.end(),
                          [this](ObjectIntf const * a, ObjectIntf const * b) { return fPairs.correspond(a, b); });
    }
    Difference & tell(Kind kind, Index left, Index right, PropertyView const * property);
    [[nodiscard]] static ImmutableObject handleOf(Tree const & tree, Index owner, ObjectIntf * target) {
        return ImmutableObject(target, tree[owner].deviant());
    }
    [[nodiscard]] static std::vector<ImmutableObject> handlesOf(Tree const & tree, Index owner,
                                                                Targets const & targets) {
        std::vector<ImmutableObject> handles;
        for (ObjectIntf * const target : targets) {
            handles.push_back(handleOf(tree, owner, target));
        }
        return handles;
    }

    Pairs const & fPairs;
    Side const & fLeft;
    Side const & fRight;
    std::vector<Difference> fFound;
    Targets fBefore; ///< room to work in
    Targets fAfter;
};

Difference & DifferenceFinder::tell(Kind kind, Index left, Index right, PropertyView const * property) {
    Difference & made = fFound.emplace_back();
    made.kind = kind;
    if (left != Tree::kNone) {
        made.left = fLeft.tree.handleOf(left);
    }
    if (right != Tree::kNone) {
        made.right = fRight.tree.handleOf(right);
    }
    if (property != nullptr) {
        made.property = property->property;
    }
    return made;
}

void DifferenceFinder::comparePlaces(Index left, Index right) {
    Tree::Node const & a = fLeft.tree[left];
    Tree::Node const & b = fRight.tree[right];
    if (left == 0 || (fLeft.counterparts[a.container] == b.container && a.property == b.property)) {
        return;
    }
    Difference & moved = tell(Kind::Moved, left, right, b.property);
    moved.propertyBefore = a.property->property;
    moved.before.push_back(fLeft.tree.handleOf(a.container));
    moved.after.push_back(fRight.tree.handleOf(b.container));
}

void DifferenceFinder::compareRemainders(Index left, Index right) {
    Remainder const * const a = fLeft.tree.stateOf(left).remainder();
    Remainder const * const b = fRight.tree.stateOf(right).remainder();
    static Remainder const nothing;
    if (a != b && !saySame(a == nullptr ? nothing : *a, b == nullptr ? nothing : *b)) {
        tell(Kind::RemainderChanged, left, right, nullptr);
    }
}

void DifferenceFinder::compareValues(Index left, Index right) {
    internal::StateCore const & a = fLeft.tree.stateOf(left);
    internal::StateCore const & b = fRight.tree.stateOf(right);
    for (PropertyView const * const property : fLeft.tree[left].metaClass->values) {
        if (property->value != nullptr && property->value->get(a) == property->value->get(b)) {
            continue;
        }
        std::vector<ImmutableObject> before = valuesOf(fLeft.tree, left, *property);
        std::vector<ImmutableObject> after = valuesOf(fRight.tree, right, *property);
        bool const isSame = property->value == nullptr &&
                            std::equal(before.begin(), before.end(), after.begin(), after.end(), areEqual);
        if (!isSame) {
            Difference & changed = tell(Kind::ValueChanged, left, right, property);
            changed.before = std::move(before);
            changed.after = std::move(after);
        }
    }
}

void DifferenceFinder::compareLinks(Index left, Index right) {
    Tree::Node const & a = fLeft.tree[left];
    Tree::Node const & b = fRight.tree[right];
    for (PropertyView const * const property : a.metaClass->links) {
        fBefore.clear();
        fAfter.clear();
        forEachTarget(*property, *a.body, a.deviant(), [this](ObjectIntf * target) { fBefore.push_back(target); });
        forEachTarget(*property, *b.body, b.deviant(), [this](ObjectIntf * target) { fAfter.push_back(target); });
        if (areEqualLists(fBefore, fAfter)) {
            continue;
        }
        // A link may have outlived its target.
        std::erase_if(fBefore, [&a](ObjectIntf const * target) { return !target->deviant_isValid(a.deviant()); });
        std::erase_if(fAfter, [&b](ObjectIntf const * target) { return !target->deviant_isValid(b.deviant()); });
        if (areEqualLists(fBefore, fAfter)) {
            continue;
        }
        if (property->isMany) {
            compareList(left, right, *property, fBefore, fAfter);
        } else {
            compareLink(left, right, *property, fBefore, fAfter);
        }
    }
}

void DifferenceFinder::compareLink(Index left, Index right, PropertyView const & property, Targets before,
                                   Targets after) {
    std::erase_if(before, [&](ObjectIntf const * target) { return !isTold(property, fLeft, target); });
    std::erase_if(after, [&](ObjectIntf const * target) { return !isTold(property, fRight, target); });
    if (!areEqualLists(before, after)) {
        Difference & changed = tell(Kind::LinkChanged, left, right, &property);
        changed.before = handlesOf(fLeft.tree, left, before);
        changed.after = handlesOf(fRight.tree, right, after);
    }
}

void DifferenceFinder::compareList(Index left, Index right, PropertyView const & property, Targets const & before,
                                   Targets const & after) {
    std::unordered_set<ObjectIntf const *> const ofLeft(before.begin(), before.end());
    std::unordered_set<ObjectIntf const *> const ofRight(after.begin(), after.end());
    for (ObjectIntf * const target : before) {
        ObjectIntf const * const counterpart = fPairs.rightOf(target);
        if ((counterpart == nullptr || ofRight.count(counterpart) == 0) && isTold(property, fLeft, target)) {
            tell(Kind::LinkRemoved, left, right, &property).before.push_back(handleOf(fLeft.tree, left, target));
        }
    }
    for (ObjectIntf * const target : after) {
        ObjectIntf const * const counterpart = fPairs.leftOf(target);
        if ((counterpart == nullptr || ofLeft.count(counterpart) == 0) && isTold(property, fRight, target)) {
            tell(Kind::LinkAdded, left, right, &property).after.push_back(handleOf(fRight.tree, right, target));
        }
    }
    compareOrder(left, right, property, before, after);
}

void DifferenceFinder::compareOrder(Index left, Index right, PropertyView const & property, Targets before,
                                    Targets after) {
    std::unordered_set<ObjectIntf const *> const ofLeft(before.begin(), before.end());
    std::unordered_set<ObjectIntf const *> const ofRight(after.begin(), after.end());
    std::erase_if(before, [&](ObjectIntf * target) {
        ObjectIntf const * const counterpart = fPairs.rightOf(target);
        return counterpart == nullptr || ofRight.count(counterpart) == 0;
    });
    std::erase_if(after, [&](ObjectIntf * target) {
        ObjectIntf const * const counterpart = fPairs.leftOf(target);
        return counterpart == nullptr || ofLeft.count(counterpart) == 0;
    });
    if (!areEqualLists(before, after)) {
        Difference & changed = tell(Kind::OrderChanged, left, right, &property);
        changed.before = handlesOf(fLeft.tree, left, before);
        changed.after = handlesOf(fRight.tree, right, after);
    }
}

bool DifferenceFinder::haveEqualParts(Index left, Index right) const {
    Index const endOfLeft = fLeft.tree[left].end;
    Index const endOfRight = fRight.tree[right].end;
    Index a = left + 1;
    Index b = right + 1;
    while (a < endOfLeft && b < endOfRight && fLeft.counterparts[a] == b &&
           fLeft.tree[a].property == fRight.tree[b].property) {
        a = fLeft.tree[a].end;
        b = fRight.tree[b].end;
    }
    return a >= endOfLeft && b >= endOfRight;
}

Targets DifferenceFinder::partsIn(Side const & side, Index index, PropertyView const & property) const {
    Targets parts;
    side.tree.forEachChild(index, [&](Index child) {
        if (side.tree[child].property == &property) {
            parts.push_back(side.tree[child].object());
        }
    });
    return parts;
}

void DifferenceFinder::compareParts(Index left, Index right) {
    if (haveEqualParts(left, right)) {
        return;
    }
    for (PropertyView const * const property : fLeft.tree[left].metaClass->parts) {
        if (property->isMany) {
            compareOrder(left, right, *property, partsIn(fLeft, left, *property), partsIn(fRight, right, *property));
        }
    }
    tellUnmatchedParts(Kind::Removed, fLeft, left);
    tellUnmatchedParts(Kind::Added, fRight, right);
}

void DifferenceFinder::tellUnmatchedParts(Kind kind, Side const & side, Index container) {
    side.tree.forEachChild(container, [&](Index child) {
        if (side.counterparts[child] != Tree::kNone) {
            return;
        }
        bool const isAddition = kind == Kind::Added;
        Difference & made =
            tell(kind, isAddition ? Tree::kNone : child, isAddition ? child : Tree::kNone, side.tree[child].property);
        // What is unmatched in something that moves is told on its own.
        side.forEachUnmatched(child, [&](Index part) { made.content += part == child ? 0 : 1; });
    });
}

std::vector<Difference> DifferenceFinder::run() {
    for (Index left = 0; left < fLeft.end; ++left) {
        Index const right = fLeft.counterparts[left];
        if (right != Tree::kNone) {
            comparePlaces(left, right);
            compareRemainders(left, right);
            compareValues(left, right);
            compareLinks(left, right);
            compareParts(left, right);
        }
    }
    return std::move(fFound);
}

} // namespace

std::vector<Difference> differencesOf(Pairs const & pairs) { return DifferenceFinder(pairs).run(); }

} // namespace ZEL::Compare
