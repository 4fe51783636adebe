#pragma once

#include <ZEL/compare/MergePlan.h>
#include <ZEL/compare/Needs.h>
#include <ZEL/compare/Pairs.h>

#include <cstddef>
#include <map>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ZEL::Compare {

/// Finds what of theirs has been done by ours already, and what cannot be done beside it.
class ConflictFinder {
public:
    explicit ConflictFinder(MergePlan & plan);

    void run();

private:
    using Index = Tree::Index;
    using Kind = Difference::Kind;
    static constexpr std::size_t kNone = ~std::size_t{0};

    /// What one of the two sides has done. Objects of the base are named by their places in its tree, which both sides
    /// have alike.
    struct View {
        explicit View(Differences const & all);

        /// The base's object for one of this side, or itself if it is of neither; null for a new one.
        [[nodiscard]] ObjectIntf * baseOf(ImmutableObject const & object) const {
            return pairs.leftOf(object.getImplementationWithoutAssert());
        }
        [[nodiscard]] Index placeOf(ImmutableObject const & ofBase) const {
            return pairs.left().tree.indexOf(ofBase.getImplementationWithoutAssert());
        }
        /// The nearest object of the base around a new or moved object.
        [[nodiscard]] Index around(ImmutableObject const & object) const;
        /// Objects of the base that are as they are only if the difference is true.
        [[nodiscard]] std::vector<Index> concerned(Difference const & difference) const;
        void appendTargetsOf(ImmutableObject const & added, std::vector<Index> & places) const;

        Differences const & differences;
        Pairs const & pairs;
        std::vector<std::size_t> removals; ///< by place in the base: the difference that removes it, or `kNone`
        std::unordered_map<Index, std::size_t> moves;
    };
    /// Differences of ours by an object of the base and a property.
    using Key = std::pair<ObjectIntf const *, ObjectIntf const *>;
    using ByProperty = std::map<Key, std::vector<std::size_t>>;

    void enterOurs();
    [[nodiscard]] MatchSettings settingsBetween() const;
    void findSameAdditions();
    void judge(std::size_t index);
    void judgeChange(std::size_t index);
    void judgeMove(std::size_t index);
    void judgeAddition(std::size_t index);
    /// Whether there is room in a single-valued property for what theirs puts there.
    void judgeRoom(std::size_t index);
    void judgeRemovals();
    [[nodiscard]] bool hasOursRemovedAll(std::size_t theirs) const;
    void judgeRings();
    void judgeNeeds();
    void fillPlan();

    [[nodiscard]] Difference const & oursAt(std::size_t index) const { return fOurs.differences[index]; }
    [[nodiscard]] Difference const & theirsAt(std::size_t index) const { return fTheirs.differences[index]; }
    [[nodiscard]] static Key keyOf(ObjectIntf const * object, ImmutableProperty const & property) {
        return {object, ImmutableObject(property).getImplementationWithoutAssert()};
    }
    [[nodiscard]] std::vector<std::size_t> found(ByProperty const & index, Key const & key) const;
    /// Whether an object of ours and one of theirs are the same, new ones among them.
    [[nodiscard]] bool areSame(ImmutableObject const & ours, ImmutableObject const & theirs) const;
    [[nodiscard]] bool areSameTargets(Difference const & ours, Difference const & theirs) const;
    [[nodiscard]] bool haveSameOrder(Difference const & ours, Difference const & theirs) const;
    /// What contains the object of the base when both sides have moved what they move.
    [[nodiscard]] Index containerAfterBoth(Index object) const;

    void drop(std::size_t theirs) { fFates[theirs] = kDropped; }
    [[nodiscard]] bool isTaken(std::size_t theirs) const { return fFates[theirs] == kNone; }
    /// Adds to the conflict of the difference of theirs, if that has one already.
    void conflict(Conflict::Kind kind, std::size_t ours, std::size_t theirs, bool allowsBoth = false);

    static constexpr std::size_t kDropped = kNone - 1;

    MergePlan & fPlan;
    View fOurs;
    View fTheirs;
    ByProperty fChanges;                               ///< of values, links and orders
    ByProperty fArrivals;                              ///< what comes into a property of a container
    ByProperty fLinksTo;                               ///< by the new target
    std::unordered_set<ObjectIntf const *> fDifferent; ///< new objects of theirs that ours has otherwise
    std::vector<std::size_t> fFates; ///< of each of theirs: `kNone` if it is taken, `kDropped`, or its conflict
};

} // namespace ZEL::Compare
