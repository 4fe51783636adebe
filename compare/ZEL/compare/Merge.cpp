#include <ZEL/compare/Applier.h>
#include <ZEL/compare/ConflictFinder.h>
#include <ZEL/compare/Merge.h>
#include <ZEL/compare/MergePlan.h>
#include <ZEL/deviants/Transaction.h>
#include <ZEL/values/ValueObject.h>

#include <algorithm>
#include <iterator>
#include <set>
#include <unordered_set>
#include <utility>

namespace ZEL::Compare {
namespace {

using Kind = Difference::Kind;

/// Removals that both sides have done, as places in theirs: to be done again where ours is taken back.
std::vector<std::size_t> removalsOfBoth(MergePlan const & plan) {
    std::vector<char> isOpen(plan.theirs.size(), 0);
    for (std::size_t const place : plan.taken) {
        isOpen[place] = 1;
    }
    for (MergePlan::Places const & places : plan.places) {
        for (std::size_t const place : places.theirs) {
            isOpen[place] = 1;
        }
    }
    std::vector<std::size_t> result;
    for (std::size_t i = 0; i < isOpen.size(); ++i) {
        Kind const kind = plan.theirs[i].kind;
        if (isOpen[i] == 0 && (kind == Kind::Removed || kind == Kind::LinkRemoved)) {
            result.push_back(i);
        }
    }
    return result;
}

/// The chosen ones of all.
Differences only(Differences const & all, std::set<std::size_t> const & chosen) {
    std::size_t place = 0;
    return all.filtered([&](Difference const &) { return chosen.count(place++) != 0; });
}

/// What of ours stands in the way of theirs: changes of one value are just written over, and what is in something that
/// theirs removes goes with it.
std::set<std::size_t> inTheWay(Differences const & ours, std::vector<std::size_t> const & places,
                               Conflict::Kind conflict) {
    bool const isRemoval = conflict == Conflict::Kind::Removal;
    std::set<std::size_t> result;
    for (std::size_t const place : places) {
        Kind const kind = ours[place].kind;
        if (kind == Kind::Removed) { // with the links that went with it
            std::vector<std::size_t> const gone = Needs(ours.match().pairs(), ours.all()).with({place});
            result.insert(gone.begin(), gone.end());
        } else if (kind == Kind::Moved || (kind == Kind::Added && !isRemoval) ||
                   ((kind == Kind::LinkAdded || kind == Kind::LinkChanged) && isRemoval)) {
            result.insert(place);
        }
    }
    return result;
}

/// Their values behind ours, as far as ours has not got them.
void addValues(ClassObject const & object, Difference const & theirs) {
    Sequence<Object> const values = object.get(theirs.property);
    for (ImmutableObject const & value : theirs.after) {
        auto const present = values.toVector();
        bool const isThere = std::any_of(present.begin(), present.end(), [&value](Object const & each) {
            return ImmutableValueObject(each) == ImmutableValueObject(value);
        });
        if (!isThere) {
            values.push_back(Object(value.getImplementation(), object.getDeviant()));
        }
    }
}

Tree::Index placeOf(Side const & side, ImmutableClassObject const & object) {
    return side.tree.indexOf(ImmutableObject(object).getImplementation());
}

void removeLinks(ClassObject const & from, ComparedClass const & metaClass,
                 std::unordered_set<ObjectIntf const *> const & targets) {
    for (PropertyView const * const property : metaClass.links) {
        for (ObjectIntf * const each :
             targetsOf(*property, *from.getImplementation()->internal_body(), from.getDeviant())) {
            if (targets.count(each) == 0) {
                continue;
            }
            if (property->isMany) {
                from.remove(property->property, Object(each, from.getDeviant()));
            } else {
                from.removeOne(property->property);
            }
        }
    }
}

/// The objects of the target that the chosen differences remove.
std::unordered_set<ObjectIntf const *> goneBy(Differences const & theirs, std::set<std::size_t> const & taken,
                                              Applier const & restored) {
    std::unordered_set<ObjectIntf const *> gone;
    Side const & base = theirs.match().pairs().left();
    for (std::size_t const place : taken) {
        if (theirs[place].kind == Kind::Removed) {
            base.forEachUnmatched(placeOf(base, theirs[place].left), [&](Tree::Index index) {
                gone.insert(restored.targetOfRight(base.tree[index].object()));
            });
        }
    }
    return gone;
}

/// A link to what theirs removes would outlive it in what is new in ours.
template <class TargetOf>
void dropLinksOfNew(Differences const & ours, std::unordered_set<ObjectIntf const *> const & gone, Deviant deviant,
                    TargetOf const & targetOf) {
    Side const & side = ours.match().pairs().right();
    for (Difference const & each : ours) {
        if (each.kind != Kind::Added || gone.empty()) {
            continue;
        }
        side.forEachUnmatched(placeOf(side, each.right), [&](Tree::Index index) {
            ClassObject const object(Object(targetOf(side.tree[index].object()), deviant));
            if (object.isValid()) {
                removeLinks(object, *side.tree[index].metaClass, gone);
            }
        });
    }
}

} // namespace

MergePlan::MergePlan(Differences oursToTake, Differences theirsToTake)
    : ours(std::move(oursToTake)), theirs(std::move(theirsToTake)) {
    ConflictFinder(*this).run();
}

Merge::Merge(ImmutableClassObject const & base, ImmutableClassObject const & ours, ImmutableClassObject const & theirs,
             MatchSettings const & settingsOfOurs, MatchSettings const & settingsOfTheirs)
    : fPlan(std::make_shared<MergePlan const>(diff(base, ours, settingsOfOurs), diff(base, theirs, settingsOfTheirs))),
      fResolutions(fPlan->conflicts.size()) {}

Differences const & Merge::ours() const noexcept { return fPlan->ours; }

Differences const & Merge::theirs() const noexcept { return fPlan->theirs; }

std::vector<Difference> Merge::taken() const {
    std::vector<Difference> result;
    std::transform(fPlan->taken.begin(), fPlan->taken.end(), std::back_inserter(result),
                   [this](std::size_t place) { return fPlan->theirs[place]; });
    return result;
}

std::vector<Conflict> const & Merge::conflicts() const noexcept { return fPlan->conflicts; }

std::optional<Resolution> Merge::resolutionOf(std::size_t conflict) const { return fResolutions.at(conflict); }

bool Merge::isResolved() const {
    return std::all_of(fResolutions.begin(), fResolutions.end(), [](auto const & each) { return each.has_value(); });
}

void Merge::resolve(std::size_t conflict, Resolution resolution) {
    std::optional<Resolution> & place = fResolutions.at(conflict);
    if (resolution != Resolution::Both || fPlan->conflicts[conflict].allowsBoth) {
        place = resolution;
    }
}

void Merge::resolve(Resolver const & resolver) {
    for (std::size_t i = 0; i < fResolutions.size(); ++i) {
        if (!fResolutions[i].has_value()) {
            resolve(i, resolver(fPlan->conflicts[i]));
        }
    }
}

bool Merge::apply(ClassObject const & target) const {
    std::set<std::size_t> taken(fPlan->taken.begin(), fPlan->taken.end());
    std::set<std::size_t> takenBack;
    std::vector<Difference> added; // values beside those of ours
    for (std::size_t i = 0; i < fResolutions.size(); ++i) {
        MergePlan::Places const & places = fPlan->places[i];
        bool const isBoth = fResolutions[i] == Resolution::Both;
        if (isBoth && fPlan->conflicts[i].kind == Conflict::Kind::Values) {
            Conflict const & conflict = fPlan->conflicts[i];
            added.insert(added.end(), conflict.theirs.begin(), conflict.theirs.end());
        } else if (isBoth || fResolutions[i] == Resolution::Theirs) {
            taken.insert(places.theirs.begin(), places.theirs.end());
            if (!isBoth) {
                takenBack.merge(inTheWay(fPlan->ours, places.ours, fPlan->conflicts[i].kind));
            }
        }
    }

    if (!takenBack.empty()) {
        std::vector<std::size_t> const again = removalsOfBoth(*fPlan);
        taken.insert(again.begin(), again.end());
    }

    Differences const & ours = fPlan->ours;
    Differences const & theirs = fPlan->theirs;
    ImmutableClassObject const & root = ours.match().right();
    Transaction transaction(target.getDeviant(), "merge");
    std::optional<Match> toTarget;
    if (root != target) {
        toTarget.emplace(root, target);
    }
    auto const targetOfOurs = [&toTarget](ObjectIntf * object) {
        return object != nullptr && toTarget.has_value() ? toTarget->pairs().rightOf(object) : object;
    };
    Match const back = ours.match().turnedRound();
    Applier restored(back, target, targetOfOurs);
    restored.apply(only(ours, takenBack).turnedRound());
    dropLinksOfNew(ours, goneBy(theirs, taken, restored), target.getDeviant(), targetOfOurs);
    // What has been restored stands for the object of the base again.
    Applier applier(theirs.match(), target, [&](ObjectIntf * base) { return restored.targetOfRight(base); });
    for (auto const & [ofTheirs, ofOurs] : fPlan->sameAdditions) {
        applier.standFor(ofTheirs, targetOfOurs(ofOurs));
    }
    applier.apply(only(theirs, taken));
    for (Difference const & each : added) {
        if (ObjectIntf * const object = applier.targetOfRight(ImmutableObject(each.right).getImplementation())) {
            addValues(ClassObject(Object(object, target.getDeviant())), each);
        }
    }
    return transaction.commit();
}

std::vector<Conflict> merge(ImmutableClassObject const & base, ClassObject const & ours,
                            ImmutableClassObject const & theirs) {
    Merge const made(base, ours, theirs);
    static_cast<void>(made.apply(ours));
    return made.conflicts();
}

} // namespace ZEL::Compare
