#include <ZEL/compare/ConflictFinder.h>
#include <ZEL/compare/Label.h>
#include <ZEL/compare/SameRemainder.h>
#include <ZEL/metamodel/Remainder.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <unordered_set>

namespace ZEL::Compare {
namespace {

bool areEqualValues(std::vector<ImmutableObject> const & a, std::vector<ImmutableObject> const & b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](ImmutableObject const & x, ImmutableObject const & y) {
        return ImmutableValueObject(x) == ImmutableValueObject(y);
    });
}

bool isLink(Difference::Kind kind) {
    using Kind = Difference::Kind;
    return kind == Kind::LinkChanged || kind == Kind::LinkAdded || kind == Kind::LinkRemoved;
}

} // namespace

// --- one side --------------------------------------------------------------------------------------------------------

ConflictFinder::View::View(Differences const & all)
    : differences(all), pairs(all.match().pairs()), removals(pairs.left().end, kNone) {
    Side const & base = pairs.left();
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i].kind == Kind::Moved) {
            moves.emplace(placeOf(all[i].left), i);
        } else if (all[i].kind == Kind::Removed) {
            removals[placeOf(all[i].left)] = i;
        }
    }
    for (Index index = 0; index < base.end; ++index) {
        if (removals[index] == kNone && base.counterparts[index] == Tree::kNone) {
            removals[index] = removals[base.tree[index].container];
        }
    }
}

ConflictFinder::Index ConflictFinder::View::around(ImmutableObject const & object) const {
    Side const & side = pairs.right();
    Index index = side.tree.indexOf(object.getImplementationWithoutAssert());
    if (index == Tree::kNone || index >= side.end) {
        return Tree::kNone;
    }
    do {
        index = side.tree[index].container;
    } while (side.counterparts[index] == Tree::kNone);
    return side.counterparts[index];
}

/// What new objects link to.
void ConflictFinder::View::appendTargetsOf(ImmutableObject const & added, std::vector<Index> & places) const {
    Side const & side = pairs.right();
    Index const first = side.tree.indexOf(added.getImplementation());
    for (Index index = first; index < side.tree[first].end; ++index) {
        Tree::Node const & node = side.tree[index];
        if (side.counterparts[index] != Tree::kNone) {
            continue;
        }
        for (PropertyView const * const property : node.metaClass->links) {
            forEachTarget(*property, *node.body, node.deviant(), [&](ObjectIntf * target) {
                if (ObjectIntf * const base = pairs.leftOf(target)) {
                    places.push_back(pairs.left().tree.indexOf(base));
                }
            });
        }
    }
}

std::vector<ConflictFinder::Index> ConflictFinder::View::concerned(Difference const & difference) const {
    std::vector<Index> places;
    if (difference.kind == Kind::Removed) {
        return places; // that what it removes has gone already does no harm
    }
    if (difference.kind == Kind::Added || difference.kind == Kind::Moved) {
        places.push_back(around(difference.right));
    }
    if (difference.kind != Kind::Added) {
        places.push_back(placeOf(difference.left));
    }
    if (isLink(difference.kind)) {
        for (ImmutableObject const & target : difference.after) {
            if (ObjectIntf * const base = baseOf(target)) {
                places.push_back(pairs.left().tree.indexOf(base));
            }
        }
    }
    if (difference.kind == Kind::Added) {
        appendTargetsOf(difference.right, places);
    }
    std::erase_if(places, [this](Index place) { return place >= pairs.left().end; });
    return places;
}

// --- both ------------------------------------------------------------------------------------------------------------

ConflictFinder::ConflictFinder(MergePlan & plan)
    : fPlan(plan), fOurs(plan.ours), fTheirs(plan.theirs), fFates(plan.theirs.size(), kNone) {}

std::vector<std::size_t> ConflictFinder::found(ByProperty const & index, Key const & key) const {
    auto const place = index.find(key);
    return place == index.end() ? std::vector<std::size_t>() : place->second;
}

bool ConflictFinder::areSame(ImmutableObject const & ours, ImmutableObject const & theirs) const {
    ObjectIntf const * const a = fOurs.baseOf(ours);
    ObjectIntf const * const b = fTheirs.baseOf(theirs);
    if (a != nullptr || b != nullptr) {
        return a == b;
    }
    auto const same = fPlan.sameAdditions.find(theirs.getImplementationWithoutAssert());
    return same != fPlan.sameAdditions.end() && same->second == ours.getImplementationWithoutAssert();
}

bool ConflictFinder::areSameTargets(Difference const & ours, Difference const & theirs) const {
    return std::equal(ours.after.begin(), ours.after.end(), theirs.after.begin(), theirs.after.end(),
                      [this](ImmutableObject const & a, ImmutableObject const & b) { return areSame(a, b); });
}

bool ConflictFinder::haveSameOrder(Difference const & ours, Difference const & theirs) const {
    auto const ofBase = [](View const & view, std::vector<ImmutableObject> const & objects) {
        std::vector<ObjectIntf const *> result;
        std::transform(objects.begin(), objects.end(), std::back_inserter(result),
                       [&view](ImmutableObject const & object) { return view.baseOf(object); });
        return result;
    };
    auto const common = [](std::vector<ObjectIntf const *> objects, std::vector<ObjectIntf const *> const & others) {
        std::unordered_set<ObjectIntf const *> const kept(others.begin(), others.end());
        std::erase_if(objects, [&kept](ObjectIntf const * object) { return kept.count(object) == 0; });
        return objects;
    };
    auto const a = ofBase(fOurs, ours.after);
    auto const b = ofBase(fTheirs, theirs.after);
    return common(a, b) == common(b, a);
}

void ConflictFinder::conflict(Conflict::Kind kind, std::size_t ours, std::size_t theirs, bool allowsBoth) {
    if (isTaken(theirs)) {
        fFates[theirs] = fPlan.conflicts.size();
        fPlan.conflicts.push_back({kind, {}, {}, allowsBoth});
        fPlan.places.push_back({{}, {theirs}});
    }
    std::vector<std::size_t> & present = fPlan.places[fFates[theirs]].ours;
    if (std::find(present.begin(), present.end(), ours) == present.end()) {
        present.push_back(ours);
    }
}

void ConflictFinder::enterOurs() {
    for (std::size_t i = 0; i < fOurs.differences.size(); ++i) {
        Difference const & difference = oursAt(i);
        if (difference.kind == Kind::Added || difference.kind == Kind::Moved) {
            Side const & side = fOurs.pairs.right();
            Index const index = side.tree.indexOf(ImmutableObject(difference.right).getImplementation());
            ObjectIntf * const container = fOurs.pairs.leftOf(side.tree[side.tree[index].container].object());
            fArrivals[keyOf(container, difference.property)].push_back(i);
        } else if (difference.kind != Kind::Removed) {
            fChanges[keyOf(ImmutableObject(difference.left).getImplementation(), difference.property)].push_back(i);
        }
        if (isLink(difference.kind)) {
            for (ImmutableObject const & target : difference.after) {
                fLinksTo[keyOf(fOurs.baseOf(target), difference.property)].push_back(i);
            }
        }
    }
}

/// For a match of the sides: what both have of the base corresponds, and ids of new objects say nothing.
MatchSettings ConflictFinder::settingsBetween() const {
    Side const & base = fOurs.pairs.left();
    Side const & ours = fOurs.pairs.right();
    Side const & theirs = fTheirs.pairs.right();
    MatchSettings settings;
    settings.ids = MatchSettings::Ids::Ignore; // both sides may have given one id to different new objects
    for (Index index = base.end; index < base.tree.size(); ++index) { // what all refer to
        Index const ofTheirs = fTheirs.pairs.left().tree.indexOf(base.tree[index].object());
        if (base.tree[index].container == index && ofTheirs != Tree::kNone && base.counterparts[index] != Tree::kNone &&
            fTheirs.pairs.left().counterparts[ofTheirs] != Tree::kNone) {
            settings.companions.emplace_back(ours.tree.handleOf(base.counterparts[index]),
                                             theirs.tree.handleOf(fTheirs.pairs.left().counterparts[ofTheirs]));
        }
    }
    for (Index index = 0; index < base.end; ++index) {
        Index const ofOurs = base.counterparts[index];
        Index const ofTheirs = fTheirs.pairs.left().counterparts[index];
        if (ofOurs != Tree::kNone && ofTheirs != Tree::kNone) {
            settings.pairs.emplace_back(ours.tree.handleOf(ofOurs), theirs.tree.handleOf(ofTheirs));
        }
    }
    return settings;
}

/// New objects of both sides are the same if they have equal names in one place, or no name and equal contents; those
/// that differ are in conflict.
void ConflictFinder::findSameAdditions() {
    auto const hasAdditions = [](Differences const & all) {
        return std::any_of(all.begin(), all.end(), [](Difference const & each) { return each.kind == Kind::Added; });
    };
    if (!hasAdditions(fOurs.differences) || !hasAdditions(fTheirs.differences)) {
        return;
    }
    Differences const between(
        Match(fOurs.differences.match().right(), fTheirs.differences.match().right(), settingsBetween()));
    Pairs const & pairs = between.match().pairs();
    std::unordered_set<Index> different; // of ours: what differs, and all that contains it
    auto const note = [&](Index index) {
        while (different.insert(index).second && index != 0) {
            index = pairs.left().tree[index].container;
        }
    };
    for (Difference const & each : between) {
        Index const left = pairs.left().tree.indexOf(ImmutableObject(each.left).getImplementationWithoutAssert());
        Index const right = pairs.right().tree.indexOf(ImmutableObject(each.right).getImplementationWithoutAssert());
        if (left != Tree::kNone) {
            note(left);
        } else if (Index const at = pairs.right().counterparts[pairs.right().tree[right].container];
                   at != Tree::kNone) {
            note(at);
        }
    }
    for (Difference const & each : fTheirs.differences) {
        if (each.kind != Kind::Added) {
            continue;
        }
        ImmutableClassObject const ofOurs = between.match().leftOf(each.right);
        if (!ofOurs.isValid() || fOurs.baseOf(ofOurs) != nullptr ||
            fOurs.around(ofOurs) != fTheirs.around(each.right)) {
            continue;
        }
        Index const left = pairs.left().tree.indexOf(ImmutableObject(ofOurs).getImplementation());
        bool const isEqual = different.count(left) == 0;
        std::string const name = nameOf(ofOurs);
        if (!isEqual && (name.empty() || name != nameOf(each.right))) {
            continue;
        }
        fPlan.sameAdditions.emplace(ImmutableObject(each.right).getImplementation(),
                                    ImmutableObject(ofOurs).getImplementation());
        if (isEqual) {
            for (Index inside = left; inside < pairs.left().tree[left].end; ++inside) {
                Index const right = pairs.left().counterparts[inside];
                fPlan.sameAdditions.emplace(pairs.right().tree[right].object(), pairs.left().tree[inside].object());
            }
        } else {
            fDifferent.insert(ImmutableObject(each.right).getImplementation());
        }
    }
}

void ConflictFinder::judgeChange(std::size_t index) {
    Difference const & theirs = theirsAt(index);
    Key const key = keyOf(ImmutableObject(theirs.left).getImplementation(), theirs.property);
    for (std::size_t const each : found(fChanges, key)) {
        Difference const & ours = oursAt(each);
        if (ours.kind != theirs.kind) {
            continue;
        }
        switch (theirs.kind) {
        case Kind::ValueChanged:
            if (areEqualValues(ours.after, theirs.after)) {
                return drop(index);
            }
            conflict(Conflict::Kind::Values, each, index, theirs.property.isMultivalued());
            break;
        case Kind::RemainderChanged:
            if (saySame(remainderOf(ours.right), remainderOf(theirs.right))) {
                return drop(index);
            }
            conflict(Conflict::Kind::Values, each, index);
            break;
        case Kind::LinkChanged:
            if (areSameTargets(ours, theirs)) {
                return drop(index);
            }
            conflict(Conflict::Kind::Links, each, index);
            break;
        case Kind::LinkAdded:
            if (areSameTargets(ours, theirs)) {
                return drop(index);
            }
            break;
        case Kind::LinkRemoved:
            if (ours.before.front() == theirs.before.front()) {
                return drop(index);
            }
            break;
        case Kind::OrderChanged:
            if (haveSameOrder(ours, theirs)) {
                return drop(index);
            }
            conflict(Conflict::Kind::Orders, each, index);
            break;
        default:
            break;
        }
    }
    // An end that can have one link, to which ours has linked something else.
    bool const isSingleEnd = isLink(theirs.kind) && theirs.property.hasOpposite() && !theirs.after.empty() &&
                             !theirs.property.getOpposite().isMultivalued();
    if (isSingleEnd) {
        if (ObjectIntf const * const target = fTheirs.baseOf(theirs.after.front())) {
            for (std::size_t const each : found(fLinksTo, keyOf(target, theirs.property))) {
                if (oursAt(each).left != theirs.left) {
                    conflict(Conflict::Kind::Ends, each, index);
                }
            }
        }
    }
}

void ConflictFinder::judgeMove(std::size_t index) {
    Difference const & theirs = theirsAt(index);
    auto const moved = fOurs.moves.find(fTheirs.placeOf(theirs.left));
    if (moved == fOurs.moves.end()) {
        return judgeRoom(index);
    }
    Difference const & ours = oursAt(moved->second);
    if (ours.property == theirs.property && areSame(ours.after.front(), theirs.after.front())) {
        return drop(index);
    }
    conflict(Conflict::Kind::Places, moved->second, index);
}

void ConflictFinder::judgeAddition(std::size_t index) {
    ObjectIntf const * const added = ImmutableObject(theirsAt(index).right).getImplementation();
    auto const same = fPlan.sameAdditions.find(added);
    if (same == fPlan.sameAdditions.end()) {
        return judgeRoom(index);
    }
    if (fDifferent.count(added) == 0) {
        return drop(index);
    }
    for (std::size_t i = 0; i < fOurs.differences.size(); ++i) {
        if (oursAt(i).kind == Kind::Added && ImmutableObject(oursAt(i).right).getImplementation() == same->second) {
            conflict(Conflict::Kind::Additions, i, index, theirsAt(index).property.isMultivalued());
        }
    }
}

void ConflictFinder::judgeRoom(std::size_t index) {
    Difference const & theirs = theirsAt(index);
    if (theirs.property.isMultivalued()) {
        return;
    }
    Side const & side = fTheirs.pairs.right();
    Index const place = side.tree.indexOf(ImmutableObject(theirs.right).getImplementation());
    ObjectIntf const * const container = fTheirs.pairs.leftOf(side.tree[side.tree[place].container].object());
    if (container != nullptr) {
        for (std::size_t const each : found(fArrivals, keyOf(container, theirs.property))) {
            conflict(Conflict::Kind::Additions, each, index);
        }
    }
}

void ConflictFinder::judge(std::size_t index) {
    switch (theirsAt(index).kind) {
    case Kind::Added:
        return judgeAddition(index);
    case Kind::Moved:
        return judgeMove(index);
    case Kind::Removed:
        if (hasOursRemovedAll(index)) {
            drop(index);
        }
        return;
    default:
        return judgeChange(index);
    }
}

bool ConflictFinder::hasOursRemovedAll(std::size_t theirs) const {
    Index const removed = fTheirs.placeOf(theirsAt(theirs).left);
    Index const end = fTheirs.pairs.left().tree[removed].end;
    for (Index index = removed; index < end; ++index) {
        if (fTheirs.removals[index] == theirs && fOurs.removals[index] == kNone) {
            return false;
        }
    }
    return true;
}

void ConflictFinder::judgeRemovals() {
    for (std::size_t i = 0; i < fTheirs.differences.size(); ++i) {
        for (Index const place : fTheirs.concerned(theirsAt(i))) {
            std::size_t const removal = fOurs.removals[place];
            if (removal != kNone && fFates[i] != kDropped) {
                conflict(Conflict::Kind::Removal, removal, i);
            }
        }
    }
    for (std::size_t i = 0; i < fOurs.differences.size(); ++i) {
        for (Index const place : fOurs.concerned(oursAt(i))) {
            std::size_t const removal = fTheirs.removals[place];
            if (removal != kNone && fFates[removal] != kDropped) {
                conflict(Conflict::Kind::Removal, i, removal);
            }
        }
    }
}

ConflictFinder::Index ConflictFinder::containerAfterBoth(Index object) const {
    auto const move = fTheirs.moves.find(object);
    if (move != fTheirs.moves.end() && isTaken(move->second)) {
        return fTheirs.around(theirsAt(move->second).right);
    }
    auto const own = fOurs.moves.find(object);
    return own != fOurs.moves.end() ? fOurs.around(oursAt(own->second).right)
                                    : fOurs.pairs.left().tree[object].container;
}

/// Moves of both sides that would put objects into each other.
void ConflictFinder::judgeRings() {
    for (std::size_t i = 0; i < fTheirs.differences.size(); ++i) {
        if (theirsAt(i).kind != Kind::Moved || !isTaken(i)) {
            continue;
        }
        Index const moved = fTheirs.placeOf(theirsAt(i).left);
        std::vector<std::size_t> ofOurs;
        std::unordered_set<Index> seen{moved};
        Index at = containerAfterBoth(moved);
        while (at != 0 && at != Tree::kNone && seen.insert(at).second) {
            if (auto const own = fOurs.moves.find(at); own != fOurs.moves.end()) {
                ofOurs.push_back(own->second);
            }
            at = containerAfterBoth(at);
        }
        if (at != 0) {
            for (std::size_t const each : ofOurs) {
                conflict(Conflict::Kind::Places, each, i);
            }
        }
    }
}

/// What is taken must not need what is not: the move of what is in an object ahead of its removal, or the room for a
/// part.
void ConflictFinder::judgeNeeds() {
    Needs needs(fTheirs.pairs, fTheirs.differences.all());
    for (bool hasChanged = true; hasChanged;) {
        hasChanged = false;
        for (std::size_t i = 0; i < fTheirs.differences.size(); ++i) {
            Kind const kind = theirsAt(i).kind;
            if (!isTaken(i) || (kind != Kind::Added && kind != Kind::Moved && kind != Kind::Removed)) {
                continue;
            }
            for (std::size_t const need : needs.with({i})) {
                Kind const needed = theirsAt(need).kind;
                bool const isOpen = fFates[need] != kNone && fFates[need] != kDropped;
                if (isOpen && (needed == Kind::Moved || needed == Kind::Removed)) {
                    fFates[i] = fFates[need];
                    fPlan.places[fFates[i]].theirs.push_back(i);
                    hasChanged = true;
                    break;
                }
            }
        }
    }
}

void ConflictFinder::fillPlan() {
    for (std::size_t i = 0; i < fFates.size(); ++i) {
        if (isTaken(i)) {
            fPlan.taken.push_back(i);
        }
    }
    for (std::size_t i = 0; i < fPlan.conflicts.size(); ++i) {
        MergePlan::Places & places = fPlan.places[i];
        std::sort(places.ours.begin(), places.ours.end());
        std::sort(places.theirs.begin(), places.theirs.end());
        for (std::size_t const each : places.ours) {
            fPlan.conflicts[i].ours.push_back(oursAt(each));
        }
        for (std::size_t const each : places.theirs) {
            fPlan.conflicts[i].theirs.push_back(theirsAt(each));
        }
    }
}

void ConflictFinder::run() {
    enterOurs();
    findSameAdditions();
    for (std::size_t i = 0; i < fTheirs.differences.size(); ++i) {
        judge(i);
    }
    judgeRemovals();
    judgeRings();
    judgeNeeds();
    fillPlan();
}

} // namespace ZEL::Compare
